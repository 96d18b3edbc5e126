// A queue whose items lie side by side in memory: new ones come at its end, old ones go at its
// front. Neither costs more the more items it holds.
#pragma once

#include <vector>

template <class T>
class SlidingWindow {
 public:
  int size() const { return static_cast<int>(items_.size() - first_); }

  // `index` must lie in 0..size() - 1. References hold until the next push_back().
  const T& operator[](int index) const { return items_[first_ + static_cast<std::size_t>(index)]; }

  // The room that the items before the first one leave is used again once there is as much of it
  // as there are items: each item then moves once in its life.
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
