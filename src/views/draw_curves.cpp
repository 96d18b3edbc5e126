// Drawing of many samples on few columns. Samples in one column are joined by vertical lines, and
// the lines of all channels in a column are drawn before any line leaves it; so a column can be
// finished on its own: who comes last at a pixel is looked for from the last line backwards, until
// every pixel has its owner.
#include <QPainter>

#include <algorithm>
#include <memory>
#include <utility>

#include "views/extremes.h"
#include "views/graph_picture.h"
#include "views/slanted_line.h"

namespace {

// The samples of one column, both ends included.
struct Run {
  std::size_t first;
  std::size_t last;
};

struct Curve {
  Curve(const GraphCurves::Channel& channel, int slot, const PictureSize& size)
      : values(channel.values),
        row_of(channel, slot, size),
        colour(curve_colours[static_cast<std::size_t>(slot)]) {}

  std::span<const float> values;
  ValueRows row_of;
  QRgb colour;
  // Of the column at hand: the part of the line that enters it, of the one that leaves it, and all
  // that the curve covers in it; and the part of the leaving line in the next column.
  Rows entering = no_rows;
  Rows leaving = no_rows;
  Rows covered = no_rows;
  Rows entering_next = no_rows;
  // The row of each sample in the column, where they are asked for.
  std::vector<int> rows;
};

// A painter a channel, each on an image that shares the pixels: changing one painter's pen for
// each line would cost more than the line.
class Painters {
 public:
  Painters(QImage& image, std::size_t count) {
    for (std::size_t c = 0; c < count; ++c) {
      canvases_[c] =
          QImage(image.bits(), image.width(), image.height(), image.bytesPerLine(), image.format());
      painters_[c].begin(&canvases_[c]);
      painters_[c].setPen(QColor(curve_colours[c]));
    }
  }
  QPainter& operator[](std::size_t c) { return painters_[c]; }

 private:
  std::array<QImage, curve_colours.size()> canvases_;
  std::array<QPainter, curve_colours.size()> painters_;
};

class CurveDrawing {
 public:
  CurveDrawing(QImage& image, const GraphCurves& curves, const std::vector<int>& columns,
               const PictureSize& size);
  void run();

 private:
  bool leaves_to_neighbour(std::size_t sample);
  void cover(Curve& curve, Run run) const;
  bool overlapping() const;
  void share_out(int column);
  void resolve(int column, Run run);
  void own(int column, Rows line, QRgb colour);
  void close_around(Rows owned);
  void draw_lines(std::size_t sample);
  void fill(int column, Rows rows, QRgb colour);
  Rows inside(Rows rows) const { return common(rows, {0, height_ - 1}); }

  QImage& image_;
  QRgb* pixels_;
  int height_;
  qsizetype stride_;
  const std::vector<int>& columns_;
  std::vector<Curve> curves_;
  // The rows of the column at hand that have no owner yet, and a large run of rows without any of
  // them: most lines lie in it when only rows at both ends are left.
  std::vector<Rows> open_;
  Rows closed_ = no_rows;
  std::vector<int> edges_;
  std::unique_ptr<Painters> painters_;
};

CurveDrawing::CurveDrawing(QImage& image, const GraphCurves& curves,
                           const std::vector<int>& columns, const PictureSize& size)
    : image_(image),
      pixels_(reinterpret_cast<QRgb*>(image.bits())),
      height_(image.height()),
      stride_(image.bytesPerLine() / qsizetype{sizeof(QRgb)}),
      columns_(columns) {
  int slot = 0;
  for (const GraphCurves::Channel& channel : curves.channels) {
    curves_.emplace_back(channel, slot++, size);
  }
}

void CurveDrawing::run() {
  for (Run run{0, 0}; run.first < columns_.size(); run.first = run.last + 1) {
    const int column = columns_[run.first];
    run.last = run.first;
    while (run.last + 1 < columns_.size() && columns_[run.last + 1] == column) ++run.last;
    const bool at_end = run.last + 1 == columns_.size();
    for (Curve& curve : curves_) curve.leaving = no_rows;
    const bool joined = !at_end && leaves_to_neighbour(run.last);
    for (Curve& curve : curves_) cover(curve, run);
    if (overlapping()) {
      share_out(column);
      resolve(column, run);
    } else {
      for (const Curve& curve : curves_) fill(column, curve.covered, curve.colour);
    }
    if (!at_end && !joined) draw_lines(run.last);
    for (Curve& curve : curves_) curve.entering = std::exchange(curve.entering_next, no_rows);
  }
}

// Splits the lines of all curves from this sample to the next between the two columns that they
// touch, where that is all that they touch and the picture's edge cuts none of them.
bool CurveDrawing::leaves_to_neighbour(std::size_t sample) {
  if (columns_[sample + 1] - columns_[sample] != 1) return false;
  std::array<Rows, curve_colours.size()> ends;
  for (std::size_t c = 0; c < curves_.size(); ++c) {
    const Curve& curve = curves_[c];
    ends[c] = {curve.row_of(curve.values[sample]), curve.row_of(curve.values[sample + 1])};
    for (const int row : {ends[c].first, ends[c].last}) {
      if (row < 0 || row >= height_) return false;
    }
  }
  for (std::size_t c = 0; c < curves_.size(); ++c) {
    const SlantedLine line = slanted_line(ends[c].first, ends[c].last);
    curves_[c].leaving = line.left;
    curves_[c].entering_next = line.right;
  }
  return true;
}

void CurveDrawing::cover(Curve& curve, Run run) const {
  curve.covered = no_rows;
  if (run.last > run.first) {
    // Rows run against the values.
    const auto [smallest, largest] =
        extremes_of(curve.values.subspan(run.first, run.last - run.first + 1));
    curve.covered = inside({curve.row_of(largest), curve.row_of(smallest)});
  }
  for (const Rows& part : {curve.entering, curve.leaving}) {
    if (!part.empty()) curve.covered = curve.covered.empty() ? part : hull(curve.covered, part);
  }
}

bool CurveDrawing::overlapping() const {
  for (std::size_t a = 1; a < curves_.size(); ++a) {
    for (std::size_t b = 0; b < a; ++b) {
      if (!common(curves_[a].covered, curves_[b].covered).empty()) return true;
    }
  }
  return false;
}

// Draws the rows that one curve alone covers; those that several cover are left open.
void CurveDrawing::share_out(int column) {
  edges_.clear();
  for (const Curve& curve : curves_) {
    if (!curve.covered.empty()) {
      edges_.insert(edges_.end(), {curve.covered.first, curve.covered.last + 1});
    }
  }
  std::sort(edges_.begin(), edges_.end());
  open_.clear();
  closed_ = no_rows;
  for (std::size_t k = 1; k < edges_.size(); ++k) {
    const Rows rows = {edges_[k - 1], edges_[k] - 1};
    if (rows.empty()) continue;
    const Curve* owner = nullptr;
    int owners = 0;
    for (const Curve& curve : curves_) {
      if (common(curve.covered, rows).empty()) continue;
      owner = &curve;
      ++owners;
    }
    if (owners == 1) fill(column, rows, owner->colour);
    if (owners < 2) continue;
    if (!open_.empty() && open_.back().last + 1 == rows.first) {
      open_.back().last = rows.last;
    } else {
      open_.push_back(rows);
    }
  }
}

void CurveDrawing::resolve(int column, Run run) {
  const std::size_t samples = run.last - run.first + 1;
  for (Curve& curve : curves_) {
    const auto values = curve.values.subspan(run.first, samples);
    curve.rows.resize(samples);
    std::transform(values.begin(), values.end(), curve.rows.begin(), ValueRows(curve.row_of));
  }
  for (std::size_t c = curves_.size(); c-- > 0;) own(column, curves_[c].leaving, curves_[c].colour);
  for (std::size_t i = samples - 1; i-- > 0 && !open_.empty();) {
    for (std::size_t c = curves_.size(); c-- > 0;) {
      const Curve& curve = curves_[c];
      own(column, rows_between(curve.rows[i], curve.rows[i + 1]), curve.colour);
    }
  }
  for (std::size_t c = curves_.size(); c-- > 0;) {
    own(column, curves_[c].entering, curves_[c].colour);
  }
}

void CurveDrawing::own(int column, Rows line, QRgb colour) {
  if (line.first >= closed_.first && line.last <= closed_.last) return;
  for (std::size_t k = 0; k < open_.size(); ++k) {
    const Rows open = open_[k];
    const Rows owned = common(open, line);
    if (owned.empty()) continue;
    fill(column, owned, colour);
    close_around(owned);
    const Rows above = {open.first, owned.first - 1};
    const Rows below = {owned.last + 1, open.last};
    open_[k] = above.empty() ? below : above;
    if (!above.empty() && !below.empty()) open_.push_back(below);
    if (open_[k].empty()) {
      open_[k--] = open_.back();
      open_.pop_back();
    }
  }
}

// Called before the rows are taken out of the open ones.
void CurveDrawing::close_around(Rows owned) {
  Rows closed = {0, height_ - 1};
  for (const Rows& open : open_) {
    if (open.last < owned.first) closed.first = std::max(closed.first, open.last + 1);
    if (open.first > owned.last) closed.last = std::min(closed.last, open.first - 1);
    if (open.first < owned.first && open.last >= owned.first) closed.first = owned.first;
    if (open.first <= owned.last && open.last > owned.last) closed.last = owned.last;
  }
  if (closed.last - closed.first > closed_.last - closed_.first) closed_ = closed;
}

void CurveDrawing::draw_lines(std::size_t sample) {
  if (!painters_) painters_ = std::make_unique<Painters>(image_, curves_.size());
  for (std::size_t c = 0; c < curves_.size(); ++c) {
    const Curve& curve = curves_[c];
    const int row = curve.row_of(curve.values[sample]);
    const int next = curve.row_of(curve.values[sample + 1]);
    if (inside(rows_between(row, next)).empty()) continue;
    (*painters_)[c].drawLine(columns_[sample], row, columns_[sample + 1], next);
  }
}

void CurveDrawing::fill(int column, Rows rows, QRgb colour) {
  QRgb* at = pixels_ + rows.first * stride_ + column;
  for (int y = rows.first; y <= rows.last; ++y, at += stride_) *at = colour;
}

}  // namespace

void draw_curves(QImage& image, const GraphCurves& curves, const std::vector<int>& columns,
                 const PictureSize& size) {
  if (curves.samples() > 1) CurveDrawing(image, curves, columns, size).run();
}
