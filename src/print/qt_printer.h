// The system's printer.
#pragma once

#include <QPainter>
#include <QPrinter>

#include <memory>

#include "print/printer.h"

// The default printer until one is chosen in the set-up dialog. It is looked for at each use as
// long as there is none, so one that is installed meanwhile is found.
class QtPrinter : public Printer {
 public:
  Orientation orientation() override;
  void set_orientation(Orientation orientation) override;
  void set_paper_a4() override;
  void prefer_paper_a4() override;
  void show_setup(QWidget* parent) override;
  QPainter& start_document(const QString& title) override;
  QSizeF paper_size() override;
  void new_page() override;
  void end_document() override;
  void abort_document() override;

  // Writes documents to this file as PDF instead; no printer is needed then.
  void print_to_file(const QString& name);

 private:
  QPrinter& printer();
  bool to_file() const { return !printer_->outputFileName().isEmpty(); }
  void use_twips();

  std::unique_ptr<QPrinter> printer_;
  bool paper_is_chosen_ = false;
  QPainter painter_;
};
