#include "monitor/live_graph.h"

#include <QLine>
#include <QPainter>

#include <cmath>

#include "app/curve.h"
#include "app/twips.h"
#include "monitor/live_buffer.h"
#include "monitor/live_view.h"

namespace {

constexpr double channel_shift_twips = 3;

// The edges of the graph lie on the image's outermost pixels, so that all four lines show.
QSizeF graph_size(const QImage& image) {
  return {image.width() - 1.0, image.height() - 1.0};
}

void draw_grid(QPainter& painter, const QSizeF& size) {
  const int right = static_cast<int>(size.width());
  const int bottom = static_cast<int>(size.height());
  QList<QLine> lines;
  for (int k = 0; k <= live_graph_cells; ++k) {
    const int x = static_cast<int>(std::lround(k * size.width() / live_graph_cells));
    const int y = static_cast<int>(std::lround(k * size.height() / live_graph_cells));
    lines << QLine(x, 0, x, bottom) << QLine(0, y, right, y);
  }
  painter.drawLines(lines);
}

}  // namespace

void draw_live_graph(QImage& image, double dpi, const LiveBuffer& buffer, const LiveView& view,
                     int channels, const LiveGraphColours& colours) {
  image.fill(colours.background);
  QPainter painter(&image);
  painter.setPen(colours.grid);
  const QSizeF size = graph_size(image);
  draw_grid(painter, size);
  for (int c = 0; c < channels; ++c) {
    painter.setPen(live_curve_colours[static_cast<std::size_t>(c)]);
    draw_curve(painter, buffer.samples(c, view.FirstShown, view.Span),
               {.span = view.Span,
                .size = size,
                .high = live_graph_high,
                .low = live_graph_low,
                .shift = pixels_of_twips(channel_shift_twips * c, dpi)});
  }
}
