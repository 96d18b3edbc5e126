// Draws the graph plainly, one line per pair of neighbouring samples. The program's own drawing
// must show the same, and its speed is measured against this.
#pragma once

#include <QPainter>

#include "views/graph_picture.h"

inline void draw_grid_plainly(QImage& image, const PictureSize& size, QRgb background) {
  image.fill(background);
  QPainter painter(&image);
  for (const int x : grid_lines(size.pixels.width(), size.width, size.line)) {
    painter.fillRect(x, 0, size.line, image.height(), QColor(grid_colour));
  }
  for (const int y : grid_lines(size.pixels.height(), size.height, size.line)) {
    painter.fillRect(0, y, image.width(), size.line, QColor(grid_colour));
  }
}

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
  const std::vector<int> columns = sample_columns(curves.samples(), size, curves.span);
  std::array<int, 4> row{};
  for (std::size_t i = 0; i < columns.size(); ++i) {
    for (std::size_t c = 0; c < channels; ++c) {
      const int from = std::exchange(row[c], row_of[c](curves.channels[c].values[i]));
      if (i > 0) painters[c].drawLine(columns[i - 1], from, columns[i], row[c]);
    }
  }
}

// Each pixel of a curve also covers its right, lower and lower right neighbours where no curve is.
inline QImage widened(const QImage& layer) {
  QImage result = layer.copy();
  for (int y = 0; y < layer.height(); ++y) {
    for (int x = 0; x < layer.width(); ++x) {
      for (const QPoint from : {QPoint(x - 1, y), QPoint(x, y - 1), QPoint(x - 1, y - 1)}) {
        if (result.pixel(x, y) || !layer.valid(from)) continue;
        result.setPixel(x, y, layer.pixel(from));
      }
    }
  }
  return result;
}

inline QImage plain_picture(const GraphCurves& curves, const PictureSize& size, QRgb background) {
  QImage layer(size.pixels, QImage::Format_ARGB32);
  layer.fill(0);
  draw_curves_plainly(layer, curves, size);
  for (int width = 1; width < size.line; ++width) layer = widened(layer);
  QImage picture(size.pixels, QImage::Format_RGB32);
  draw_grid_plainly(picture, size, background);
  QPainter(&picture).drawImage(0, 0, layer);
  return picture;
}
