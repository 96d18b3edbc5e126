#include "views/graph_picture.h"

#include "views/curve_columns.h"
#include "views/graph_view.h"

namespace {

constexpr int grid_cells = 16;

// Half the curve's colour and half the background's.
QRgb pale(QRgb colour, QRgb background) {
  return qRgb((qRed(colour) + qRed(background)) / 2, (qGreen(colour) + qGreen(background)) / 2,
              (qBlue(colour) + qBlue(background)) / 2);
}

// The rows that a curve covers in each pixel column.
std::vector<Rows> rows_of(const GraphCurves& curves, int slot, const PictureSize& size) {
  SlotColours only = {};
  only[static_cast<std::size_t>(slot)] = curve_colours[static_cast<std::size_t>(slot)];
  CurveColumns columns(curves, only, size);
  std::vector<Rows> rows;
  rows.reserve(static_cast<std::size_t>(size.pixels.width()));
  for (int x = 0; x < size.pixels.width(); ++x) rows.push_back(columns.pass_next());
  return rows;
}

// Every pixel at most `margin` columns and `margin` rows away from the curve.
PixelRuns band_around(const std::vector<Rows>& curve, int margin, QRgb colour, QSize size) {
  PixelRuns band(size, 1);
  std::vector<Rows> near;
  for (int x = 0; x < size.width(); ++x) {
    near.clear();
    for (int k = std::max(x - margin, 0); k <= std::min(x + margin, size.width() - 1); ++k) {
      const Rows& rows = curve[static_cast<std::size_t>(k)];
      if (!rows.empty()) near.push_back({rows.first - margin, rows.last + margin});
    }
    std::sort(near.begin(), near.end(), [](Rows a, Rows b) { return a.first < b.first; });
    int free_from = 0;
    for (const Rows& rows : near) {
      const Rows rest = common(rows, {free_from, size.height() - 1});
      if (rest.empty()) continue;
      band.add(x, rest, colour);
      free_from = rest.last + 1;
    }
  }
  return band;
}

// The grid's two kinds of pixel row, between its horizontal lines and on one, and which is where.
struct GridRows {
  GridRows(const PictureSize& size, QRgb background)
      : between(static_cast<std::size_t>(size.pixels.width()), background),
        line(between.size(), grid_colour),
        is_line(static_cast<std::size_t>(size.pixels.height())) {
    for (const int first : grid_lines(size.pixels.width(), size.width, size.line)) {
      std::fill_n(between.begin() + first, size.line, grid_colour);
    }
    for (const int first : grid_lines(size.pixels.height(), size.height, size.line)) {
      std::fill_n(is_line.begin() + first, size.line, true);
    }
  }
  std::vector<QRgb> between;
  std::vector<QRgb> line;
  std::vector<bool> is_line;
};

// Draws the grid and the layers over it, the lowest first.
void compose(QImage& image, const PictureSize& size, QRgb background, std::span<PixelRuns> layers) {
  const GridRows grid(size, background);
  for (int y = 0; y < image.height(); ++y) {
    const std::span row(reinterpret_cast<QRgb*>(image.scanLine(y)),
                        static_cast<std::size_t>(image.width()));
    std::span<const QRgb> below =
        grid.is_line[static_cast<std::size_t>(y)] ? grid.line : grid.between;
    for (PixelRuns& layer : layers) {
      lay_over(row, layer.next_row(), below);
      below = row;
    }
  }
}

}  // namespace

int GraphCurves::samples() const {
  return channels.empty() ? 0 : static_cast<int>(channels.front().values.size());
}

void GraphCurves::copy_view(const Recording& recording, std::int32_t start, std::int32_t count) {
  const auto samples = static_cast<std::size_t>(std::max(1, count));
  recording.require_samples(start, static_cast<std::int64_t>(samples));
  const auto from =
      recording.all_values().subspan(static_cast<std::size_t>(start) * Recording::channel_slots);
  channels.resize(static_cast<std::size_t>(recording.clamped_channel_count()));
  for (std::size_t c = 0; c < channels.size(); ++c) {
    std::vector<float>& values = channels[c].values;
    values.resize(samples);
    for (std::size_t i = 0; i < samples; ++i) values[i] = from[i * Recording::channel_slots + c];
  }
}

PictureSize picture_size(QSize logical, QSize device, double device_pixel_ratio) {
  return {.pixels = device,
          .width = static_cast<float>(logical.width() * twips_per_pixel),
          .height = static_cast<float>(logical.height() * twips_per_pixel),
          .line = std::max(1, static_cast<int>(device_pixel_ratio))};
}

std::vector<int> sample_columns(int samples, const PictureSize& size, int span) {
  std::vector<int> columns(static_cast<std::size_t>(samples));
  const double last = std::max(samples, span) - 1.0;
  const float across = pixels_per_twip(size.pixels.width(), size.width, size.line);
  for (int i = 0; i < samples; ++i) {
    columns[static_cast<std::size_t>(i)] = whole_pixel(sample_x(i, last, size.width), across);
  }
  return columns;
}

ValueRows::ValueRows(const GraphCurves::Channel& channel, int slot, const PictureSize& size)
    : low_(channel.low),
      range_(channel.high - channel.low),
      height_(size.height),
      offset_(channel_shift_twips * static_cast<float>(slot)),
      pixels_per_twip_(pixels_per_twip(size.pixels.height(), size.height, size.line)) {}

std::vector<int> grid_lines(int pixels, float twips, int line) {
  std::vector<int> first;
  for (int k = 0; k <= grid_cells; ++k) {
    const float place = static_cast<float>(k) / grid_cells * twips;
    first.push_back(whole_pixel(place, pixels_per_twip(pixels, twips, line)));
  }
  return first;
}

GraphCurves& GraphPicture::curves_to_fill() {
  has_curves_ = true;
  return curves_;
}

void GraphPicture::draw(QImage& image, const PictureSize& size,
                        const PictureColours& colours) const {
  if (!has_curves_ || image.width() < size.line || image.height() < size.line) {
    image.fill(colours.background);
    return;
  }
  const bool one_forward = forward_ && *forward_ < static_cast<int>(curves_.channels.size());
  if (one_forward) {
    draw_one_forward(image, size, colours);
    return;
  }
  std::array layers = {PixelRuns(size.pixels, size.line)};
  CurveColumns columns(curves_, curve_colours, size);
  for (int x = 0; x < image.width(); ++x) columns.draw_next(layers[0]);
  compose(image, size, colours.background, layers);
}

// Draws the other curves one device pixel wide and the chosen one over them.
void GraphPicture::draw_one_forward(QImage& image, const PictureSize& size,
                                    const PictureColours& colours) const {
  const auto slot = static_cast<std::size_t>(*forward_);
  SlotColours others;
  std::transform(curve_colours.begin(), curve_colours.end(), others.begin(),
                 [&](QRgb colour) { return pale(colour, colours.background); });
  others[slot] = 0;
  const std::vector<Rows> chosen = rows_of(curves_, *forward_, size);
  std::array layers = {PixelRuns(size.pixels, 1),
                       band_around(chosen, 2 * size.line, colours.edge, size.pixels),
                       band_around(chosen, size.line, curve_colours[slot], size.pixels)};
  CurveColumns columns(curves_, others, size);
  for (int x = 0; x < image.width(); ++x) columns.draw_next(layers[0]);
  compose(image, size, colours.background, layers);
}
