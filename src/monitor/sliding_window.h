// A queue whose items are contiguous in memory: items are added at its end and removed at its
// front. The average cost of both does not depend on the number of items.
#pragma once

#include <vector>

template <class T>
class SlidingWindow {
 public:
  int size() const { return static_cast<int>(items_.size() - first_); }

  // `index` must be in 0..size() - 1. References are valid until the next push_back().
  const T& operator[](int index) const { return items_[first_ + static_cast<std::size_t>(index)]; }

  // Reuses the room of removed items once there is at least as much of it as there are items left:
  // at most one item then moves for each item removed.
  void push_back(const T& item) {
    if (items_.size() == items_.capacity() && 2 * first_ >= items_.size()) {
      items_.erase(items_.begin(), items_.begin() + static_cast<std::ptrdiff_t>(first_));
      first_ = 0;
    }
    items_.push_back(item);
  }

  // The window must not be empty.
  void pop_front() {
    items_[first_] = T();
    ++first_;
  }

 private:
  std::vector<T> items_;
  std::size_t first_ = 0;
};
