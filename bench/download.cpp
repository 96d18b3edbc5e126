// Benchmarks a download over a pseudo-terminal at 9600 baud against the time of its bytes on the
// line plus the pauses that the protocol prescribes.
#include "acquire/download.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <array>
#include <chrono>
#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <thread>
#include <unistd.h>

#include "acquire/frmhistorytime.h"
#include "app/user.h"
#include "base/program_folder.h"
#include "device/frmport.h"
#include "device/request.h"
#include "program.h"
#include "suite.h"
#include "support/dialogs.h"
#include "support/simulator_process.h"

using namespace std::chrono_literals;

namespace {

constexpr double byte_ms = 11.0 / 9.6;
constexpr int exchange_pauses_ms = 10 + 10;
constexpr int block_pause_ms = 100;
constexpr int readings_per_block = 128;

struct Measured {
  double clock_ms = 0;
  double processor_ms = 0;
};

// The time of all requests and answers, and of the pauses between them, in milliseconds.
double prescribed_ms(int readings) {
  const int blocks = readings / readings_per_block;
  const double properties = (1 + 3 + 22) * byte_ms + exchange_pauses_ms;
  const double block = (1 + 4 + 260) * byte_ms + exchange_pauses_ms + block_pause_ms;
  return properties + blocks * block;
}

// A program's folder with a recorder on COM1 that holds `readings` readings.
struct Recorder {
  explicit Recorder(int readings)
      : process({QStringLiteral("--link"), folder.filePath(QStringLiteral("com1")),
                 QStringLiteral("--readings"), QString::number(readings),
                 QStringLiteral("--stopped")}) {}

  const QTemporaryDir folder;
  SimulatorProcess process;
};

// Writes a request as the program does and reads the whole answer. False after 2 s without a byte.
bool bare_exchange(int line, const Request& request) {
  constexpr char address = 0;
  if (write(line, &address, 1) != 1) return false;
  std::this_thread::sleep_for(10ms);
  const QByteArray& frame = request.bytes;
  if (write(line, frame.data(), static_cast<size_t>(frame.size())) != frame.size()) return false;
  int answer_bytes = request.answer_length;
  std::array<char, 512> bytes{};
  pollfd readable{.fd = line, .events = POLLIN, .revents = 0};
  while (answer_bytes > 0 && poll(&readable, 1, 2000) > 0) {
    const auto count = read(line, bytes.data(), bytes.size());
    if (count <= 0) return false;
    answer_bytes -= static_cast<int>(count);
  }
  std::this_thread::sleep_for(10ms);
  return answer_bytes == 0;
}

// The same requests with the same pauses and nothing else: no window, no data kept.
std::optional<double> bare_download_ms(int readings) {
  Recorder recorder(readings);
  if (!recorder.process.wait_ready()) return std::nullopt;
  const auto path = recorder.folder.filePath(QStringLiteral("com1")).toLocal8Bit();
  const int line = open(path.constData(), O_RDWR | O_NOCTTY);
  termios settings{};
  if (line < 0 || tcgetattr(line, &settings) != 0) return std::nullopt;
  cfmakeraw(&settings);
  tcsetattr(line, TCSANOW, &settings);
  QElapsedTimer timer;
  timer.start();
  bool answered = bare_exchange(line, properties_request());
  for (int block = 0; answered && block < readings / readings_per_block; ++block) {
    answered = bare_exchange(line, block_request(block));
    std::this_thread::sleep_for(100ms);
  }
  const double ms = static_cast<double>(timer.nsecsElapsed()) / 1e6;
  close(line);
  return answered ? std::optional(ms) : std::nullopt;
}

// Links, then times the command until the Recording is filled; confirms the segment dialog at once.
std::optional<Measured> download(int readings) {
  Recorder recorder(readings);
  QFile types(recorder.folder.filePath(QStringLiteral("device.txt")));
  if (!types.open(QIODevice::WriteOnly)) return std::nullopt;
  types.write("1\n\"Four\",,4,a,C,b,C,c,C,d,C\n");
  types.close();
  set_program_folder(recorder.folder.path());
  if (!recorder.process.wait_ready()) return std::nullopt;

  Program program;
  frmmdi& window = program.window;
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

// Besides the time that the line alone takes, the peers include a bare client, whose sleeps and
// waits a busy machine stretches just as it stretches the program's.
void download_benchmarks(Suite& suite) {
  const int readings = suite.short_run() ? 2560 : 32000;
  const std::string name = "download " + std::to_string(readings) + " readings";
  std::optional<Measured> last;
  const auto clock_ms = [&]() -> std::optional<double> {
    last = download(readings);
    return last ? std::optional(last->clock_ms) : std::nullopt;
  };
  const auto client_ms = [readings] { return bare_download_ms(readings); };
  suite.compare(name, clock_ms, "bare loop of read and write", client_ms, 1.02, Repeat::once);
  const auto last_clock_ms = [&] { return last ? std::optional(last->clock_ms) : clock_ms(); };
  if (!suite.short_run()) {
    const auto line_ms = [readings] { return std::optional(prescribed_ms(readings)); };
    suite.compare(name + ", line", last_clock_ms, "bytes and pauses at 9600 baud", line_ms, 1.02,
                  Repeat::once);
  }
  const auto processor_ms = [&]() -> std::optional<double> {
    return last_clock_ms() ? std::optional(last->processor_ms) : std::nullopt;
  };
  suite.compare(name + ", processor", processor_ms, "its duration", last_clock_ms, 0.03,
                Repeat::once);
}
