#include "views/graph_layout.h"

#include <algorithm>

#include "base/twips.h"

namespace {

constexpr int pixels(int twips) {
  return (twips + twips_per_pixel / 2) / twips_per_pixel;
}

// From the design: the graph's left edge and top, and how far left of the graph's left and right
// edges the two times begin.
constexpr int graph_left = pixels(630);
constexpr int graph_top = pixels(390);
constexpr int start_time_before_left = pixels(630 - 240);
constexpr int end_time_before_right = pixels(630 + 7695 - 7290);

constexpr int gap = 4;
constexpr int swatch_height = 6;
constexpr int least_graph = 40;

class Arrangement {
 public:
  Arrangement(QSize page, const GraphTextSizes& sizes) : page_(page), sizes_(sizes) {}

  GraphLayout run() {
    place_graph();
    place_scales();
    place_titles();
    place_legend();
    return result_;
  }

 private:
  void place_graph();
  void place_scales();
  void place_titles();
  void place_legend();
  int scale_right() const { return result_.Pic1.right() + 1 + right_; }

  QSize page_;
  const GraphTextSizes& sizes_;
  GraphLayout result_;
  int right_ = 0;
  int legend_width_ = 0;
};

void Arrangement::place_graph() {
  const int left = std::max(graph_left, sizes_.scales[0] + 2 * gap);
  right_ = sizes_.channels < 2 ? 2 * gap : std::max(graph_left, sizes_.scales[1] + 2 * gap);
  legend_width_ = std::max(sizes_.widest_button, std::min(sizes_.legend, page_.width() / 4));
  // The topmost label of an outer scale reaches half a line above the graph.
  const int title_rows = sizes_.channels > 2 ? 2 : 1;
  const int top = std::max(graph_top, title_rows * sizes_.line + sizes_.line / 2 + gap);
  const int below = gap + sizes_.slider + gap + sizes_.line + gap;
  const int width = page_.width() - left - right_ - legend_width_ - 2 * gap;
  const int height = page_.height() - top - below;
  result_.Pic1 = QRect(left, top, std::max(least_graph, width), std::max(least_graph, height));

  const QRect& graph = result_.Pic1;
  result_.Slider1 = QRect(graph.left(), graph.bottom() + 1 + gap, graph.width(), sizes_.slider);
  const int times_top = result_.Slider1.bottom() + 1 + gap;
  const int end_time = graph.right() + 1 - end_time_before_right;
  const int start_time = std::max(gap, graph.left() - start_time_before_left);
  result_.Label1 = QRect(start_time, times_top, end_time - start_time - gap, sizes_.line);
  result_.Label2 = QRect(end_time, times_top, page_.width() - end_time, sizes_.line);
}

void Arrangement::place_scales() {
  const QRect& graph = result_.Pic1;
  const int line = sizes_.line;
  for (int k = 0; k < labels_per_scale; ++k) {
    const int y = k * (graph.height() - 1) / scale_steps - line / 2;
    const int outer = graph.top() + y;
    const int inner = std::clamp(y, 1, std::max(1, graph.height() - line - 1));
    const auto label = [&](int slot) -> QRect& {
      return result_.Label4[static_cast<std::size_t>(labels_per_scale * slot + k)];
    };
    label(0) = QRect(0, outer, graph.left() - gap, line);
    label(1) = QRect(graph.right() + 1 + gap, outer, right_ - gap, line);
    label(2) = QRect(2, inner, sizes_.scales[2] + gap, line);
    const int inner_right = sizes_.scales[3] + gap;
    label(3) = QRect(graph.width() - 2 - inner_right, inner, inner_right, line);
  }
}

void Arrangement::place_titles() {
  const QRect& graph = result_.Pic1;
  const int line = sizes_.line;
  const int middle = graph.center().x();
  const int outer_top =
      sizes_.channels > 2 ? graph.top() - 2 * line - gap : graph.top() - line - line / 2 - gap / 2;
  const int inner_top = graph.top() - line - gap / 2;
  result_.Label3[0] = QRect(gap, outer_top, middle - 2 * gap, line);
  result_.Label3[1] = QRect(middle + gap, outer_top, scale_right() - middle - gap, line);
  result_.Label3[2] = QRect(graph.left(), inner_top, middle - graph.left() - gap, line);
  result_.Label3[3] = QRect(middle + gap, inner_top, graph.right() - middle - gap, line);
}

void Arrangement::place_legend() {
  const int left = scale_right() + gap;
  const int bottom = result_.Slider1.bottom() + 1;
  const int button_step = sizes_.button + gap;
  for (int k = 0; k < 4; ++k) {
    result_.buttons[static_cast<std::size_t>(k)] =
        QRect(left, bottom - (4 - k) * button_step + gap, legend_width_, sizes_.button);
  }
  // Legends too wide for the column take two lines where there is room.
  const int value = sizes_.line + sizes_.line / 2;
  const int one_line = swatch_height + sizes_.line + value + gap;
  const int two_lines = one_line + sizes_.line;
  const int top = result_.Pic1.top();
  const int channels = std::max(1, sizes_.channels);
  const int room = (bottom - 4 * button_step - top) / channels;
  const int text_height =
      sizes_.legend > legend_width_ && room >= two_lines ? 2 * sizes_.line : sizes_.line;
  const int least_step = text_height + one_line - sizes_.line;
  const int step = std::clamp(room, least_step, least_step + sizes_.line);
  result_.least_height = top + channels * one_line + 4 * button_step + gap + sizes_.line + gap;
  for (int c = 0; c < 4; ++c) {
    const auto slot = static_cast<std::size_t>(c);
    const int y = top + c * step;
    const int text = y + swatch_height + gap / 2;
    result_.Line1[slot] = QRect(left, y, legend_width_, swatch_height);
    result_.Label3[slot + 4] = QRect(left, text, legend_width_, text_height);
    result_.Label3[slot + 8] = QRect(left, text + text_height, legend_width_, value);
  }
}

}  // namespace

GraphLayout graph_layout(QSize page, const GraphTextSizes& sizes) {
  return Arrangement(page, sizes).run();
}
