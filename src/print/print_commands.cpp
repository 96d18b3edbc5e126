#include "print/print_commands.h"

#include <QGuiApplication>

#include <functional>

#include "app/shell.h"
#include "app/user.h"
#include "base/clock.h"
#include "base/message_box.h"
#include "base/times.h"
#include "print/Frmprint.h"
#include "print/frmDataView.h"
#include "print/frmGraphView.h"
#include "print/print_view.h"
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

// Shows Print Set; false if nothing is to be printed. Printing takes the view and the scales from
// the Historical Data window, so it is opened again if it was closed.
bool ask_what_to_print(Shell& shell) {
  Frmprint(shell).exec();
  if (User::PrintPages == 0 || shell.shutting_down()) return false;
  if (!shell.loaded_display()) shell.show_display();
  return true;
}

bool print_or_tell(Shell& shell, const std::function<void()>& print) {
  const bool printed = stop_at_first_failure([&] {
    const Hourglass pointer;
    print();
  });
  if (!printed) shell.messages().show(QStringLiteral("Default Printer Error"));
  return printed;
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
  if (!User::PrintGraph) {
    print_sheet(shell, User::PrintPages);
    return;
  }
  // Each run reports its own failure; the user may end the program under that message.
  for (int run = 0; run < User::PrintPages && !shell.shutting_down(); ++run) print_graph(shell);
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
  view.printed = stamp_text(shell.clock().now());
  return view;
}

bool print_graph(Shell& shell) {
  return print_or_tell(shell, [&] { print_graph(shell.printer(), printed_view(shell)); });
}

bool print_sheet(Shell& shell, int pages) {
  return print_or_tell(shell, [&] { print_sheet(shell.printer(), printed_view(shell), pages); });
}
