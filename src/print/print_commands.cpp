#include "print/print_commands.h"

#include <QGuiApplication>

#include "app/shell.h"
#include "app/user.h"
#include "base/message_box.h"
#include "print/Frmprint.h"
#include "print/frmDataView.h"
#include "print/frmGraphView.h"
#include "print/printer.h"
#include "views/frmdisplay.h"

namespace {

class Hourglass {
 public:
  Hourglass() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  ~Hourglass() { QGuiApplication::restoreOverrideCursor(); }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;
};

// Shows Print Set; false when nothing is to be printed. The Historical Data window holds the view
// and the scales that are printed, so one that was closed is opened again.
bool ask_what_to_print(Shell& shell) {
  Frmprint(shell).exec();
  if (User::PrintPages == 0 || shell.shutting_down()) return false;
  if (!shell.loaded_display()) shell.show_display();
  return true;
}

// One copy after the other; a printer that fails is not asked again.
void print_graphs(Shell& shell) {
  frmGraphView preview(shell);
  for (int copy = 0; copy < User::PrintPages; ++copy) {
    if (!preview.print()) return;
  }
}

}  // namespace

void printview_Click(Shell& shell) {
  if (!ask_what_to_print(shell)) return;
  if (User::PrintGraph) {
    frmGraphView(shell).exec();
  } else {
    frmDataView(shell).exec();
  }
}

void printdata_Click(Shell& shell) {
  if (!ask_what_to_print(shell) || User::PrintPages < 0) return;
  if (User::PrintGraph) {
    print_graphs(shell);
  } else {
    frmDataView(shell).print(User::PrintPages);
  }
}

PrintedView printed_view(Shell& shell) {
  PrintedView view{User::recording};
  if (const frmdisplay* window = shell.loaded_display()) view.start = window->ViewStart;
  for (std::size_t c = 0; c < view.chosen.size(); ++c) {
    view.chosen[c] = User::PrintChannels[c + 1] != 0;
    view.high[c] = User::AxisHigh[c];
    view.low[c] = User::AxisLow[c];
  }
  view.combined = User::PrintChannels[0] != 0;
  return view;
}

bool print_document(Shell& shell, const std::function<void(Printer&, QPainter&)>& draw) {
  const bool printed = stop_at_first_failure([&] {
    const Hourglass pointer;
    Printer& printer = shell.printer();
    try {
      draw(printer, printer.start_document(User::recording.Title));
      printer.end_document();
    } catch (const RunTimeError&) {
      printer.abort_document();
      throw;
    }
  });
  if (!printed) shell.messages().show(QStringLiteral("Default Printer Error"));
  return printed;
}
