#include "print/pdf_file.h"

#include "base/twips.h"
#include "data/whole_file.h"
#include "print/page.h"

namespace {

constexpr int dots_per_inch = 1200;

void require(bool held, const char* what) {
  if (!held) throw PrinterError(what);
}

}  // namespace

PdfFile::PdfFile(const QString& name, Orientation orientation)
    : name_(name),
      layout_(
          QPageSize(QPageSize::A4),
          orientation == Orientation::landscape ? QPageLayout::Landscape : QPageLayout::Portrait,
          QMarginsF()) {}

PdfFile::~PdfFile() {
  abort_document();
}

QPainter& PdfFile::start_document(const QString& title) {
  document_.setData({});
  document_.open(QIODevice::WriteOnly);
  writer_ = std::make_unique<QPdfWriter>(&document_);
  writer_->setTitle(title);
  writer_->setResolution(dots_per_inch);
  writer_->setPageLayout(layout_);
  require(painter_.begin(writer_.get()), "the file takes no document");
  const double scale = dots_per_inch / twips_per_inch;
  painter_.scale(scale, scale);
  return painter_;
}

QSizeF PdfFile::paper_size() {
  return layout_.fullRect(QPageLayout::Millimeter).size() * twips_per_mm;
}

void PdfFile::new_page() {
  require(writer_->newPage(), "no further page");
}

void PdfFile::end_document() {
  const bool ended = painter_.end();
  writer_.reset();
  document_.close();
  require(ended, "the document could not be made");
  write_whole_file(name_, document_.data().toStdString());
}

void PdfFile::abort_document() {
  if (painter_.isActive()) painter_.end();
  writer_.reset();
  document_.close();
}
