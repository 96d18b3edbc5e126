#include "support/scripted_printer.h"

#include <QCursor>
#include <QGuiApplication>

#include <cmath>

#include "print/page.h"

namespace {

constexpr double twips_per_pixel = 15;

}  // namespace

void ScriptedPrinter::require(const char* call) const {
  if (fault == u"none" || fault == QLatin1String(call)) throw PrinterError("scripted fault");
}

Orientation ScriptedPrinter::orientation() {
  require("orientation");
  return present;
}

void ScriptedPrinter::set_orientation(Orientation orientation) {
  require("orientation");
  log << QStringLiteral("orientation %1").arg(static_cast<int>(orientation));
  present = orientation;
}

void ScriptedPrinter::set_paper_a4() {
  require("a4");
  log << QStringLiteral("a4");
}

Orientation ScriptedPrinter::show_setup(Orientation orientation, QWidget*) {
  log << QStringLiteral("setup %1").arg(static_cast<int>(orientation));
  if (!chosen) throw PrinterError("cancelled");
  return *chosen;
}

QPainter& ScriptedPrinter::start_document(const QString& title) {
  const QCursor* cursor = QGuiApplication::overrideCursor();
  pointer = cursor ? std::optional(cursor->shape()) : std::nullopt;
  require("start");
  log << QStringLiteral("start ") + title;
  drawn_.clear();
  add_page();
  return painter_;
}

QSizeF ScriptedPrinter::paper_size() {
  return present == Orientation::landscape ? a4_portrait.transposed() : a4_portrait;
}

void ScriptedPrinter::add_page() {
  const QSizeF size = paper_size() / twips_per_pixel;
  page_ = QImage(static_cast<int>(std::ceil(size.width())),
                 static_cast<int>(std::ceil(size.height())), QImage::Format_RGB32);
  page_.fill(Qt::white);
  painter_.begin(&page_);
  painter_.scale(1 / twips_per_pixel, 1 / twips_per_pixel);
}

void ScriptedPrinter::finish_page() {
  painter_.end();
  drawn_.push_back(page_);
}

void ScriptedPrinter::new_page() {
  require("page");
  log << QStringLiteral("page");
  finish_page();
  add_page();
}

void ScriptedPrinter::end_document() {
  require("end");
  log << QStringLiteral("end");
  finish_page();
  pages.insert(pages.end(), drawn_.begin(), drawn_.end());
}

void ScriptedPrinter::abort_document() {
  log << QStringLiteral("abort");
  if (painter_.isActive()) painter_.end();
}
