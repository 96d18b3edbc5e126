// Replaces custom_plot.cpp where QCustomPlot is not installed.
#include "graph_peers.h"

class QCustomPlot {};

CustomPlot::CustomPlot(bool, QSize) {}
CustomPlot::~CustomPlot() = default;

std::optional<double> CustomPlot::draw() {
  return std::nullopt;
}
