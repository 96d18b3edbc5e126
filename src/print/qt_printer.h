// The system's printer.
#pragma once

#include <QPainter>
#include <QPrinter>

#include <memory>

#include "print/printer.h"

// The default printer until another is chosen in the set-up dialog. While there is none, each use
// looks for it again and so finds one that was installed meanwhile.
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

  // Writes documents to this file as PDF instead, which needs no printer.
  void print_to_file(const QString& name);

 private:
  QPrinter& printer();
  bool to_file() const { return !printer_->outputFileName().isEmpty(); }
  void use_twips();

  std::unique_ptr<QPrinter> printer_;
  bool paper_is_chosen_ = false;
  QPainter painter_;
};
