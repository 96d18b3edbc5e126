// A printer whose pages go nowhere, and that fails where a test wants it to.
#pragma once

#include <QCursor>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QStringList>

#include <optional>

#include "print/page.h"
#include "print/printer.h"

class ScriptedPrinter final : public Printer {
 public:
  // "none" for no printer at all, or the call that fails: "start", "page", "end".
  QString fault;
  // What the set-up dialog gives; cancelled when empty.
  std::optional<Orientation> chosen;
  Orientation present = Orientation::portrait;

  // What was done: "a4", "setup 1", "start TITLE", "page", "end", "abort", "orientation 2".
  QStringList log;
  // The pointer that was shown when the last document started.
  std::optional<Qt::CursorShape> pointer;

  Orientation orientation() override {
    if (fault == u"none") throw PrinterError("no printer");
    return present;
  }
  void set_orientation(Orientation orientation) override {
    carry_out(QStringLiteral("orientation %1").arg(static_cast<int>(orientation)));
    present = orientation;
  }
  void set_paper_a4() override { carry_out(QStringLiteral("a4")); }
  Orientation show_setup(Orientation orientation, QWidget*) override {
    log << QStringLiteral("setup %1").arg(static_cast<int>(orientation));
    return chosen ? *chosen : throw PrinterError("cancelled");
  }
  QPainter& start_document(const QString& title) override {
    const QCursor* cursor = QGuiApplication::overrideCursor();
    pointer = cursor ? std::optional(cursor->shape()) : std::nullopt;
    carry_out(QStringLiteral("start ") + title);
    painter_.begin(&paper_);
    painter_.scale(1 / twips_per_pixel, 1 / twips_per_pixel);
    return painter_;
  }
  QSizeF paper_size() override {
    return present == Orientation::landscape ? a4_portrait.transposed() : a4_portrait;
  }
  void new_page() override { carry_out(QStringLiteral("page")); }
  void end_document() override {
    carry_out(QStringLiteral("end"));
    painter_.end();
  }
  void abort_document() override {
    log << QStringLiteral("abort");
    if (painter_.isActive()) painter_.end();
  }

 private:
  static constexpr double twips_per_pixel = 15;

  void carry_out(const QString& call) {
    const bool fails = fault == u"none" || (!fault.isEmpty() && call.startsWith(fault));
    if (fails) throw PrinterError("scripted fault");
    log << call;
  }

  QImage paper_{800, 1150, QImage::Format_RGB32};
  QPainter painter_;
};
