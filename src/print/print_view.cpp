#include "print/print_view.h"

#include <QScopeGuard>

#include <algorithm>
#include <functional>

#include "print/graph_page.h"
#include "print/printout.h"
#include "print/sheet_page.h"
#include "print/sheet_pages.h"

namespace {

void print_document(Printout& printout, const QString& title,
                    const std::function<void(QPainter&, QSizeF)>& draw) {
  auto abort = qScopeGuard([&] { printout.abort_document(); });
  QPainter& painter = printout.start_document(title);
  draw(painter, printout.paper_size());
  printout.end_document();
  abort.dismiss();
}

}  // namespace

void print_graph(Printout& printout, const PrintedView& view) {
  print_document(printout, view.recording.Title,
                 [&](QPainter& painter, QSizeF size) { draw_graph_page(painter, size, view); });
}

void print_sheet(Printout& printout, const PrintedView& view, int pages) {
  print_document(printout, view.recording.Title, [&](QPainter& painter, QSizeF size) {
    const int count = std::min(pages, SheetPages(view, size).count());
    for (int page = 0; page < count; ++page) {
      if (page > 0) printout.new_page();
      draw_sheet_page(painter, size, view, page);
    }
  });
}
