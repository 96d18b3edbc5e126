#include <ctime>

#include "acquire/frmhistorytime.h"
#include "app/clock.h"
#include "app/user.h"
#include "device/frmport.h"
#include "device/qt_serial_port.h"
#include "monitor/frmrealtime.h"
#include "support/dialogs.h"
#include "support/main_window.h"
#include "support/measured.h"
#include "support/runner.h"
#include "support/simulator_process.h"

// The real main window, port and clock against the real simulator behind a pseudo-terminal.
class TestSession : public QObject {
  Q_OBJECT

  // A recorder of two channels on COM2, so that the automatic search has to go past COM1.
  bool start(const QString& options) {
    const QString link = main_->folder.filePath("com2");
    simulator_ = std::make_unique<SimulatorProcess>(QStringList{"--link", link, "--channels", "2"} +
                                                    options.split(' ', Qt::SkipEmptyParts));
    return simulator_->wait_ready();
  }
  // Gives the messages that it led to; option 4 searches.
  QString link(std::size_t option = 1) {
    main_->messages.shown.clear();
    const auto script = when_shown<frmport>([=](frmport& dialog) {
      dialog.Option1[option]->click();
      dialog.Combo1->setCurrentText("Two");
      press(dialog.Command1);
    });
    main_->run("link");
    return main_->messages.shown.join('|');
  }
  QString read() {
    const auto script = when_shown<frmhistorytime>([](auto& dialog) { press(dialog.Command1); });
    main_->run("read");
    return main_->messages.shown.join('|');
  }
  // The share of its time that the processor works while this runs. Sanitizers make everything
  // about three times as dear.
  static double work(const std::function<void()>& act) {
    QElapsedTimer timer;
    timer.start();
    const std::clock_t before = std::clock();
    act();
    return double(std::clock() - before) / CLOCKS_PER_SEC / double(timer.elapsed()) * 1000;
  }

  static constexpr const char* timeout = "Warnning: Link Timeout!";
  std::unique_ptr<SystemClock> clock_;
  std::unique_ptr<QtSerialPort> port_;
  std::unique_ptr<MainWindow> main_;
  std::unique_ptr<SimulatorProcess> simulator_;

 private Q_SLOTS:
  void init() {
    clock_ = std::make_unique<SystemClock>();
    port_ = std::make_unique<QtSerialPort>();
    main_ = std::make_unique<MainWindow>(*port_, *clock_);
    User::recording = Recording();
  }
  void cleanup() {
    simulator_.reset();
    main_.reset();
    port_.reset();
  }

  void link_download_save_open() {
    QVERIFY2(start("--readings 700 --interval 3600"), qPrintable(simulator_->errors()));
    QCOMPARE(link(4), "");
    QCOMPARE(int{User::PortChoice}, 1);
    QCOMPARE(main_->window->loaded_realtime()->Text11->text(), "700");
    QCOMPARE(read(), "");
    const Recording downloaded = User::recording;
    const QString name = main_->folder.filePath("run");
    main_->files.choices = {name, name + ".qlx"};
    for (const char* command : {"save", "close"}) main_->run(command);
    QCOMPARE(User::recording.SampleCount, 0);
    User::recording = Recording();
    main_->run("open");
    QCOMPARE(main_->messages.shown, QStringList());
    const Recording& opened = User::recording;
    QCOMPARE(opened.Title + opened.RecorderName, downloaded.Title + downloaded.RecorderName);
    QVERIFY(opened.ChannelInfo == downloaded.ChannelInfo);
    const Measured measured{0x03, stamp_time(downloaded.SampleTimes(0)), 3600};
    for (const Recording* got : {&downloaded, &opened}) {
      QCOMPARE(measured.difference(*got, 350), QString());
    }
  }

  void waiting_costs_no_processor_time() {
    QVERIFY(start("--fault silent"));
    QElapsedTimer timer;
    timer.start();
    const double share = work([&] { QCOMPARE(link(), timeout); });
    QVERIFY2(timer.elapsed() >= 3000 && timer.elapsed() < 8000 && share < 0.1,
             qPrintable(QStringLiteral("%1 ms, %2").arg(timer.elapsed()).arg(share)));
    // Closing the window ends it at once.
    QTimer::singleShot(400, main_->window.get(), [&] {
      timer.start();
      main_->window->close();
    });
    QCOMPARE(link(), "");
    QVERIFY2(timer.elapsed() < 400, qPrintable(QString::number(timer.elapsed())));
  }

  // A line that has hung up stays readable for ever; it must not keep the event loop busy.
  void unplugged_and_plugged_in_again() {
    QVERIFY(start("--readings 700 --fault unplug:block=2"));
    QCOMPARE(link(), "");
    QCOMPARE(read(), timeout);
    QCOMPARE(User::recording.SampleCount, 0);
    QTest::qWait(1000);  // what the windows still have to draw
    const double share = work([] { QTest::qWait(1000); });
    QVERIFY2(share < 0.2, qPrintable(QString::number(share)));

    // Plugged in again: the first link still meets the dead port and closes it, the next one works.
    simulator_.reset();
    QVERIFY(start("--readings 10"));
    main_->run("unlink");
    QCOMPARE(link(), timeout);
    QCOMPARE(link(), "");
    QCOMPARE(read(), "");
    QCOMPARE(User::recording.SampleCount, 5);
  }
};

const int registered = register_test<TestSession>();

#include "test_session.moc"
