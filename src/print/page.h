// The geometry of a sheet of paper: places in millimetres of portrait A4, stretched to the actual
// paper.
#pragma once

#include <QSizeF>

inline constexpr double twips_per_mm = 56.7;
inline constexpr QSizeF a4_portrait{210 * twips_per_mm, 297 * twips_per_mm};

class Page {
 public:
  // `size` is the paper's, in twips.
  explicit Page(QSizeF size) : size_(size) {}

  QSizeF size() const { return size_; }

  // Convert a place in millimetres of portrait A4 to twips from the left and from the top edge.
  // Other paper stretches the whole page, except for the sizes of texts.
  double across(double mm) const {
    return mm * twips_per_mm * (size_.width() / a4_portrait.width());
  }
  double down(double mm) const {
    return mm * twips_per_mm * (size_.height() / a4_portrait.height());
  }

 private:
  QSizeF size_;
};
