#include <QScrollBar>

#include "acquire/frmhistorytime.h"
#include "app/numbers.h"
#include "app/times.h"
#include "data/data_file.h"
#include "data/file_handle.h"
#include "monitor/Frmwarn.h"
#include "monitor/channel_status.h"
#include "monitor/monitor_window.h"
#include "support/dialogs.h"
#include "support/runner.h"

class TestPolling : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void a_reading_is_shown();
  void alarms_are_seen();
  void a_limit_that_is_no_number();
  void silence_and_return();
  void cycles_never_stack();
  void survives_what_the_user_does_data();
  void survives_what_the_user_does();
  void answers_after_the_window_closed();
  void saves_automatically();
  void a_save_that_fails_changes_nothing();
  void another_recorder_type();
  void graph_follows_the_newest_reading();
  void zoom_buttons_and_wheel();
  void cursor();
  void cursor_labels_stay_inside();
  void sheets_follow_their_end();
  void display_limits();
  void every_control_has_its_name();
};

namespace {

QString cell(const QTableView* sheet, int row, int column) {
  return sheet->model()->index(row, column).data().toString();
}

// A steady signal of 20.00, 21.00, 22.00, 23.00 on the four channels.
simulator::Settings steady(int channels = 4) {
  simulator::Settings settings;
  settings.channels = channels;
  settings.limits.fill({.down = -40, .up = 85});
  settings.signal = [](std::int64_t, int channel) {
    return static_cast<std::uint16_t>(256 * (20 + channel));
  };
  return settings;
}

// One channel that counts the seconds.
simulator::Settings counting() {
  simulator::Settings settings = steady(1);
  settings.signal = [](std::int64_t n, int) { return static_cast<std::uint16_t>(n % 30000); };
  return settings;
}

void poll(MonitorWindow& monitor, int times) {
  for (int i = 0; i < times; ++i) {
    monitor.tick();
    monitor.clock.sleep(1000);
  }
}

}  // namespace

void TestPolling::a_reading_is_shown() {
  MonitorWindow monitor(steady(2));
  frmrealtime& window = monitor.window();
  QCOMPARE(monitor.link_state(), "");
  QCOMPARE(window.MSFlG1->model()->rowCount(), 0);
  monitor.tick();
  const QString time = general_date_time_text(monitor.clock.now());
  QCOMPARE(monitor.link_state(), "Link Ok");
  QCOMPARE(monitor.requests(), QStringList("00 00 00"));
  QCOMPARE(window.MSFlG1->model()->headerData(3, Qt::Horizontal).toString(), "Damp ");
  QCOMPARE(cell(window.MSFlG1, 0, 0), "1");
  QCOMPARE(cell(window.MSFlG1, 0, 1), time);
  QCOMPARE(cell(window.MSFlG1, 0, 3), "21");
  QCOMPARE(window.MSFlG2->model()->rowCount(), 0);
  QStringList labels;
  for (int which = 0; which < 9; ++which) labels << window.Label4[std::size_t(9 + which)]->text();
  QCOMPARE(labels,
           QStringList({"2", "Damp", "%RH", "21.00", "85.00", "-40.00", "21.00", "21.00", ""}));
  QVERIFY(window.Label4[9]->isVisibleTo(&window));
  QVERIFY(!window.Label4[18]->isVisibleTo(&window));
  QVERIFY(!window.Line1[2]->isVisibleTo(&window));
}

void TestPolling::alarms_are_seen() {
  MonitorWindow monitor(steady());
  frmrealtime& window = monitor.window();
  QLabel& value = *window.Label4[9 * 2 + value_label];
  window.Text1[4]->setText(QStringLiteral("22"));
  poll(monitor, 1);
  QCOMPARE(window.MSFlG2->model()->rowCount(), 0);
  window.Text1[4]->setText(QStringLiteral("21.99"));
  window.Text1[1]->setText(QStringLiteral("20.01"));
  QCOMPARE(window.Label4[9 * 2 + up_limit_label]->text(), "21.99");
  const QString time = general_date_time_text(monitor.clock.now());
  poll(monitor, 1);
  QCOMPARE(cell(window.MSFlG2, 0, 0), "2");
  QCOMPARE(cell(window.MSFlG2, 0, 1), cell(window.MSFlG1, 1, 1));
  QCOMPARE(cell(window.MSFlG2, 0, 2), "AirOut Of Range    SoilOut Of Range    ");
  QVERIFY(value.palette().color(QPalette::WindowText).red() > 180);
  QVERIFY(value.palette().color(QPalette::WindowText).green() < 60);
  QCOMPARE(window.Label4[9 * 2 + last_alarm_label]->text(), time);
  window.Text1[4]->setText(QStringLiteral("85"));
  poll(monitor, 1);
  QCOMPARE(value.palette(), window.Label4[9 + value_label]->palette());
  QCOMPARE(window.Label4[9 * 2 + last_alarm_label]->text(), time);
}

void TestPolling::a_limit_that_is_no_number() {
  MonitorWindow monitor(steady());
  monitor.window().Text1[0]->setText(QStringLiteral("-"));
  monitor.window().Text1[2]->setText(QStringLiteral("0"));
  poll(monitor, 2);
  QCOMPARE(monitor.window().live().buffer.LiveCount(), 2);
  QCOMPARE(cell(monitor.window().MSFlG2, 1, 2), "DampOut Of Range    ");
}

// One missed cycle is tolerated, the second in a row is told, the next answer takes it back.
void TestPolling::silence_and_return() {
  MonitorWindow monitor(steady());
  poll(monitor, 3);
  QCOMPARE(monitor.window().MSFlG1->model()->rowCount(), 3);
  QStringList states;
  for (const char* fault : {"silent", "", "silent", "check", "silent", ""}) {
    monitor.attach(steady(), *fault ? fault : nullptr);
    poll(monitor, 1);
    states << monitor.link_state() + u' ' +
                  QString::number(monitor.window().MSFlG1->model()->rowCount());
  }
  QCOMPARE(states, QStringList({"Link Ok 3", "Link Ok 4", "Link Ok 4", "Link Error 4",
                                "Link Error 4", "Link Ok 5"}));
  QCOMPARE(cell(monitor.window().MSFlG1, 4, 0), "5");
  // An answer at the third try is no missed cycle; the tries are 10 ms apart.
  monitor.attach(steady(), "silent:first=2");
  monitor.clock.sleeps.clear();
  monitor.requests();
  monitor.tick();
  QCOMPARE(monitor.requests().size(), 3);
  QCOMPARE(monitor.clock.sleeps, std::vector<int>({10, 10, 10, 10, 10, 10, 10, 10}));
  QCOMPARE(monitor.link_state(), "Link Ok");
  // A port that has gone is as good as a silent one.
  monitor.port.unplug();
  poll(monitor, 2);
  QCOMPARE(monitor.link_state(), "Link Error");
}

void TestPolling::cycles_never_stack() {
  MonitorWindow monitor(steady());
  monitor.attach(steady(), "silent");
  for (int at = 100; at < 3000; at += 100) monitor.clock.after(at, [&] { monitor.tick(); });
  const qint64 start = monitor.clock.elapsed();
  monitor.tick();
  QCOMPARE(monitor.requests(), QStringList({"00 00 00", "00 00 00", "00 00 00"}));
  QVERIFY(monitor.clock.elapsed() - start < 3100);
  QCOMPARE(int{monitor.window().live().FailCount}, 1);
}

void TestPolling::survives_what_the_user_does_data() {
  QTest::addColumn<QString>("command");
  QTest::addColumn<int>("readings");  // -1: the window is gone
  QTest::newRow("Properties Set") << QStringLiteral("set") << 1;
  QTest::newRow("Read Data") << QStringLiteral("read") << 1;
  QTest::newRow("Historical Data") << QStringLiteral("history") << 1;
  QTest::newRow("another window") << QStringLiteral("about") << 1;
  QTest::newRow("Unlink") << QStringLiteral("unlink") << -1;
  QTest::newRow("closing the window") << QStringLiteral("shut") << -1;
  QTest::newRow("Unlink and Link again") << QStringLiteral("relink") << 0;
  QTest::newRow("Exit") << QStringLiteral("Quit") << 0;
}

// In the middle of the wait for an answer that does not come. Once what the user did is over the
// cycle asks again, so its reading is not lost.
void TestPolling::survives_what_the_user_does() {
  QFETCH(QString, command);
  QFETCH(int, readings);
  simulator::Settings settings = steady(2);
  settings.readings = 500;
  MonitorWindow monitor(settings);
  monitor.attach(settings, "silent:first=1");
  const auto segments =
      when_shown<frmhistorytime>([](frmhistorytime& dialog) { press(dialog.Command1); });
  const auto about = when_shown<QDialog>([](QDialog& dialog) {
    if (dialog.objectName() == u"frmAbout") dialog.reject();
  });
  const QPointer<frmrealtime> first = &monitor.window();
  monitor.clock.after(300, [&] {
    if (command == u"set") {
      monitor.set();
    } else if (command == u"shut") {
      first->close();
    } else if (command == u"relink") {
      monitor.main.run(QStringLiteral("unlink"));
      monitor.main.window->show_realtime();
    } else {
      monitor.main.run(command);
    }
  });
  monitor.tick();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QCOMPARE(monitor.messages().filter(QStringLiteral("Failed")), QStringList());
  frmrealtime* window = monitor.main.window->loaded_realtime();
  QCOMPARE(window == nullptr, readings < 0);
  QCOMPARE(first.isNull(), command == u"unlink" || command == u"shut" || command == u"relink");
  if (window) QCOMPARE(window->live().buffer.LiveCount(), readings);
  if (command == u"read") QCOMPARE(User::recording.SampleCount, 250);
}

void TestPolling::answers_after_the_window_closed() {
  MonitorWindow monitor(steady());
  poll(monitor, 1);
  QCOMPARE(monitor.link_state(), "Link Ok");
  monitor.attach(steady(), "late:ms=500");
  monitor.clock.after(300, [&] { monitor.main.run(QStringLiteral("unlink")); });
  monitor.tick();
  // Nobody polls any more, so nothing is said of the link.
  QCOMPARE(monitor.link_state(), "");
}

void TestPolling::saves_automatically() {
  MonitorWindow monitor(steady(2));
  monitor.window().Text6->setText(QStringLiteral("Cold"));
  LiveMonitor& live = monitor.window().live();
  for (int n = 1; n < 15000; ++n) live.add(QString::number(n), {float(n), 0}, {});
  const QDir folder(monitor.main.folder.path());
  QCOMPARE(folder.entryList({"*.qlx"}), QStringList());
  monitor.tick();
  const QString name =
      monitor.clock.now().toString(QStringLiteral("yyyy-MM-dd HH-mm-ss")) + QStringLiteral(".qlx");
  QCOMPARE(folder.entryList({"*.qlx"}), QStringList(name));
  QCOMPARE(live.SaveCounter, 0);

  monitor.main.files.choices = {folder.filePath(name)};
  monitor.main.run(QStringLiteral("open"));
  QCOMPARE(monitor.messages(), QStringList());
  QCOMPARE(User::recording.Title, "Cold");
  QCOMPARE(User::recording.RecorderName, "Two");
  QCOMPARE(User::recording.SampleCount, 15000);
  QCOMPARE(User::recording.SampleTimes(14998), "14999");
  QCOMPARE(User::recording.SampleTimes(14999), live.buffer.LiveTimes(14999));
  QCOMPARE(User::recording.SampleValues(14999, 1), 21.0F);
}

void TestPolling::a_save_that_fails_changes_nothing() {
  MonitorWindow monitor(steady(1));
  LiveMonitor& live = monitor.window().live();
  for (int n = 1; n < 15000; ++n) live.add(QString::number(n), {}, {});
  // The cycle ends 25 ms after its start; a folder stands where the file would.
  const QString name = QStringLiteral("%1.qlx").arg(
      monitor.clock.now().addMSecs(25).toString(QStringLiteral("yyyy-MM-dd HH-mm-ss")));
  QVERIFY(QDir(monitor.main.folder.path()).mkdir(name));
  monitor.tick();
  QCOMPARE(monitor.messages(), QStringList());
  QCOMPARE(live.buffer.LiveCount(), 15000);
  QCOMPARE(monitor.link_state(), "Link Ok");
  monitor.tick();
  QCOMPARE(live.SaveCounter, 1);
}

// The window can be open before the recorder type is chosen.
void TestPolling::another_recorder_type() {
  MonitorWindow monitor(steady(1));
  poll(monitor, 1);
  User::RecorderType = 2;
  monitor.attach(steady(3));
  poll(monitor, 1);
  QCOMPARE(monitor.window().MSFlG1->model()->columnCount(), 5);
  QCOMPARE(cell(monitor.window().MSFlG1, 1, 4), "22");
  QCOMPARE(cell(monitor.window().MSFlG1, 0, 4), "0");
  QVERIFY(monitor.window().Line1[2]->isVisibleTo(&monitor.window()));
}

void TestPolling::graph_follows_the_newest_reading() {
  MonitorWindow monitor(counting());
  frmrealtime& window = monitor.window();
  QCOMPARE(window.Slider1->value(), 100);
  QCOMPARE(window.Label2->text(), "");
  poll(monitor, 20);
  QCOMPARE(window.Label1->text(), cell(window.MSFlG1, 0, 1));
  QCOMPARE(window.Label2->text(), cell(window.MSFlG1, 19, 1));
  window.Slider1->setValue(0);
  QCOMPARE(window.Label2->text(), cell(window.MSFlG1, 19, 1));
  for (int step = 0; step < 12; ++step) window.cmd[1]->click();
  QCOMPARE(window.view().Span, 9);
  QCOMPARE(window.Label2->text(), cell(window.MSFlG1, 8, 1));
  poll(monitor, 1);
  QCOMPARE(window.Label2->text(), cell(window.MSFlG1, 8, 1));
  window.Slider1->setValue(100);
  for (int row = 20; row < 24; ++row) {
    QCOMPARE(window.Label1->text(), cell(window.MSFlG1, row - 8, 1));
    QCOMPARE(window.Label2->text(), cell(window.MSFlG1, row, 1));
    poll(monitor, 1);
  }
}

void TestPolling::zoom_buttons_and_wheel() {
  MonitorWindow monitor(counting());
  frmrealtime& window = monitor.window();
  window.cmd[0]->click();
  QCOMPARE(window.view().Span, 160);
  window.cmd[1]->click();
  window.cmd[1]->click();
  QCOMPARE(window.view().Span, 102);
}

void TestPolling::cursor() {
  MonitorWindow monitor(counting());
  frmrealtime& window = monitor.window();
  GraphSurface& picture = *window.Pic1;
  const auto click = [&](int x) { QTest::mouseClick(&picture, Qt::LeftButton, {}, {x, 10}); };
  click(20);
  QVERIFY(!window.Line2->isVisible());
  poll(monitor, 128);
  const int right = picture.width() - 1;
  const int x = int(std::lround(40.3 / 127 * right));
  click(x);
  QVERIFY(window.Line2->isVisible());
  QCOMPARE(window.Line2->x(), int(std::lround(40.0 / 127 * right)));
  QCOMPARE(window.Label5->text(), cell(window.MSFlG1, 40, 1));
  QCOMPARE(window.Label7->text(),
           QStringLiteral("Air %1 C").arg(fixed2(window.live().buffer.LiveValues(40, 0))));
  QCOMPARE(window.Label7->x(), window.Line2->x() + 2);

  // It stays on its reading while the graph moves on, and goes out of sight with it.
  poll(monitor, 30);
  QCOMPARE(window.Line2->x(), int(std::lround(10.0 / 127 * right)));
  QCOMPARE(window.Label5->text(), cell(window.MSFlG1, 40, 1));
  window.resize(window.width() - 100, window.height());
  QCOMPARE(window.Line2->x(), int(std::lround(10.0 / 127 * (picture.width() - 1))));
  QTest::keyClick(&picture, Qt::Key_Right);
  QCOMPARE(window.Label5->text(), cell(window.MSFlG1, 41, 1));
  QTest::keyClick(&picture, Qt::Key_End);
  QCOMPARE(window.Label5->text(), cell(window.MSFlG1, 157, 1));
  QTest::keyClick(&picture, Qt::Key_Home);
  QCOMPARE(window.Label5->text(), cell(window.MSFlG1, 30, 1));
  poll(monitor, 1);
  QVERIFY(!window.Line2->isVisible());
  QVERIFY(!window.Label5->isVisible());
}

// Near the right edge they stand 25 mm to the left of the line, whole and clear of it.
void TestPolling::cursor_labels_stay_inside() {
  MonitorWindow monitor(steady());
  frmrealtime& window = monitor.window();
  poll(monitor, 128);
  for (const int x : {0, window.Pic1->width() / 2, window.Pic1->width() - 1}) {
    QTest::mouseClick(window.Pic1, Qt::LeftButton, {}, {x, 10});
    for (const QLabel* label : {window.Label5, window.Label7}) {
      QVERIFY(window.Pic1->rect().contains(label->geometry()));
      QVERIFY(!label->geometry().intersects(window.Line2->geometry()));
    }
  }
  QCOMPARE(window.Label7->x(), window.Line2->x() - int(std::lround(1417.5 / 15)));
}

void TestPolling::sheets_follow_their_end() {
  MonitorWindow monitor(steady(1));
  frmrealtime& window = monitor.window();
  window.SSTab3->setCurrentWidget(window.MSFlG1);
  poll(monitor, 100);
  QScrollBar* bar = window.MSFlG1->verticalScrollBar();
  QVERIFY(bar->maximum() > 10);
  QCOMPARE(bar->value(), bar->maximum());
  bar->setValue(5);
  poll(monitor, 10);
  QCOMPARE(bar->value(), 5);
  // A full sheet drops rows at its front: what is being read stays where it is.
  LiveMonitor& live = window.live();
  for (int n = 110; n < 15000; ++n) live.add(QString::number(n), {}, {});
  QCoreApplication::processEvents();  // the view lays its rows out
  bar->setValue(500);
  const QString top = cell(window.MSFlG1, 500, 1);
  poll(monitor, 7);
  QCOMPARE(bar->value(), 493);
  QCOMPARE(cell(window.MSFlG1, 493, 1), top);
  bar->setValue(bar->maximum());
  poll(monitor, 1);
  QCOMPARE(bar->value(), bar->maximum());
}

void TestPolling::display_limits() {
  MonitorWindow monitor(steady(1));
  bool shown = false;
  const auto script = when_shown<Frmwarn>([&](Frmwarn& dialog) {
    shown = true;
    dialog.reject();
  });
  monitor.window().ShowDisplayLimits();
  QVERIFY(shown);
}

// So that tests, style sheets and screen readers find it.
void TestPolling::every_control_has_its_name() {
  MonitorWindow monitor(steady(1));
  frmrealtime& window = monitor.window();
  QCOMPARE(window.Text1[7]->objectName(), "Text1(7)");
  QCOMPARE(window.Check1[3]->objectName(), "Check1(3)");
  QCOMPARE(window.Label4[35]->objectName(), "Label4(35)");
  QCOMPARE(window.cmd[1]->objectName(), "cmd(1)");
  for (const char* name :
       {"Text2",  "Text3",  "Text4",  "Text5",  "Text6",  "Text11", "Text12", "Text13",  "Text14",
        "Text15", "Combo2", "Combo3", "DTP1",   "DTP2",   "SSTab1", "SSTab3", "Pic1",    "Slider1",
        "Line2",  "Label1", "Label2", "Label5", "Label7", "MSFlG1", "MSFlG2", "Command4"}) {
    QVERIFY2(window.findChild<QWidget*>(QString::fromLatin1(name)), name);
  }
}

namespace {
const int registered = register_test<TestPolling>();
}

#include "test_polling.moc"
