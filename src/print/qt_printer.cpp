#include "print/qt_printer.h"

#include <QAbstractPrintDialog>
#include <QDialogButtonBox>
#include <QPrintDialog>
#include <QPrinterInfo>
#include <QPushButton>
#include <QTabWidget>

#include "base/twips.h"
#include "print/page.h"
#include "print/print_queue.h"

namespace {

void require(bool held, const char* what) {
  if (!held) throw PrinterError(what);
}

std::unique_ptr<QPrinter> on_paper(std::unique_ptr<QPrinter> printer) {
  // Places count from the corner of the paper, not of its printable part.
  printer->setFullPage(true);
  printer->setPageSize(QPageSize(QPageSize::A4));
  return printer;
}

// The default printer, or else the first one available.
QPrinterInfo any_printer() {
  const QPrinterInfo info = QPrinterInfo::defaultPrinter();
  return info.isNull() ? QPrinterInfo(QPrinterInfo::availablePrinters().value(0)) : info;
}

std::unique_ptr<QPrinter> printer_of(const QPrinterInfo& info) {
  require(!info.isNull(), "no printer");
  return on_paper(std::make_unique<QPrinter>(info, QPrinter::HighResolution));
}

// Limits the dialog to setting the printer up; Print Set asks what to print and how often. The tab
// with the pages, their order and the copies is removed: with CUPS no option hides it, and what is
// chosen there would hold for all later documents.
void keep_to_set_up(QPrintDialog& dialog) {
  dialog.setWindowTitle(QStringLiteral("Printer Set"));
  for (const auto option :
       {QAbstractPrintDialog::PrintToFile, QAbstractPrintDialog::PrintPageRange,
        QAbstractPrintDialog::PrintSelection, QAbstractPrintDialog::PrintCollateCopies}) {
    dialog.setOption(option, false);
  }
  if (auto* tabs = dialog.findChild<QTabWidget*>(QStringLiteral("tabs"))) {
    tabs->removeTab(tabs->indexOf(tabs->findChild<QWidget*>(QStringLiteral("copiesTab"))));
  }
  if (auto* buttons = dialog.findChild<QDialogButtonBox*>()) {
    if (QPushButton* ok = buttons->button(QDialogButtonBox::Ok)) ok->setText(QStringLiteral("OK"));
  }
}

// Resets what other systems' dialogs may have set nevertheless.
void forget_what_to_print(QPrinter& printer) {
  printer.setCopyCount(1);
  printer.setPrintRange(QPrinter::AllPages);
  printer.setFromTo(0, 0);
  printer.setPageRanges({});
  printer.setPageOrder(QPrinter::FirstPageFirst);
  printer.setFullPage(true);
}

}  // namespace

QPrinter& QtPrinter::printer() {
  if (!printer_) printer_ = printer_of(QPrinterInfo::defaultPrinter());
  return *printer_;
}

void QtPrinter::print_to_file(const QString& name) {
  printer_ = on_paper(std::make_unique<QPrinter>(QPrinter::HighResolution));
  printer_->setOutputFormat(QPrinter::PdfFormat);
  printer_->setOutputFileName(name);
}

Orientation QtPrinter::orientation() {
  const bool landscape = printer().pageLayout().orientation() == QPageLayout::Landscape;
  return landscape ? Orientation::landscape : Orientation::portrait;
}

void QtPrinter::set_orientation(Orientation orientation) {
  printer().setPageOrientation(orientation == Orientation::landscape ? QPageLayout::Landscape
                                                                     : QPageLayout::Portrait);
}

void QtPrinter::set_paper_a4() {
  printer().setPageSize(QPageSize(QPageSize::A4));
  paper_is_chosen_ = false;
}

void QtPrinter::prefer_paper_a4() {
  if (!paper_is_chosen_) printer().setPageSize(QPageSize(QPageSize::A4));
}

void QtPrinter::show_setup(QWidget* parent) {
  std::unique_ptr<QPrinter> first = printer_ ? nullptr : printer_of(any_printer());
  QPrinter& shown = first ? *first : *printer_;
  QPrintDialog dialog(&shown, parent);
  keep_to_set_up(dialog);
  require(dialog.exec() == QDialog::Accepted, "cancelled");
  if (first) printer_ = std::move(first);
  forget_what_to_print(*printer_);
  paper_is_chosen_ = printer_->pageLayout().pageSize().id() != QPageSize::A4;
}

QPainter& QtPrinter::start_document(const QString& title) {
  QPrinter& target = printer();
  target.setDocName(title);
  require(painter_.begin(&target), "the printer takes no document");
  use_twips();
  return painter_;
}

void QtPrinter::use_twips() {
  const double scale = printer().resolution() / twips_per_inch;
  painter_.scale(scale, scale);
}

QSizeF QtPrinter::paper_size() {
  return printer().pageLayout().fullRect(QPageLayout::Millimeter).size() * twips_per_mm;
}

void QtPrinter::new_page() {
  require(printer().newPage(), "no further page");
}

void QtPrinter::end_document() {
  const bool sent = painter_.end() && printer().printerState() != QPrinter::Error;
  require(sent, "the document was not sent");
  require(to_file() || print_queue_took_it(), "the print queue refused the document");
}

void QtPrinter::abort_document() {
  if (!painter_.isActive()) return;
  printer().abort();
  painter_.end();
}
