// bench-qwt 0|1: draws the smooth signal or the noise once for each line on its input and prints
// the processor time in milliseconds.
#include <QApplication>
#include <QImage>
#include <QPainter>
#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>

#include <cstdio>
#include <ctime>

#include "../graph_signal.h"

namespace {

void add_grid(QwtPlot& plot) {
  auto* grid = new QwtPlotGrid;
  grid->setMajorPen(QColor(200, 200, 200), 1);
  grid->enableXMin(false);
  grid->enableYMin(false);
  grid->attach(&plot);
}

void add_curve(QwtPlot& plot, bool noise, int channel) {
  const QColor colours[] = {QColor(255, 0, 0), QColor(0, 0, 255), QColor(0, 192, 192),
                            QColor(255, 255, 0)};
  QVector<double> x;
  QVector<double> y;
  for (int n = 0; n < graph_samples; ++n) {
    x << n;
    y << static_cast<double>(graph_value(noise, n, channel));
  }
  auto* curve = new QwtPlotCurve;
  curve->setSamples(x, y);
  curve->setPen(colours[channel], 1);
  curve->setPaintAttribute(QwtPlotCurve::ClipPolygons);
  curve->setPaintAttribute(QwtPlotCurve::FilterPoints);
  curve->attach(&plot);
}

double draw(const QwtPlot& plot, QImage& image) {
  QwtScaleMap maps[QwtPlot::axisCnt];
  for (int axis = 0; axis < QwtPlot::axisCnt; ++axis) maps[axis] = plot.canvasMap(axis);
  maps[QwtPlot::xBottom].setScaleInterval(0, graph_samples - 1);
  maps[QwtPlot::xBottom].setPaintInterval(0, graph_width - 1);
  maps[QwtPlot::yLeft].setScaleInterval(static_cast<double>(graph_low),
                                        static_cast<double>(graph_high));
  maps[QwtPlot::yLeft].setPaintInterval(graph_height - 1, 0);
  const std::clock_t start = std::clock();
  image.fill(Qt::white);
  QPainter painter(&image);
  // With a clip, Qt 5 draws steep lines twice as fast.
  painter.setClipRect(image.rect());
  plot.drawItems(&painter, QRectF(0, 0, graph_width - 1, graph_height - 1), maps);
  painter.end();
  return static_cast<double>(std::clock() - start) * 1000.0 / CLOCKS_PER_SEC;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const bool noise = argc > 1 && argv[1][0] == '1';
  QwtPlot plot;
  plot.setAxisScale(QwtPlot::xBottom, 0, graph_samples - 1, (graph_samples - 1) / 16.0);
  plot.setAxisScale(QwtPlot::yLeft, static_cast<double>(graph_low), static_cast<double>(graph_high),
                    10);
  add_grid(plot);
  for (int c = 0; c < graph_channels; ++c) add_curve(plot, noise, c);
  plot.updateAxes();
  QImage image(graph_width, graph_height, QImage::Format_RGB32);
  for (int c = std::getchar(); c == '\n'; c = std::getchar()) {
    std::printf("%.3f\n", draw(plot, image));
    std::fflush(stdout);
  }
  return 0;
}
