// The geometry of a sheet of paper: places as millimetres of an A4 page in portrait, spread over
// the paper that there is.
#pragma once

#include <QSizeF>

inline constexpr double twips_per_mm = 56.7;
inline constexpr QSizeF a4_portrait{210 * twips_per_mm, 297 * twips_per_mm};

class Page {
 public:
  // `size` of the paper in twips.
  explicit Page(QSizeF size) : size_(size) {}

  QSizeF size() const { return size_; }

  // Twips from the left and the top edge of a place given in millimetres of A4 in portrait. On
  // other paper the whole page is stretched, text sizes apart.
  double across(double mm) const {
    return mm * twips_per_mm * (size_.width() / a4_portrait.width());
  }
  double down(double mm) const {
    return mm * twips_per_mm * (size_.height() / a4_portrait.height());
  }

 private:
  QSizeF size_;
};
