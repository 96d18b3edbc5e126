#include "print/frmDataView.h"

#include <algorithm>
#include <limits>

#include "app/shell.h"
#include "base/mnemonics.h"
#include "print/print_commands.h"
#include "print/sheet_page.h"

frmDataView::frmDataView(Shell& shell) : Preview(shell) {
  setObjectName(QStringLiteral("frmDataView"));
  setWindowTitle(QStringLiteral("Data Preview"));
  cmdFirst = add_button(QStringLiteral("cmdFirst"), QStringLiteral("First"), Qt::Key_Home);
  cmdPrevious =
      add_button(QStringLiteral("cmdPrevious"), QStringLiteral("Previous"), Qt::Key_PageUp);
  cmdNext = add_button(QStringLiteral("cmdNext"), QStringLiteral("Next"), Qt::Key_PageDown);
  cmdLast = add_button(QStringLiteral("cmdLast"), QStringLiteral("Last"), Qt::Key_End);
  Label1 = new QLabel(this);
  Label1->setObjectName(QStringLiteral("Label1"));
  Label1->setAlignment(Qt::AlignCenter);
  row()->insertWidget(0, Label1);
  add_print_and_quit();
  give_letter(*cmdPrevious, u'V');
  connect(cmdFirst, &QPushButton::clicked, this, [this] { show_page(0); });
  connect(cmdPrevious, &QPushButton::clicked, this, [this] { show_page(page_ - 1); });
  connect(cmdNext, &QPushButton::clicked, this, [this] { show_page(page_ + 1); });
  connect(cmdLast, &QPushButton::clicked, this, [this] { show_page(page_count() - 1); });
}

void frmDataView::Form_Activate() {
  area->set_page_size(paper());
  show_page(0);
  skip_on_error([this] { shell().printer().set_paper_a4(); });
}

int frmDataView::page_count() const {
  return SheetPages(printed_view(shell()), area->page_size()).count();
}

void frmDataView::show_page(int page) {
  const int last = page_count() - 1;
  page_ = std::clamp(page, 0, last);
  cmdFirst->setEnabled(page_ > 0);
  cmdPrevious->setEnabled(page_ > 0);
  cmdNext->setEnabled(page_ < last);
  cmdLast->setEnabled(page_ < last);
  Label1->setText(QStringLiteral("Page %1 / %2").arg(page_ + 1).arg(last + 1));
  area->redraw();
}

void frmDataView::draw_page(QPainter& painter, QSizeF size) const {
  draw_sheet_page(painter, size, printed_view(shell()), page_);
}

void frmDataView::cmdPrint_Click() {
  print(std::numeric_limits<int>::max());
}

bool frmDataView::print(int pages) {
  return print_document(shell(), [this, pages](Printer& printer, QPainter& painter) {
    const PrintedView view = printed_view(shell());
    const QSizeF size = printer.paper_size();
    const int count = std::min(pages, SheetPages(view, size).count());
    for (int page = 0; page < count; ++page) {
      if (page > 0) printer.new_page();
      draw_sheet_page(painter, size, view, page);
    }
  });
}
