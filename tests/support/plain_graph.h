// The plain drawing of the graph's curves, a line for each pair of neighbouring samples: what the
// program's own drawing must show, and what its speed is measured against.
#pragma once

#include <QPainter>

#include "views/graph_picture.h"

inline void draw_curves_plainly(QImage& image, const GraphCurves& curves, const PictureSize& size) {
  const std::size_t channels = curves.channels.size();
  std::array<QImage, 4> canvases;
  std::array<QPainter, 4> painters;
  std::vector<ValueRows> row_of;
  for (std::size_t c = 0; c < channels; ++c) {
    canvases[c] =
        QImage(image.bits(), image.width(), image.height(), image.bytesPerLine(), image.format());
    painters[c].begin(&canvases[c]);
    painters[c].setClipRect(image.rect());
    painters[c].setPen(QPen(QColor(curve_colours[c]), 1));
    row_of.emplace_back(curves.channels[c], static_cast<int>(c), size);
  }
  const std::vector<int> columns = sample_columns(curves.samples(), size);
  std::array<int, 4> row{};
  for (std::size_t i = 0; i < columns.size(); ++i) {
    for (std::size_t c = 0; c < channels; ++c) {
      const int from = std::exchange(row[c], row_of[c](curves.channels[c].values[i]));
      if (i > 0) painters[c].drawLine(columns[i - 1], from, columns[i], row[c]);
    }
  }
}
