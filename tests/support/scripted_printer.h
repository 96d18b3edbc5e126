// A printer that keeps its pages as pictures, and fails where a test wants it to.
#pragma once

#include <QImage>
#include <QPainter>
#include <QStringList>

#include <optional>
#include <vector>

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
  // The pages of documents sent, 96 pixels an inch.
  std::vector<QImage> pages;
  // The pointer that was shown when the last document started.
  std::optional<Qt::CursorShape> pointer;

  Orientation orientation() override;
  void set_orientation(Orientation orientation) override;
  void set_paper_a4() override;
  Orientation show_setup(Orientation orientation, QWidget* parent) override;
  QPainter& start_document(const QString& title) override;
  QSizeF paper_size() override;
  void new_page() override;
  void end_document() override;
  void abort_document() override;

 private:
  void require(const char* call) const;
  void add_page();
  void finish_page();

  QImage page_;
  QPainter painter_;
  std::vector<QImage> drawn_;
};
