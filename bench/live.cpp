// Benchmarks of live polling: the cost of a cycle on a full buffer, over three automatic saves, and
// over a pseudo-terminal.
#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QStandardItemModel>
#include <QTableView>

#include <malloc.h>
#include <memory>
#include <vector>

#include "app/user.h"
#include "base/clock.h"
#include "device/frmport.h"
#include "device/qt_serial_port.h"
#include "monitor/frmrealtime.h"
#include "monitor/frmrecord.h"
#include "monitor/live_pane.h"
#include "monitor/setup_pane.h"
#include "monitor/time_picker.h"
#include "suite.h"
#include "support/dialogs.h"
#include "support/main_window.h"
#include "support/simulated_window.h"
#include "support/simulator_process.h"

namespace {

constexpr int thousand = 1000;
constexpr int capacity = LiveBuffer::capacity;

Side always(double value) {
  return [value] { return value; };
}

// Heap in use, in KiB.
double heap_kib() {
  const auto info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd) / 1024;
}

void fill(LiveMonitor& live) {
  for (int n = 0; n < capacity; ++n) {
    live.add(QStringLiteral("1 Mar 2026 10:00:00"), {20, 21, 22, 23}, {});
  }
}

// The program linked to a simulated recorder, on a clock whose seconds pass at once. One of the
// four channels is always out of its limits.
class Live {
 public:
  Live() {
    window_.plug_in({});
    User::RecorderType = 3;
    window_.port.open();
    window_.main.window->resize(1024, 700);
    window_.main.run(QStringLiteral("realtime"));
    window().showMaximized();
    window().setup().Text1[0]->setText(QStringLiteral("-100"));
    QCoreApplication::processEvents();
  }
  ~Live() { window_.clock.stop(); }
  Live(const Live&) = delete;
  Live& operator=(const Live&) = delete;

  frmrealtime& window() { return *window_.realtime(); }
  // The number of files saved automatically.
  qsizetype saved() const {
    return QDir(window_.main.folder.path()).entryList({QStringLiteral("*.qlx")}).size();
  }
  // Runs this number of cycles and paints all that each one shows.
  void cycle(int times) {
    for (int i = 0; i < times; ++i) {
      Q_EMIT window().live().Timer1->tick();
      QCoreApplication::processEvents();
      window_.clock.sleep(1000);
      window_.port.log.clear();
      window_.clock.sleeps.clear();
    }
  }

 private:
  SimulatedWindow window_;
};

// A table of items: each cycle removes its first row, renumbers the others and adds one.
class ItemTable {
 public:
  ItemTable() : model_(capacity, 6) {
    view_.setModel(&model_);
    view_.resize(1000, 400);
    view_.show();
    for (int row = 0; row < capacity; ++row) {
      for (int column = 0; column < 6; ++column) set(row, column, QStringLiteral("21.5"));
    }
    view_.scrollToBottom();
    QCoreApplication::processEvents();
  }
  void cycle() {
    model_.removeRow(0);
    for (int row = 0; row < capacity - 1; ++row) set(row, 0, QString::number(row + 1));
    model_.insertRow(capacity - 1);
    for (int column = 0; column < 6; ++column) set(capacity - 1, column, QStringLiteral("21.5"));
    view_.scrollToBottom();
    QCoreApplication::processEvents();
  }

 private:
  void set(int row, int column, const QString& text) {
    model_.setData(model_.index(row, column), text);
  }

  QStandardItemModel model_;
  QTableView view_;
};

void cycle_benchmarks(Suite& suite) {
  Live live;
  frmrealtime& window = live.window();
  fill(window.live().monitor());
  const int cycles = suite.short_run() ? 20 : 100;
  const auto cycle = [&]() -> std::optional<double> {
    return milliseconds([&] { live.cycle(cycles); }) / cycles;
  };
  suite.compare("live cycle, graph of 128", cycle, "1 ms", always(1), 1);
  auto table = std::make_unique<ItemTable>();
  const auto peer = [&] { return std::optional(milliseconds([&] { table->cycle(); })); };
  suite.compare("live cycle beside a table of items", cycle, "QStandardItemModel, the sheet alone",
                peer, 0.25);
  table.reset();
  for (QTableView* sheet : {window.live().MSFlG1, window.live().MSFlG2}) {
    window.live().SSTab3->setCurrentWidget(sheet);
    live.cycle(1);
    const auto paint = [&] {
      return std::optional(milliseconds([&] { sheet->viewport()->repaint(); }));
    };
    const std::string name = sheet->accessibleName().toLower().toStdString();
    suite.compare("live cycle, sheet of " + name, cycle, "painting its rows once", paint, 2);
  }
  window.live().SSTab3->setCurrentIndex(0);
  while (window.live().view().Span < capacity) window.live().cmd[0]->click();
  suite.compare("live cycle, graph of all readings", cycle, "2 ms", always(2), 1);
}

// Runs from the empty window to three automatic saves. Seconds lie between the thousands of cycles,
// so each is measured in paintings of the graph done in turn with it, which takes out what else the
// machine does. The buffer's memory has its final size once readings have been dropped.
void soak_benchmarks(Suite& suite) {
  Live live;
  std::vector<double> times;
  std::vector<double> heap;
  const auto soak = [&] {
    for (int n = 0; n <= 3 * capacity; n += thousand) {
      double cycles = 0;
      double paintings = 0;
      for (int part = 0; part < 50; ++part) {
        cycles += milliseconds([&] { live.cycle(thousand / 50); });
        paintings += milliseconds([&] {
          for (int i = 0; i < 10; ++i) live.window().live().Pic1->repaint();
        });
      }
      times.push_back(cycles / paintings);
      heap.push_back(heap_kib());
    }
  };
  const auto end = [&](const std::vector<double>& figures) -> std::optional<double> {
    if (figures.empty()) soak();
    return live.saved() == 3 ? std::optional(figures.back()) : std::nullopt;
  };
  const auto at = [](const std::vector<double>& figures, std::size_t index) {
    return [&figures, index] { return std::optional(figures.at(index)); };
  };
  suite.compare(
      "live soak, paintings in last 1000", [&] { return end(times); },
      "in the first thousand cycles", at(times, 0), 1.2, Repeat::once);
  suite.compare(
      "live soak, KiB of heap", [&] { return end(heap); }, "after 20000 cycles", at(heap, 19), 1.01,
      Repeat::once);
}

// The share of `seconds` for which the processor works while the program polls a recorder on a
// pseudo-terminal once a second, with a full buffer.
std::optional<double> polling_share(int seconds) {
  SystemClock clock;
  QtSerialPort port;
  const MainWindow main(port, clock);
  SimulatorProcess simulator(
      {QStringLiteral("--link"), main.folder.filePath(QStringLiteral("com1"))});
  if (!simulator.wait_ready()) return std::nullopt;
  const auto link = when_shown<frmport>([](frmport& dialog) {
    dialog.Combo1->setCurrentText(QStringLiteral("Four"));
    dialog.Option1[0]->click();
    dialog.Command1->click();
  });
  main.window->resize(1024, 700);
  Q_EMIT main.window->menu_entry(QStringLiteral("link"))->triggered();
  frmrealtime* window = main.window->loaded_realtime();
  if (!window) return std::nullopt;
  fill(window->live().monitor());
  const auto record = when_shown<frmrecord>([](frmrecord& dialog) {
    set_picked_seconds(*dialog.DTP1, 1);
    dialog.Command1->click();
  });
  Q_EMIT main.window->menu_entry(QStringLiteral("record"))->triggered();
  const auto run = [](int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
  };
  run(1500);
  const int readings = window->live().monitor().SaveCounter;
  const double worked = milliseconds([&] { run(1000 * seconds); });
  const bool polled = window->live().monitor().SaveCounter - readings >= seconds - 1;
  return polled ? std::optional(worked / 1000 / seconds) : std::nullopt;
}

}  // namespace

void live_benchmarks(Suite& suite) {
  cycle_benchmarks(suite);
  if (!suite.short_run()) soak_benchmarks(suite);
  const int seconds = suite.short_run() ? 3 : 20;
  suite.compare(
      "live polling once a second, share", [=] { return polling_share(seconds); }, "3 % of a core",
      always(0.03), 1, Repeat::once);
}
