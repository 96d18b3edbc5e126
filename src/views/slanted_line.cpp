#include "views/slanted_line.h"

#include <QImage>
#include <QPainter>

#include <cstdlib>
#include <vector>

namespace {

// How many rows of a line over two columns lie in the first one is the painter's choice where the
// line passes the boundary at a pixel's middle. It is asked for each height once: whole numbers
// move a line without changing it.
int rows_in_first_column(int height, bool downwards) {
  QImage image(2, height + 1, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.setPen(Qt::black);
  painter.drawLine(0, downwards ? 0 : height, 1, downwards ? height : 0);
  painter.end();
  int rows = 0;
  for (int y = 0; y <= height; ++y) rows += image.pixel(0, y) == qRgb(0, 0, 0) ? 1 : 0;
  return rows;
}

int known_rows_in_first_column(int height, bool downwards) {
  static std::vector<int> known[2];
  std::vector<int>& table = known[downwards ? 1 : 0];
  const auto at = static_cast<std::size_t>(height);
  if (table.size() <= at) table.resize(at + 1, 0);
  if (table[at] == 0) table[at] = rows_in_first_column(height, downwards);
  return table[at];
}

}  // namespace

SlantedLine slanted_line(int row, int next_row) {
  if (row == next_row) return {{row, row}, {row, row}};
  const bool downwards = next_row > row;
  const int first = known_rows_in_first_column(std::abs(next_row - row), downwards);
  if (downwards) return {{row, row + first - 1}, {row + first, next_row}};
  return {{row - first + 1, row}, {next_row, row - first}};
}
