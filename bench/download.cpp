// A download over a pseudo-terminal at 9600 baud, against the time that its bytes take on the line
// and the pauses that the protocol prescribes.
#include "acquire/download.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <ctime>

#include "acquire/frmhistorytime.h"
#include "app/clock.h"
#include "app/dialogs.h"
#include "app/frmmdi.h"
#include "app/program_folder.h"
#include "app/user.h"
#include "device/frmport.h"
#include "device/qt_serial_port.h"
#include "print/qt_printer.h"
#include "suite.h"
#include "support/dialogs.h"
#include "support/simulator_process.h"

namespace {

constexpr double byte_ms = 11.0 / 9.6;
constexpr int exchange_pauses_ms = 10 + 10;
constexpr int block_pause_ms = 100;
constexpr int readings_per_block = 128;

struct Measured {
  double clock_ms = 0;
  double processor_ms = 0;
};

// The bytes of all requests and answers, and the pauses between them.
double prescribed_ms(int readings) {
  const int blocks = readings / readings_per_block;
  const double properties = (1 + 3 + 22) * byte_ms + exchange_pauses_ms;
  const double block = (1 + 4 + 260) * byte_ms + exchange_pauses_ms + block_pause_ms;
  return properties + blocks * block;
}

// Links, and measures from the command to the Recording; the segment dialog is answered at once.
std::optional<Measured> download(int readings) {
  const QTemporaryDir folder;
  QFile types(folder.filePath(QStringLiteral("device.txt")));
  if (!types.open(QIODevice::WriteOnly)) return std::nullopt;
  types.write("1\n\"Four\",,4,a,C,b,C,c,C,d,C\n");
  types.close();
  set_program_folder(folder.path());
  SimulatorProcess simulator({QStringLiteral("--link"), folder.filePath(QStringLiteral("com1")),
                              QStringLiteral("--readings"), QString::number(readings),
                              QStringLiteral("--stopped")});
  if (!simulator.wait_ready()) return std::nullopt;

  SystemClock clock;
  QtSerialPort port;
  WindowMessageBox messages;
  WindowFileDialog files;
  QtPrinter printer;
  frmmdi window({clock, port, messages, files, printer});
  window.show();
  const auto ports = when_shown<frmport>([](frmport& dialog) {
    dialog.Option1[0]->click();
    dialog.Command1->click();
  });
  Q_EMIT window.menu_entry(QStringLiteral("link"))->triggered();
  const auto segments =
      when_shown<frmhistorytime>([](frmhistorytime& dialog) { dialog.Command1->click(); });
  QElapsedTimer timer;
  timer.start();
  const std::clock_t before = std::clock();
  ReadRecorderData(window);
  const Measured measured = {static_cast<double>(timer.nsecsElapsed()) / 1e6,
                             static_cast<double>(std::clock() - before) * 1e3 / CLOCKS_PER_SEC};
  const bool whole = User::recording.SampleCount == readings / 4;
  window.close();
  return whole ? std::optional(measured) : std::nullopt;
}

}  // namespace

// A full memory takes nearly two minutes, so it is read once and both lines speak of that run.
void download_benchmarks(Suite& suite) {
  const int readings = suite.short_run() ? 2560 : 32000;
  std::optional<std::optional<Measured>> result;
  const auto measured = [&result, readings] {
    if (!result) result = download(readings);
    return *result;
  };
  const auto clock_ms = [&]() -> std::optional<double> {
    const auto got = measured();
    return got ? std::optional(got->clock_ms) : std::nullopt;
  };
  const std::string name = "download " + std::to_string(readings) + " readings";
  suite.compare(
      name + ", time", clock_ms, "bytes and pauses at 9600 baud",
      [readings] { return std::optional(prescribed_ms(readings)); }, 1.02);
  suite.compare(
      name + ", processor",
      [&]() -> std::optional<double> {
        const auto got = measured();
        return got ? std::optional(got->processor_ms) : std::nullopt;
      },
      "its duration", clock_ms, 0.03);
}
