#include <ctime>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include "base/clock.h"
#include "device/qt_serial_port.h"
#include "support/main_window.h"
#include "support/recordings.h"
#include "support/simulator_process.h"

// The real main window, port and clock with the real simulator behind a pseudo-terminal.
class TestSession : public QObject {
  Q_OBJECT

  // Starts a two-channel recorder on COM2, so that the automatic search must go past COM1.
  bool start(const QString& options) {
    const QString link = w_->main.folder.filePath("com2");
    w_->simulator = std::make_unique<SimulatorProcess>(
        QStringList{"--link", link, "--channels", "2"} + options.split(' ', Qt::SkipEmptyParts));
    return w_->simulator->wait_ready();
  }
  // Links and returns the messages. Option 4 searches all ports.
  QString link(int option = 1) {
    w_->main.link(option, "Two");
    return w_->main.told().join('|');
  }
  QString read() {
    w_->main.read();
    return w_->main.told().join('|');
  }
  // Returns the share of the time of `act` in which the processor works. Sanitizers make everything
  // about three times as slow.
  static double work(const std::function<void()>& act) {
    QElapsedTimer timer;
    timer.start();
    const std::clock_t before = std::clock();
    act();
    return double(std::clock() - before) / CLOCKS_PER_SEC / double(timer.elapsed()) * 1000;
  }

  static constexpr const char* timeout = "Warnning: Link Timeout!";
  struct World {
    SystemClock clock;
    QtSerialPort port;
    MainWindow main{port, clock};
    std::unique_ptr<SimulatorProcess> simulator;
  };
  std::unique_ptr<World> w_;

 private Q_SLOTS:
  void init() {
    w_ = std::make_unique<World>();
    User::recording = Recording();
  }
  void cleanup() { w_.reset(); }

  void link_download_save_open() {
    QVERIFY2(start("--readings 700 --interval 3600"), qPrintable(w_->simulator->errors()));
    QCOMPARE(link(4), "");
    QCOMPARE(int{User::PortChoice}, 1);
    QCOMPARE(w_->main.window->loaded_realtime()->setup().Text11->text(), "700");
    QCOMPARE(read(), "");
    const Recording downloaded = User::recording;
    const QString name = w_->main.folder.filePath("run");
    w_->main.files.choices = {name, name + ".qlx"};
    for (const char* command : {"save", "close"}) w_->main.run(command);
    QCOMPARE(User::recording.SampleCount, 0);
    User::recording = Recording();
    w_->main.run("open");
    QCOMPARE(w_->main.messages.shown, QStringList());
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
    const double share = work([&] { QCOMPARE(link(), timeout); });
    QVERIFY2(share < 0.1, qPrintable(QString::number(share)));
    // Closing the window ends the wait.
    QTimer::singleShot(400, w_->main.window.get(), &QWidget::close);
    QCOMPARE(link(), "");
  }

  // An adapter that accepts no bytes gives the message for a recorder that does not answer.
  void hung_adapter() {
    int master = -1;
    int line = -1;
    QVERIFY(openpty(&master, &line, nullptr, nullptr, nullptr) == 0);
    QVERIFY(QFile::link(ttyname(line), w_->main.folder.filePath("com2")));
    QVERIFY(tcflow(line, TCOOFF) == 0);
    QCOMPARE(link(), timeout);
    QVERIFY(!w_->port.is_open());
    close(line);
    close(master);
  }

  // A line that has hung up stays readable for ever, but must not keep the event loop busy.
  void unplugged_and_plugged_in_again() {
    QVERIFY(start("--readings 700 --fault unplug:block=2"));
    QCOMPARE(link(), "");
    QCOMPARE(read(), timeout);
    QCOMPARE(User::recording.SampleCount, 0);
    QTest::qWait(1000);  // lets the windows finish drawing
    const double share = work([] { QTest::qWait(1000); });
    QVERIFY2(share < 0.2, qPrintable(QString::number(share)));

    // Plugged in again: the first link finds the dead port and closes it, the next one works.
    w_->simulator.reset();
    QVERIFY(start("--readings 10"));
    w_->main.run("unlink");
    QCOMPARE(link(), timeout);
    QCOMPARE(link(), "");
    QCOMPARE(read(), "");
    QCOMPARE(User::recording.SampleCount, 5);
  }
};

const int registered = register_test<TestSession>();

#include "test_session.moc"
