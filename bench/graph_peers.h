// Other ways to draw the graph's picture, with the same grid, colours, scale and size.
#pragma once

#include <QProcess>
#include <QSize>

#include <memory>
#include <optional>

class QCustomPlot;

// Adaptive sampling, fast polylines, no antialiasing.
class CustomPlot {
 public:
  CustomPlot(bool noise, QSize size);
  ~CustomPlot();
  CustomPlot(const CustomPlot&) = delete;
  CustomPlot& operator=(const CustomPlot&) = delete;

  // The time of one drawing in milliseconds; nothing if the library is not installed.
  std::optional<double> draw();

 private:
  std::unique_ptr<QCustomPlot> plot_;
  QSize size_;
};

// Qwt, which Debian has for Qt 5 only, in a process of its own.
class QwtProcess {
 public:
  explicit QwtProcess(bool noise) : noise_(noise) {}
  ~QwtProcess();
  QwtProcess(const QwtProcess&) = delete;
  QwtProcess& operator=(const QwtProcess&) = delete;

  // As CustomPlot::draw().
  std::optional<double> draw();

 private:
  bool start();

  bool noise_;
  QProcess process_;
  std::optional<bool> ready_;
};
