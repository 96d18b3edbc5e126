// Prints into a PDF file, without a printer or a window.
#pragma once

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

#include <memory>

#include "print/printout.h"

// Writes each document to the same file, on A4. An older file stays until the new document is
// complete and on the disk; end_document() throws FileError when it cannot be written.
class PdfFile final : public Printout {
 public:
  PdfFile(const QString& name, Orientation orientation);
  ~PdfFile() override;

  QPainter& start_document(const QString& title) override;
  QSizeF paper_size() override;
  void new_page() override;
  void end_document() override;
  void abort_document() override;

 private:
  QString name_;
  QPageLayout layout_;
  QBuffer document_;
  std::unique_ptr<QPdfWriter> writer_;
  QPainter painter_;
};
