#include "print/frmDataView.h"

#include <QLabel>
#include <QPushButton>

#include <algorithm>
#include <limits>

#include "app/shell.h"
#include "app/user.h"
#include "base/mnemonics.h"
#include "base/spoken.h"
#include "print/print_commands.h"
#include "print/sheet_page.h"
#include "print/sheet_pages.h"

namespace {

// The two Print commands differ in how many pages they print.
QString pages_note(int pages) {
  if (pages == 1) return QStringLiteral("\"Print\" prints this one page.");
  return QStringLiteral(
             "\"Print\" below prints all %1 pages. \"Print\" in the File menu prints as many as "
             "\"Pages\" in Print Set says: %2.")
      .arg(pages)
      .arg(std::clamp<int>(User::PrintPages, 0, pages));
}

}  // namespace

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
  Label2 = new QLabel(this);
  Label2->setObjectName(QStringLiteral("Label2"));
  Label2->setWordWrap(true);
  Label2->setContentsMargins(9, 9, 9, 0);
  add_above_buttons(Label2);
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
  Label2->setText(pages_note(last + 1));
  show_spoken(*Label1, QStringLiteral("Page %1 / %2").arg(page_ + 1).arg(last + 1));
  area->redraw();
}

void frmDataView::draw_page(QPainter& painter, QSizeF size) const {
  draw_sheet_page(painter, size, printed_view(shell()), page_);
}

void frmDataView::print() {
  print_sheet(shell(), std::numeric_limits<int>::max());
}
