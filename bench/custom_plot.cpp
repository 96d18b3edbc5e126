// Compiled apart from the program's own sources: the library's header uses Qt's keywords and
// implicit conversions, which are switched off there.
#include <qcustomplot.h>

#include "graph_peers.h"
#include "graph_signal.h"
#include "suite.h"
#include "views/graph_picture.h"

namespace {

void set_axis(QCPAxis& axis, double low, double high) {
  const auto ticker = QSharedPointer<QCPAxisTickerFixed>::create();
  ticker->setTickOrigin(low);
  ticker->setTickStep((high - low) / 16);
  axis.setTicker(ticker);
  axis.setRange(low, high);
  axis.setTickLabels(false);
  axis.setTickLength(0);
  axis.setSubTicks(false);
  axis.grid()->setPen(QPen(QColor(grid_colour)));
  axis.grid()->setZeroLinePen(Qt::NoPen);
}

}  // namespace

CustomPlot::CustomPlot(bool noise, QSize size)
    : plot_(std::make_unique<QCustomPlot>()), size_(size) {
  plot_->setNotAntialiasedElements(QCP::aeAll);
  plot_->setPlottingHints(QCP::phFastPolylines);
  plot_->axisRect()->setAutoMargins(QCP::msNone);
  plot_->axisRect()->setMargins(QMargins(0, 0, 0, 0));
  set_axis(*plot_->xAxis, 0, graph_samples - 1);
  set_axis(*plot_->yAxis, double{graph_low}, double{graph_high});
  for (int c = 0; c < graph_channels; ++c) {
    QCPGraph* graph = plot_->addGraph();
    graph->setPen(QPen(QColor(curve_colours[static_cast<std::size_t>(c)]), 1));
    graph->setAdaptiveSampling(true);
    QVector<double> keys;
    QVector<double> values;
    for (int n = 0; n < graph_samples; ++n) {
      keys << n;
      values << double{graph_value(noise, n, c)};
    }
    graph->setData(keys, values, true);
  }
}

std::optional<double> CustomPlot::draw() {
  QImage image(size_, QImage::Format_RGB32);
  QCPPainter painter(&image);
  return milliseconds([&] { plot_->toPainter(&painter, size_.width(), size_.height()); });
}

CustomPlot::~CustomPlot() = default;
