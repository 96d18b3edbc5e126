#include "print/frmGraphView.h"

#include "app/shell.h"
#include "app/user.h"
#include "print/graph_page.h"
#include "print/print_commands.h"

namespace {

constexpr int repaint_interval_ms = 1000;
// Hides the page's left edge, so that the frame begins in the page's white margin.
constexpr int portrait_scroll = 5;

}  // namespace

frmGraphView::frmGraphView(Shell& shell) : Preview(shell) {
  setObjectName(QStringLiteral("frmGraphView"));
  setWindowTitle(QStringLiteral("Graph Preview"));
  add_print_and_quit();
  Timer1 = new QTimer(this);
  Timer1->setInterval(repaint_interval_ms);
  connect(Timer1, &QTimer::timeout, this, &frmGraphView::Timer1_Timer);
}

void frmGraphView::Form_Activate() {
  const QSizeF size = paper();
  area->set_page_size(size);
  if (size.width() < size.height()) area->HScroll1->setValue(portrait_scroll);
  area->redraw();
  Timer1->start();
}

void frmGraphView::Timer1_Timer() {
  if (User::recording.ViewCount > 0) area->redraw();
}

void frmGraphView::draw_page(QPainter& painter, QSizeF size) const {
  draw_graph_page(painter, size, printed_view(shell()));
}

void frmGraphView::print() {
  print_graph(shell());
}
