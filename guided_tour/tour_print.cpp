// Printing: both previews, each printed into a PDF file.
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

// Prints into a file, never on a printer of the computer that plays the tour.
QString printed_file(Tour& tour, const QString& name) {
  const QString file = tour.work_file(name);
  dynamic_cast<QtPrinter&>(tour.window().printer()).print_to_file(file);
  return file;
}

// Opens the preview of what is chosen, calls `look`, shows the preview and prints from it.
template <class PreviewWindow>
void preview_and_print(Tour& tour, const QString& file, const QString& name, const QString& text,
                       const std::function<void(PreviewWindow&)>& look = {}) {
  tour.in_dialog<PreviewWindow>([&](PreviewWindow& preview) {
    if (look) look(preview);
    tour.step(name, text);
    tour.click(preview.cmdPrint);
    tour.click(preview.Command2);
  });
  tour.click_toolbar(print_button);
  tour.require(QFileInfo(file).size() > 0, file + QStringLiteral(" is printed"));
  tour.keep(file);
}

}  // namespace

void print_graph(Tour& tour) {
  const QString file = printed_file(tour, QStringLiteral("graph.pdf"));
  choose_what_to_print(tour, 1);
  preview_and_print<frmGraphView>(
      tour, file, QStringLiteral("graph-preview"),
      QStringLiteral("Ok shows the page to scale, as it will be printed."));
}

void print_sheet(Tour& tour) {
  const QString file = printed_file(tour, QStringLiteral("sheet.pdf"));
  choose_what_to_print(tour, 0);
  preview_and_print<frmDataView>(tour, file, QStringLiteral("sheet-preview"),
                                 QStringLiteral("The sheet's pages; Last shows the last one."),
                                 [&tour](frmDataView& preview) { tour.click(preview.cmdLast); });
}
