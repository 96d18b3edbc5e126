#include <QTest>

#include <ctime>

#include "acquire/frmhistorytime.h"
#include "app/clock.h"
#include "app/numbers.h"
#include "app/times.h"
#include "app/user.h"
#include "device/fixed_point.h"
#include "device/frmport.h"
#include "device/qt_serial_port.h"
#include "monitor/frmrealtime.h"
#include "simulator/signal.h"
#include "support/dialogs.h"
#include "support/main_window.h"
#include "support/runner.h"
#include "support/simulator_process.h"

// The real main window, port and clock against the real simulator behind a pseudo-terminal.
class TestSession : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void cleanup();
  void link_download_save_open();
  void waiting_costs_no_processor_time();
  void closing_the_window_ends_a_real_wait();
  void hung_up_line_idles();
  void unplugged_and_plugged_in_again();

 private:
  bool start(const QStringList& options);
  void link(int option);
  void read();

  std::unique_ptr<SystemClock> clock_;
  std::unique_ptr<QtSerialPort> port_;
  std::unique_ptr<MainWindow> main_;
  std::unique_ptr<SimulatorProcess> simulator_;
};

namespace {

constexpr int automatic = 4;

double processor_seconds() {
  return double(std::clock()) / CLOCKS_PER_SEC;
}

}  // namespace

void TestSession::init() {
  clock_ = std::make_unique<SystemClock>();
  port_ = std::make_unique<QtSerialPort>();
  main_ = std::make_unique<MainWindow>(*port_, *clock_);
  User::recording = Recording();
}

void TestSession::cleanup() {
  simulator_.reset();
  main_.reset();
  port_.reset();
}

// A recorder of two channels on COM2, so that the automatic search has to go past COM1.
bool TestSession::start(const QStringList& options) {
  const QString link = main_->folder.filePath(QStringLiteral("com2"));
  simulator_ = std::make_unique<SimulatorProcess>(QStringList{QStringLiteral("--link"), link,
                                                              QStringLiteral("--channels"),
                                                              QStringLiteral("2")} +
                                                  options);
  return simulator_->wait_ready();
}

void TestSession::link(int option) {
  const auto script = when_shown<frmport>([=](frmport& dialog) {
    dialog.Option1[static_cast<std::size_t>(option)]->click();
    dialog.Combo1->setCurrentText(QStringLiteral("Two"));
    press(dialog.Command1);
  });
  main_->run(QStringLiteral("link"));
}

void TestSession::read() {
  const auto script =
      when_shown<frmhistorytime>([](frmhistorytime& dialog) { press(dialog.Command1); });
  main_->run(QStringLiteral("read"));
}

void TestSession::link_download_save_open() {
  QVERIFY2(start({QStringLiteral("--readings"), QStringLiteral("700"), QStringLiteral("--interval"),
                  QStringLiteral("3600")}),
           qPrintable(simulator_->errors()));
  link(automatic);
  QCOMPARE(main_->messages.shown, QStringList());
  QCOMPARE(int{User::PortChoice}, 1);
  QVERIFY(main_->window->menu_entry(QStringLiteral("read"))->isEnabled());
  QCOMPARE(main_->window->loaded_realtime()->Text11->text(), "700");

  read();
  QCOMPARE(main_->messages.shown, QStringList());
  const Recording downloaded = User::recording;
  QCOMPARE(downloaded.SampleCount, 350);
  const QDateTime first = stamp_time(downloaded.SampleTimes(0));
  for (int n = 0; n < 350; ++n) {
    QCOMPARE(downloaded.SampleTimes(n), stamp_text(first.addSecs(3600 * n)));
    for (int slot = 0; slot < 2; ++slot) {
      const std::uint16_t raw = simulator::demo_signal(n, slot);
      QCOMPARE(downloaded.SampleValues(n, slot),
               rounded_to_2_decimals(fixed_point_value(static_cast<std::uint8_t>(raw % 256),
                                                       static_cast<std::uint8_t>(raw / 256))));
    }
  }

  const QString name = main_->folder.filePath(QStringLiteral("run"));
  main_->files.choices = {name, name + QStringLiteral(".qlx")};
  main_->run(QStringLiteral("save"));
  main_->run(QStringLiteral("close"));
  QCOMPARE(User::recording.SampleCount, 0);
  User::recording = Recording();
  main_->run(QStringLiteral("open"));
  QCOMPARE(main_->messages.shown, QStringList());
  const Recording& opened = User::recording;
  QCOMPARE(opened.Title, downloaded.Title);
  QCOMPARE(opened.RecorderName, downloaded.RecorderName);
  QCOMPARE(opened.SampleCount, downloaded.SampleCount);
  QVERIFY(opened.ChannelInfo == downloaded.ChannelInfo);
  for (int n = 0; n < 350; ++n) {
    QCOMPARE(opened.SampleTimes(n), downloaded.SampleTimes(n));
    QVERIFY(memcmp(&opened.all_values()[static_cast<std::size_t>(n) * Recording::channel_slots],
                   &downloaded.all_values()[static_cast<std::size_t>(n) * Recording::channel_slots],
                   2 * sizeof(float)) == 0);
  }
}

void TestSession::waiting_costs_no_processor_time() {
  QVERIFY(start({QStringLiteral("--fault"), QStringLiteral("silent")}));
  QElapsedTimer timer;
  timer.start();
  const double before = processor_seconds();
  link(1);
  const double share = (processor_seconds() - before) * 1000.0 / double(timer.elapsed());
  QCOMPARE(main_->messages.shown, QStringList({"Warnning: Link Timeout!"}));
  QVERIFY(timer.elapsed() >= 3000);
  QVERIFY2(timer.elapsed() < 8000, qPrintable(QString::number(timer.elapsed())));
  // The sanitizers make everything about three times as dear.
  QVERIFY2(share < 0.1, qPrintable(QString::number(share)));
}

void TestSession::closing_the_window_ends_a_real_wait() {
  QVERIFY(start({QStringLiteral("--fault"), QStringLiteral("silent")}));
  QElapsedTimer timer;
  QTimer::singleShot(400, main_->window.get(), [&] {
    timer.start();
    main_->window->close();
  });
  link(1);
  QVERIFY2(timer.elapsed() < 400, qPrintable(QString::number(timer.elapsed())));
  QCOMPARE(main_->messages.shown, QStringList());
}

// A line that has hung up stays readable for ever; it must not keep the event loop busy.
void TestSession::hung_up_line_idles() {
  QVERIFY(start({}));
  link(1);
  QTest::qWait(500);
  simulator_.reset();
  const double before = processor_seconds();
  QTest::qWait(1000);
  QVERIFY2(processor_seconds() - before < 0.2,
           qPrintable(QString::number(processor_seconds() - before)));
  main_->run(QStringLiteral("unlink"));
  link(1);
  QCOMPARE(main_->messages.shown, QStringList({"Warnning: Link Timeout!"}));
  QVERIFY(!port_->is_open());
}

void TestSession::unplugged_and_plugged_in_again() {
  QVERIFY(start({QStringLiteral("--readings"), QStringLiteral("700"), QStringLiteral("--fault"),
                 QStringLiteral("unplug:block=2")}));
  link(1);
  QCOMPARE(main_->messages.shown, QStringList());
  read();
  QCOMPARE(main_->messages.shown, QStringList({"Warnning: Link Timeout!"}));
  QCOMPARE(User::recording.SampleCount, 0);
  // The dead device must not keep the event loop busy.
  constexpr int idle_ms = 1000;
  QTest::qWait(idle_ms);  // what the windows still have to draw
  const double before = processor_seconds();
  QTest::qWait(idle_ms);
  const double share = (processor_seconds() - before) * 1000.0 / idle_ms;
  QVERIFY2(share < 0.2, qPrintable(QString::number(share)));

  // Plugged in again: the first link still meets the dead port and closes it, the next one works.
  simulator_.reset();
  QVERIFY(start({QStringLiteral("--readings"), QStringLiteral("10")}));
  main_->run(QStringLiteral("unlink"));
  main_->messages.shown.clear();
  link(1);
  QCOMPARE(main_->messages.shown, QStringList({"Warnning: Link Timeout!"}));
  link(1);
  QCOMPARE(main_->messages.shown.size(), 1);
  read();
  QCOMPARE(User::recording.SampleCount, 5);
}

namespace {
const int registered = register_test<TestSession>();
}

#include "test_session.moc"
