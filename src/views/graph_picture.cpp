#include "views/graph_picture.h"

#include <algorithm>

#include "views/graph_view.h"

namespace {

constexpr int grid_cells = 16;
// Each channel is drawn so much lower than the one before it, so that equal values can be told
// apart.
constexpr float channel_step_twips = 3.0F;

// From the middle of the first pixel to the middle of the last.
float pixels_per_twip(int pixels, float twips) {
  return static_cast<float>(pixels - 1) / twips;
}

// Lets each curve pixel cover its right, lower and lower right neighbour where there is no curve.
// From the end backwards: what is read has not been changed yet.
void thicken(QImage& layer) {
  const qsizetype stride = layer.bytesPerLine() / qsizetype{sizeof(QRgb)};
  auto* pixels = reinterpret_cast<QRgb*>(layer.bits());
  for (int y = layer.height() - 1; y >= 0; --y) {
    QRgb* row = pixels + y * stride;
    const QRgb* above = y > 0 ? row - stride : row;
    for (int x = layer.width() - 1; x > 0; --x) {
      const QRgb neighbour = row[x - 1] ? row[x - 1] : above[x] ? above[x] : above[x - 1];
      row[x] = row[x] ? row[x] : neighbour;
    }
    row[0] = row[0] ? row[0] : above[0];
  }
}

}  // namespace

int GraphCurves::samples() const {
  return channels.empty() ? 0 : static_cast<int>(channels.front().values.size());
}

void GraphCurves::take(const Recording& recording, std::int32_t start, std::int32_t count) {
  const auto samples = static_cast<std::size_t>(std::max(1, count));
  // Asked for the ends once, so that the loop need not ask for each.
  static_cast<void>(recording.SampleValues(start, 0));
  static_cast<void>(recording.SampleValues(start + static_cast<std::int64_t>(samples) - 1, 0));
  const auto from =
      recording.all_values().subspan(static_cast<std::size_t>(start) * Recording::channel_slots);
  channels.resize(static_cast<std::size_t>(recording.held_channels()));
  for (std::size_t c = 0; c < channels.size(); ++c) {
    std::vector<float>& values = channels[c].values;
    values.resize(samples);
    for (std::size_t i = 0; i < samples; ++i) values[i] = from[i * Recording::channel_slots + c];
  }
}

PictureSize picture_size(QSize logical, double device_pixel_ratio) {
  return {.pixels = (QSizeF(logical) * device_pixel_ratio).toSize(),
          .width = static_cast<float>(logical.width() * twips_per_pixel),
          .height = static_cast<float>(logical.height() * twips_per_pixel),
          .ratio = device_pixel_ratio};
}

std::vector<int> sample_columns(int samples, const PictureSize& size, int span) {
  std::vector<int> columns(static_cast<std::size_t>(samples));
  const double last = std::max(samples, span) - 1.0;
  const float across = pixels_per_twip(size.pixels.width(), size.width);
  for (int i = 0; i < samples; ++i) {
    columns[static_cast<std::size_t>(i)] = whole_pixel(sample_x(i, last, size.width), across);
  }
  return columns;
}

ValueRows::ValueRows(const GraphCurves::Channel& channel, int slot, const PictureSize& size)
    : low_(channel.low),
      range_(channel.high - channel.low),
      height_(size.height),
      offset_(channel_step_twips * static_cast<float>(slot)),
      pixels_per_twip_(pixels_per_twip(size.pixels.height(), size.height)) {}

void draw_grid(QImage& image, const PictureSize& size, QRgb background) {
  std::vector<QRgb> row(static_cast<std::size_t>(image.width()), background);
  const auto line = [](int k, int pixels, float twips) {
    const float place = static_cast<float>(k) / grid_cells * twips;
    return whole_pixel(place, pixels_per_twip(pixels, twips));
  };
  for (int k = 0; k <= grid_cells; ++k) {
    row[static_cast<std::size_t>(line(k, image.width(), size.width))] = grid_colour;
  }
  const auto pixels = [&image](int y) { return reinterpret_cast<QRgb*>(image.scanLine(y)); };
  for (int y = 0; y < image.height(); ++y) std::copy(row.begin(), row.end(), pixels(y));
  for (int k = 0; k <= grid_cells; ++k) {
    std::fill_n(pixels(line(k, image.height(), size.height)), image.width(), grid_colour);
  }
}

GraphCurves& GraphPicture::new_curves() {
  has_curves_ = true;
  return curves_;
}

void GraphPicture::draw(QImage& image, const PictureSize& size, QRgb background) {
  if (!has_curves_) {
    image.fill(background);
    return;
  }
  const bool same_columns = size_ == size &&
                            columns_.size() == static_cast<std::size_t>(curves_.samples()) &&
                            columns_span_ == curves_.span;
  if (!same_columns) columns_ = sample_columns(curves_.samples(), size, curves_.span);
  columns_span_ = curves_.span;
  if (size_ != size || background_ != background || grid_.isNull()) {
    grid_ = QImage(size.pixels, QImage::Format_RGB32);
    draw_grid(grid_, size, background);
  }
  size_ = size;
  background_ = background;
  if (size.ratio < 2) {
    std::copy_n(grid_.constBits(), grid_.sizeInBytes(), image.bits());
    draw_curves(image, curves_, columns_, size);
  } else {
    draw_thick_curves(image);
  }
}

// On a screen whose pixels are twice as small or smaller, a line of one of them could hardly be
// seen: the curves are drawn on a layer of their own and made as many pixels wide as make up one
// pixel of the window.
void GraphPicture::draw_thick_curves(QImage& image) const {
  std::fill_n(image.bits(), image.sizeInBytes(), uchar{0});
  draw_curves(image, curves_, columns_, size_);
  for (int width = 1; width < static_cast<int>(size_.ratio); ++width) thicken(image);
  const auto* grid = reinterpret_cast<const QRgb*>(grid_.constBits());
  auto* pixel = reinterpret_cast<QRgb*>(image.bits());
  const qsizetype count = image.sizeInBytes() / qsizetype{sizeof(QRgb)};
  for (qsizetype i = 0; i < count; ++i) pixel[i] = pixel[i] ? pixel[i] : grid[i];
}
