#include <QTest>

#include "acquire/frmhistorytime.h"
#include "app/numbers.h"
#include "app/times.h"
#include "app/user.h"
#include "device/fixed_point.h"
#include "device/packet.h"
#include "monitor/frmrealtime.h"
#include "support/dialogs.h"
#include "support/main_window.h"
#include "support/runner.h"
#include "support/simulated_port.h"

// Read Data in the real main window, from a recorder in software.
class TestDownload : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void cleanup();
  void readings_arrive_as_recorded_data();
  void readings_arrive_as_recorded();
  void survives_faults_data();
  void survives_faults();
  void header();
  void chosen_segments();
  void wrong_order_keeps_the_dialog();
  void ends_without_readings_data();
  void ends_without_readings();
  void progress();
  void survives_what_the_user_does_data();
  void survives_what_the_user_does();
  void window_is_loaded_when_closed();

 private:
  void open(const simulator::Settings& settings);
  void make_faulty(simulator::Settings settings, const QByteArray& fault);
  void read(int first = -1, int last = -1);
  frmrealtime& realtime() { return *main_->window->loaded_realtime(); }

  std::unique_ptr<ScriptedClock> clock_;
  std::unique_ptr<SimulatedPort> port_;
  std::unique_ptr<simulator::Recorder> recorder_;
  std::unique_ptr<MainWindow> main_;
  QString message_;  // of the segment dialog
};

namespace {

const QDateTime start(QDate(2026, 2, 1), QTime(8, 0), Qt::UTC);

simulator::Settings memory(int readings, unsigned mask = 0x03) {
  simulator::Settings settings;
  settings.channels = 4;
  settings.mask = mask;
  settings.readings = readings;
  settings.interval_s = 30;
  settings.start = start;
  settings.running = true;
  settings.title = QStringLiteral("Cold");
  return settings;
}

float shown_value(std::uint16_t raw) {
  return rounded_to_2_decimals(fixed_point_value(static_cast<std::uint8_t>(raw % 256),
                                                 static_cast<std::uint8_t>(raw / 256)));
}

}  // namespace

void TestDownload::init() {
  clock_ = std::make_unique<ScriptedClock>();
  port_ = std::make_unique<SimulatedPort>(*clock_);
  main_ = std::make_unique<MainWindow>(*port_, *clock_);
  User::RecorderType = 3;
  User::recording = Recording();
}

void TestDownload::cleanup() {
  main_.reset();
  port_.reset();
}

// Opens the port and the Real-time Data window on the recorder.
void TestDownload::open(const simulator::Settings& settings) {
  recorder_ = std::make_unique<simulator::Recorder>(settings, clock_->now());
  port_->recorders[1] = recorder_.get();
  port_->open();
  main_->run(QStringLiteral("realtime"));
  realtime().Timer1->set_enabled(true);
}

void TestDownload::make_faulty(simulator::Settings settings, const QByteArray& fault) {
  settings.faults.push_back(*simulator::fault_from_text(QString::fromLatin1(fault)));
  recorder_ = std::make_unique<simulator::Recorder>(settings, clock_->now());
  port_->recorders[1] = recorder_.get();
}

// Segments first..last; -1 keeps what the dialog offers.
void TestDownload::read(int first, int last) {
  const auto script = when_shown<frmhistorytime>([=, this](frmhistorytime& dialog) {
    message_ = dialog.Text1->toPlainText();
    if (first >= 0) dialog.Combo1->setCurrentIndex(first);
    if (last >= 0) dialog.Combo2->setCurrentIndex(last);
    press(dialog.Command1);
  });
  main_->run(QStringLiteral("read"));
}

void TestDownload::readings_arrive_as_recorded_data() {
  QTest::addColumn<int>("readings");
  QTest::addColumn<int>("mask");
  QTest::newRow("one channel, short oldest block") << 200 << 0x04;
  QTest::newRow("two channels") << 1024 << 0x03;
  QTest::newRow("channels 2 and 4") << 1000 << 0x0A;
  QTest::newRow("four channels") << 516 << 0x0F;
  QTest::newRow("less than a block") << 10 << 0x03;
  QTest::newRow("as many as fit") << 32000 << 0x0F;
}

void TestDownload::readings_arrive_as_recorded() {
  QFETCH(int, readings);
  QFETCH(int, mask);
  const simulator::Settings settings = memory(readings, static_cast<unsigned>(mask));
  open(settings);
  read();
  QCOMPARE(main_->messages.shown, QStringList());
  std::vector<int> channels;
  for (int c = 0; c < 4; ++c) {
    if ((mask >> c & 1) != 0) channels.push_back(c);
  }
  const Recording& got = User::recording;
  QCOMPARE(int{got.ChannelCount}, int(channels.size()));
  QCOMPARE(got.SampleCount, readings / got.ChannelCount);
  // 128 at first; the window that opens on the Recording shows all of it.
  QCOMPARE(got.ViewCount, got.SampleCount);
  for (int n = 0; n < got.SampleCount; ++n) {
    QCOMPARE(got.SampleTimes(n), stamp_text(start.addSecs(30 * n)));
    for (std::size_t slot = 0; slot < channels.size(); ++slot) {
      QCOMPARE(got.SampleValues(n, int(slot)), shown_value(settings.signal(n, channels[slot])));
    }
  }
  QVERIFY(realtime().Timer1->enabled());
  QCOMPARE(main_->window->Sts1[0]->text(), QString());
  QVERIFY(main_->window->menu_entry(QStringLiteral("save"))->isEnabled());
  QVERIFY(main_->window->loaded_display());
}

void TestDownload::survives_faults_data() {
  QTest::addColumn<QByteArray>("fault");
  for (const char* fault : {"extra", "extra:block=0", "late:block=2,first=1", "silent:first=2",
                            "silent:block=7,first=2", "check:block=3,first=2",
                            "truncated:block=3,first=1", "garbage:block=0,first=2"}) {
    QTest::newRow(fault) << QByteArray(fault);
  }
}

// What a repeated request can mend costs no reading and no message.
void TestDownload::survives_faults() {
  QFETCH(QByteArray, fault);
  const simulator::Settings settings = memory(1000);
  open(settings);
  make_faulty(settings, fault);
  read();
  QCOMPARE(main_->messages.shown, QStringList());
  QCOMPARE(User::recording.SampleCount, 500);
  for (int n = 0; n < 500; ++n) {
    QCOMPARE(User::recording.SampleValues(n, 0), shown_value(settings.signal(n, 0)));
  }
}

void TestDownload::header() {
  open(memory(128, 0x0A));
  read();
  const Recording& got = User::recording;
  QCOMPARE(got.Title, "Cold");
  QCOMPARE(got.RecorderName, "Four");
  QCOMPARE(got.ChannelInfo[0][0] + got.ChannelInfo[1][0] + got.ChannelInfo[2][0], "2Damp%RH");
  QCOMPARE(got.ChannelInfo[0][1] + got.ChannelInfo[1][1] + got.ChannelInfo[2][1], "4WallC");
  QCOMPARE(message_,
           QStringLiteral("  Recorder's Historical Data Is Form%1To%2，Please Select Data Segment")
               .arg(general_date_time_text(start), general_date_time_text(start.addSecs(30 * 64))));
}

// Segment 0 is the oldest; the recorder numbers its blocks from the newest.
void TestDownload::chosen_segments() {
  const simulator::Settings settings = memory(1000);
  open(settings);
  port_->log.clear();
  read(2, 4);
  QCOMPARE(port_->log.filter(QStringLiteral("write 01")),
           QStringList({"write 01 01 03 03", "write 01 01 04 04", "write 01 01 05 05"}));
  const Recording& got = User::recording;
  QCOMPARE(got.SampleCount, 192);
  const int first_sample = 52 + 64;  // after the short oldest segment and one full one
  QCOMPARE(got.SampleTimes(0), stamp_text(start.addSecs(30 * first_sample)));
  QCOMPARE(got.SampleValues(0, 1), shown_value(settings.signal(first_sample, 1)));
  QCOMPARE(got.SampleValues(191, 0), shown_value(settings.signal(first_sample + 191, 0)));
}

void TestDownload::wrong_order_keeps_the_dialog() {
  open(memory(1000));
  const auto script = when_shown<frmhistorytime>([&](frmhistorytime& dialog) {
    dialog.Combo1->setCurrentIndex(3);
    dialog.Combo2->setCurrentIndex(2);
    press(dialog.Command1);
    QCOMPARE(main_->messages.shown, QStringList({"Corvane: Start Time>End Time"}));
    QVERIFY(dialog.isVisible());
    QCOMPARE(dialog.Combo1->count(), 8);
    press(dialog.Command2);
  });
  main_->run(QStringLiteral("read"));
  QCOMPARE(User::recording.SampleCount, 0);
  QVERIFY(realtime().Timer1->enabled());
  QCOMPARE(main_->window->Sts1[0]->text(), QString());
}

void TestDownload::ends_without_readings_data() {
  QTest::addColumn<int>("readings");
  QTest::addColumn<int>("mask");
  QTest::addColumn<QByteArray>("fault");
  QTest::addColumn<QStringList>("messages");
  QTest::addColumn<QString>("panel");
  QTest::addColumn<bool>("polling");
  const QStringList timeout = {QStringLiteral("Warnning: Link Timeout!")};
  const QStringList no_data = {QStringLiteral("Corvane: No Data")};
  QTest::newRow("no readings") << 0 << 3 << QByteArray() << no_data << "Read Data" << false;
  QTest::newRow("no channel") << 100 << 0 << QByteArray() << no_data << "Read Data" << false;
  for (const char* fault : {"silent", "check", "truncated", "garbage"}) {
    for (const char* where : {":command=02", ":block=0", ":block=3", ":block=7"}) {
      const QByteArray text = QByteArray(fault) + where;
      QTest::newRow(text.constData()) << 1000 << 3 << text << timeout << "" << true;
    }
  }
  QTest::newRow("unplugged") << 1000 << 3 << QByteArray("unplug:block=3") << timeout << "" << true;
}

void TestDownload::ends_without_readings() {
  QFETCH(int, readings);
  QFETCH(int, mask);
  QFETCH(QByteArray, fault);
  open(memory(readings, static_cast<unsigned>(mask)));
  if (!fault.isEmpty()) make_faulty(memory(readings, static_cast<unsigned>(mask)), fault);
  User::recording.Title = QStringLiteral("kept");
  User::recording.SampleCount = 3;
  read();
  QTEST(main_->messages.shown, "messages");
  QTEST(main_->window->Sts1[0]->text(), "panel");
  QTEST(realtime().Timer1->enabled(), "polling");
  QCOMPARE(main_->window->PrgB1->value(), 0);
  QCOMPARE(main_->window->Text1->text(), QString());
  QCOMPARE(User::recording.Title, "kept");
  QCOMPARE(User::recording.SampleCount, 3);
}

void TestDownload::progress() {
  open(memory(384, 0x01));
  QStringList seen;
  connect(main_->window->Text1, &QLineEdit::textChanged, this, [&](const QString& text) {
    seen << text + u' ' + QString::number(main_->window->PrgB1->value());
  });
  const qint64 before = clock_->elapsed();
  read();
  QCOMPARE(seen, QStringList({"1% 1", "34% 34", "67% 67", " 0"}));
  // Each of three blocks costs its pauses: 10 + 10 in the exchange and 100 behind it.
  QVERIFY(clock_->elapsed() - before >= 4 * 20 + 3 * 100);
}

void TestDownload::survives_what_the_user_does_data() {
  QTest::addColumn<QString>("command");
  QTest::addColumn<bool>("arrives");
  QTest::newRow("unlink") << "unlink" << true;
  QTest::newRow("close the file") << "close" << true;
  QTest::newRow("read again") << "read" << true;
  QTest::newRow("exit") << "Quit" << false;
  QTest::newRow("close the window") << "-" << true;
}

// In the middle of the wait for a block.
void TestDownload::survives_what_the_user_does() {
  QFETCH(QString, command);
  QFETCH(bool, arrives);
  const simulator::Settings settings = memory(1000);
  open(settings);
  bool done = false;
  const auto script = when_shown<frmhistorytime>([&](frmhistorytime& dialog) {
    clock_->after(450, [&] {
      done = true;
      if (command == u"-") {
        realtime().close();
      } else if (command == u"read") {
        read();
      } else {
        main_->run(command);
      }
    });
    press(dialog.Command1);
  });
  main_->run(QStringLiteral("read"));
  QVERIFY(done);
  QCOMPARE(main_->messages.shown, QStringList());
  QCOMPARE(User::recording.SampleCount, arrives ? 500 : 0);
  if (!arrives) return;
  QCOMPARE(User::recording.Title, "Cold");
  for (int n = 0; n < 500; ++n) {
    QCOMPARE(User::recording.SampleValues(n, 1), shown_value(settings.signal(n, 1)));
  }
}

void TestDownload::window_is_loaded_when_closed() {
  open(memory(128));
  main_->window->unload_realtime();
  read();
  QCOMPARE(User::recording.SampleCount, 64);
  QVERIFY(main_->window->loaded_realtime());
  QVERIFY(!realtime().isVisible());
}

namespace {
const int registered = register_test<TestDownload>();
}

#include "test_download.moc"
