#include "acquire/frmhistorytime.h"
#include "monitor/monitor_window.h"
#include "monitor/time_picker.h"
#include "support/dialogs.h"
#include "support/runner.h"

class TestPropertiesSet : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void frames_of_every_startup_and_stop_type_data();
  void frames_of_every_startup_and_stop_type();
  void reads_back_what_the_recorder_holds();
  void no_changes_nothing();
  void input_errors_data();
  void input_errors();
  void failed_requests_data();
  void failed_requests();
  void late_answers_are_good_enough();
  void limit_that_is_not_a_number_data();
  void limit_that_is_not_a_number();
  void limit_beyond_the_range();
  void timer_without_interval_stays_off();
  void survives_what_the_user_does_data();
  void survives_what_the_user_does();
};

namespace {

const QString question =
    QStringLiteral("Setting Recorder's Properties will Lose Historical Sampling，Continue?");

simulator::Settings two_channels() {
  simulator::Settings settings;
  settings.channels = 2;
  settings.mask = 0x03;
  settings.readings = 200;
  settings.title = QStringLiteral("AB");
  settings.description = QStringLiteral("三");
  settings.limits[0] = {.down = -10.5, .up = 25};
  return settings;
}

// Description and limits as two_channels() has them, with their check bytes.
const QString description_frame =
    QStringLiteral("09 40 41 00 42 00 00 00 00 00 00 00 00 00 00 00 00 00 09 4e ") +
    QStringLiteral("00 ").repeated(46) + QStringLiteral("0d");
const QStringList limit_frames = {QStringLiteral("0b 06 01 00 80 f5 00 19 60"),
                                  QStringLiteral("0b 06 02 00 00 d8 00 55 82")};
const QStringList read_frames = {QStringLiteral("02 00 02"), QStringLiteral("08 00 08"),
                                 QStringLiteral("00 00 00"), QStringLiteral("0a 01 01 0a"),
                                 QStringLiteral("0a 01 02 09")};

}  // namespace

void TestPropertiesSet::frames_of_every_startup_and_stop_type_data() {
  QTest::addColumn<int>("startup_type");
  QTest::addColumn<int>("stop_type");
  QTest::addColumn<QString>("pattern_frame");
  const auto row = [](const char* name, int startup, int stop, const char* frame) {
    QTest::newRow(name) << startup << stop << QString::fromLatin1(frame);
  };
  // The clock stands at 2026-03-01 10:00:00; a delay of 01:02:03, an interval of 00:05:00.
  row("start up", 0, 0, "05 0f 88 03 1a 03 01 0a 00 00 8b 0e 2b 01 e8 03 d7");
  row("start up, wrap", 0, 1, "05 0f c8 03 1a 03 01 0a 00 00 8b 0e 2b 01 e8 03 97");
  row("delayed", 1, 0, "05 0f 8c 03 1a 03 01 0a 00 00 8b 0e 2b 01 e8 03 d3");
  row("delayed, wrap", 1, 1, "05 0f cc 03 1a 03 01 0a 00 00 8b 0e 2b 01 e8 03 93");
  row("stop", 2, 0, "05 0f 00 03 00 00 00 00 00 00 8b 0e 2b 01 e8 03 4d");
  row("stop, wrap", 2, 1, "05 0f 40 03 00 00 00 00 00 00 8b 0e 2b 01 e8 03 0d");
}

// Everything that goes over the line, in order; no separate start or stop is among it.
void TestPropertiesSet::frames_of_every_startup_and_stop_type() {
  QFETCH(int, startup_type);
  QFETCH(int, stop_type);
  QFETCH(QString, pattern_frame);
  MonitorWindow monitor(two_channels());
  frmrealtime& window = monitor.window();
  monitor.clock.sleep(int(
      monitor.clock.now().msecsTo(QDateTime(QDate(2026, 3, 1), QTime(10, 0, 0, 900), Qt::UTC))));
  monitor.clock.sleeps.clear();
  window.Combo2->setCurrentIndex(startup_type);
  window.Combo3->setCurrentIndex(stop_type);
  set_picked_seconds(*window.DTP2, 3723);
  set_picked_seconds(*window.DTP1, 300);
  window.Text14->setText(QStringLiteral("1000"));
  window.Timer1->set_enabled(true);
  monitor.set();
  QCOMPARE(monitor.requests(),
           QStringList({description_frame, pattern_frame}) + limit_frames + read_frames);
  QCOMPARE(monitor.messages(), QStringList(question));
  QVERIFY(window.Timer1->enabled());
  QCOMPARE(window.Combo2->currentIndex(), startup_type);
  QCOMPARE(window.Combo3->currentIndex(), stop_type);
  QCOMPARE(window.Text2->text(), startup_type == 2 ? "Stop" : "Recording");
  QCOMPARE(window.Text12->text(), startup_type == 0 ? "0" : "");
  QCOMPARE(window.Text11->text(), "0");
  QCOMPARE(std::count(monitor.clock.sleeps.begin(), monitor.clock.sleeps.end(), 500), 1);
}

void TestPropertiesSet::reads_back_what_the_recorder_holds() {
  MonitorWindow monitor(two_channels());
  frmrealtime& window = monitor.window();
  QCOMPARE(window.Text6->text(), "AB");
  QCOMPARE(window.Text1[1]->text(), "-10.50");
  const QString smile = QString::fromUtf8("\U0001F600");
  window.Text6->setMaxLength(9);  // as a paste of half a pair would leave it
  window.Text6->setText(QStringLiteral("冷库七字标题一") + smile);
  window.Text15->setText(QStringLiteral("二十四个字的说明") + smile);
  window.Text1[0]->setText(QStringLiteral("25.501"));
  window.Text1[3]->setText(QStringLiteral(" 1e1 "));
  window.Check1[0]->setChecked(false);
  set_picked_seconds(*window.DTP1, 1);
  window.Text14->setText(QStringLiteral("65535"));
  monitor.set();
  QCOMPARE(window.Text6->text(),
           QStringLiteral("冷库七字标题一") + QChar(QChar::ReplacementCharacter));
  QCOMPARE(window.Text15->text(), QStringLiteral("二十四个字的说明") + smile);
  QCOMPARE(window.Text1[0]->text(), "25.50");
  QCOMPARE(window.Text1[3]->text(), "10.00");
  QVERIFY(!window.Check1[0]->isChecked());
  QVERIFY(window.Check1[1]->isChecked());
  QCOMPARE(picked_seconds(*window.DTP1), 1);
  QCOMPARE(window.Text14->text(), "65535");
  QCOMPARE(window.Text3->text(), "2026-3-1  10:0:0");
  // An interval of nothing goes out as 255 and comes back as 256 seconds.
  set_picked_seconds(*window.DTP1, 0);
  monitor.set();
  QCOMPARE(picked_seconds(*window.DTP1), 256);
}

void TestPropertiesSet::no_changes_nothing() {
  MonitorWindow monitor(two_channels());
  monitor.window().Timer1->set_enabled(true);
  monitor.set(false);
  QCOMPARE(monitor.messages(), QStringList(question));
  QCOMPARE(monitor.requests(), QStringList());
  QVERIFY(monitor.window().Timer1->enabled());
}

void TestPropertiesSet::input_errors_data() {
  QTest::addColumn<int>("delay");
  QTest::addColumn<int>("interval");
  QTest::addColumn<QString>("all_data");
  QTest::newRow("delay of 32768 s") << 32768 << 60 << QStringLiteral("1");
  QTest::newRow("interval of 23:59:59") << 0 << 86399 << QStringLiteral("1");
  QTest::newRow("too many samples") << 0 << 60 << QStringLiteral("65536");
  QTest::newRow("fewer samples than none") << 0 << 60 << QStringLiteral("-1");
  QTest::newRow("no number") << 0 << 60 << QStringLiteral("all");
}

void TestPropertiesSet::input_errors() {
  QFETCH(int, delay);
  QFETCH(int, interval);
  QFETCH(QString, all_data);
  MonitorWindow monitor(two_channels());
  frmrealtime& window = monitor.window();
  set_picked_seconds(*window.DTP2, delay);
  set_picked_seconds(*window.DTP1, interval);
  window.Text14->setText(all_data);
  bool polling_meanwhile = true;
  monitor.main.messages.meanwhile = [&] {
    if (monitor.main.messages.shown.size() == 2) polling_meanwhile = window.Timer1->enabled();
  };
  monitor.set();
  QCOMPARE(monitor.messages(), QStringList({question, "Input Error ，Please Retry"}));
  QCOMPARE(monitor.requests(), QStringList());
  QVERIFY(!polling_meanwhile);
  QVERIFY(window.Timer1->enabled());
  QVERIFY(window.Command4->isEnabled());
}

void TestPropertiesSet::failed_requests_data() {
  QTest::addColumn<QByteArray>("fault");
  QTest::addColumn<QStringList>("sent");
  const QStringList start = {description_frame};
  QTest::newRow("description") << QByteArray("silent:command=09")
                               << QStringList(
                                      {description_frame, description_frame, description_frame});
  QTest::newRow("properties, wrong check byte")
      << QByteArray("check:command=05") << QStringList({description_frame, "05", "05", "05"});
  QTest::newRow("limits") << QByteArray("silent:command=0B")
                          << QStringList({description_frame, "05", limit_frames[0], limit_frames[0],
                                          limit_frames[0]});
}

// What was sent before stays in effect; polling does not start again by itself.
void TestPropertiesSet::failed_requests() {
  QFETCH(QByteArray, fault);
  QFETCH(QStringList, sent);
  MonitorWindow monitor(two_channels());
  monitor.attach(two_channels(), fault.constData());
  monitor.window().Timer1->set_enabled(true);
  monitor.set();
  QStringList requests = monitor.requests();
  for (QString& request : requests) {
    if (request.startsWith(QStringLiteral("05"))) request = QStringLiteral("05");
  }
  QCOMPARE(requests, sent);
  QCOMPARE(monitor.messages(), QStringList({question, "Setting is Failed"}));
  QVERIFY(!monitor.window().Timer1->enabled());
  QVERIFY(monitor.window().Command4->isEnabled());
  QCOMPARE(std::count(monitor.clock.sleeps.begin(), monitor.clock.sleeps.end(), 50), 2);
}

void TestPropertiesSet::late_answers_are_good_enough() {
  MonitorWindow monitor(two_channels());
  monitor.attach(two_channels(), "silent:first=2");
  monitor.set();
  QCOMPARE(monitor.requests().mid(0, 3),
           QStringList({description_frame, description_frame, description_frame}));
  QCOMPARE(monitor.messages(), QStringList(question));
}

void TestPropertiesSet::limit_that_is_not_a_number_data() {
  QTest::addColumn<int>("box");
  QTest::addColumn<bool>("paced");
  QTest::addColumn<QString>("message");
  QTest::newRow("up") << 0 << true << QStringLiteral("Channel No.1Up Limit Error");
  QTest::newRow("down") << 3 << true << QStringLiteral("Channel No.2Down Limit Error");
  QTest::newRow("quick recorder") << 2 << false << QStringLiteral("Channel No.2Up Limit Error");
}

// The request before goes out once more in place of the one that could not be built. At the line's
// pace its answer comes too late for an exchange that expects nothing; a recorder that answers at
// once makes it succeed.
void TestPropertiesSet::limit_that_is_not_a_number() {
  QFETCH(int, box);
  QFETCH(bool, paced);
  QFETCH(QString, message);
  MonitorWindow monitor(two_channels(), paced);
  monitor.window().Text1[std::size_t(box)]->setText(QStringLiteral("warm"));
  monitor.set();
  const QStringList requests = monitor.requests();
  const int good = box / 2;  // limits sent before
  QCOMPARE(requests.mid(2, good), limit_frames.mid(0, good));
  const QString repeated = requests[1 + good];
  if (paced) {
    QCOMPARE(requests.mid(2 + good), QStringList({repeated, repeated, repeated}));
    QCOMPARE(monitor.messages(),
             QStringList({question, message, message, message, "Setting is Failed"}));
  } else {
    QCOMPARE(requests.mid(2 + good), QStringList(repeated) + read_frames);
    QCOMPARE(monitor.messages(), QStringList({question, message}));
  }
  QCOMPARE(monitor.window().Timer1->enabled(), !paced);
}

// It could only be sent as another value: nothing is sent in its place.
void TestPropertiesSet::limit_beyond_the_range() {
  MonitorWindow monitor(two_channels());
  monitor.window().Text1[0]->setText(QStringLiteral("300"));
  monitor.set();
  QCOMPARE(monitor.requests().size(), 2);
  QCOMPARE(monitor.messages(), QStringList({question, "Setting is Failed"}));
}

void TestPropertiesSet::timer_without_interval_stays_off() {
  MonitorWindow monitor(two_channels());
  monitor.window().Timer1->set_interval(0);
  monitor.set();
  QVERIFY(!monitor.window().Timer1->enabled());
}

void TestPropertiesSet::survives_what_the_user_does_data() {
  QTest::addColumn<QString>("command");
  for (const char* command : {"unlink", "Quit", "read", "history", "set", "tick"}) {
    QTest::newRow(command) << QString::fromLatin1(command);
  }
}

// In the middle of the wait for a silent recorder.
void TestPropertiesSet::survives_what_the_user_does() {
  QFETCH(QString, command);
  MonitorWindow monitor(two_channels());
  monitor.attach(two_channels(), "silent:first=1");
  const auto segments =
      when_shown<frmhistorytime>([](frmhistorytime& dialog) { press(dialog.Command1); });
  monitor.clock.after(300, [&] {
    if (command == u"set") {
      QVERIFY(!monitor.window().Command4->isEnabled());
      monitor.set();
    } else if (command == u"tick") {
      monitor.tick();
    } else {
      monitor.main.run(command);
    }
  });
  monitor.set();
  const bool closed = command == u"unlink" || command == u"Quit";
  const QStringList requests = monitor.requests();
  QCOMPARE(requests.contains(limit_frames[1]), !closed);
  QCOMPARE(requests.filter(QRegularExpression(QStringLiteral("^05 0f"))).size(), closed ? 0 : 1);
  const bool failed = monitor.messages().contains(QStringLiteral("Setting is Failed"));
  QVERIFY(!failed);
  QCOMPARE(monitor.main.window->loaded_realtime() == nullptr, command == u"unlink");
  // The texts reach the recorder as they were typed, whatever was read in between.
  for (const QString& request : requests) {
    if (request.startsWith(QStringLiteral("09"))) QCOMPARE(request, description_frame);
  }
}

namespace {
const int registered = register_test<TestPropertiesSet>();
}

#include "test_properties_set.moc"
