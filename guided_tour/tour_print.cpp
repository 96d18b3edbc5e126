// Paper: both previews, and both printed into PDF files.
#include <QFileInfo>
#include <QPushButton>

#include "app/user.h"
#include "guided_tour/tour.h"
#include "print/Frmprint.h"
#include "print/frmDataView.h"
#include "print/frmGraphView.h"
#include "print/qt_printer.h"

namespace {

constexpr int print_button = 4;

void choose_what_to_print(Tour& tour, std::size_t option) {
  tour.in_dialog<Frmprint>([&tour, option](Frmprint& dialog) {
    tour.click(dialog.Option1[option]);
    if (option == 1) {
      tour.step(QStringLiteral("print-set"),
                QStringLiteral("The toolbar's Print asks what to print: the graph."));
    }
    tour.click(dialog.Cmd1);
  });
}

// Never on a printer of the computer that the tour plays on.
QString printed_file(Tour& tour, const QString& name) {
  const QString file = tour.work_file(name);
  dynamic_cast<QtPrinter&>(tour.window().printer()).print_to_file(file);
  return file;
}

}  // namespace

void print_graph(Tour& tour) {
  const QString file = printed_file(tour, QStringLiteral("graph.pdf"));
  choose_what_to_print(tour, 1);
  tour.in_dialog<frmGraphView>([&tour](frmGraphView& preview) {
    tour.step(QStringLiteral("graph-preview"),
              QStringLiteral("Ok shows the page to scale, as it will be printed."));
    tour.click(preview.cmdPrint);
    tour.click(preview.Command2);
  });
  tour.click_toolbar(print_button);
  tour.require(QFileInfo(file).size() > 0, QStringLiteral("the graph is printed"));
  tour.keep(file);
}

void print_sheet(Tour& tour) {
  const QString file = printed_file(tour, QStringLiteral("sheet.pdf"));
  choose_what_to_print(tour, 0);
  tour.in_dialog<frmDataView>([&tour](frmDataView& preview) {
    tour.click(preview.cmdLast);
    tour.step(QStringLiteral("sheet-preview"),
              QStringLiteral("The sheet's pages; Last shows the last one."));
    tour.click(preview.cmdPrint);
    tour.click(preview.Command2);
  });
  tour.click_toolbar(print_button);
  tour.require(QFileInfo(file).size() > 0, QStringLiteral("the sheet is printed"));
  tour.keep(file);
}
