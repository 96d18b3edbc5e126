#include <QAbstractItemModelTester>
#include <QScrollBar>

#include "acquire/frmhistorytime.h"
#include "app/times.h"
#include "monitor/Frmwarn.h"
#include "monitor/channel_status.h"
#include "monitor/monitor_window.h"

namespace {

const QString question = "Setting Recorder's Properties will Lose Historical Sampling，Continue?";
const QString failed = "Setting is Failed";

// What steady() and what is typed lead to, with their check bytes. The clock stands at
// 2026-03-01 10:00:00; a delay of 01:02:03, an interval of 00:05:00, 1000 samples.
const QString description = QString("09 40 41 00 42 ") + QString("00 ").repeated(13) + "09 4e " +
                            QString("00 ").repeated(46) + "0d";
const QString pattern = "05 0f 88 03 1a 03 01 0a 00 00 8b 0e 2b 01 e8 03 d7";
const QStringList limits = {"0b 06 01 00 80 f5 00 19 60", "0b 06 02 00 00 d8 00 55 82"};
const QStringList read_back = {"02 00 02", "08 00 08", "00 00 00", "0a 01 01 0a", "0a 01 02 09"};

struct Chosen {
  const char* name;
  int startup_type, stop_type;
  QString frame;
};

struct Trouble {
  const char* name;
  QString fault;
  const char *box, *text;
  QStringList requests;
  QString messages;  // after the question
  bool polls = false, paced = false;
};

void type(frmrealtime& window) {
  set_picked_seconds(*window.DTP2, 3723);
  set_picked_seconds(*window.DTP1, 300);
  window.Text14->setText("1000");
  window.Combo2->setCurrentIndex(0);
  window.Timer1->set_enabled(true);
}

struct Middle {
  const char* name;
  QString during, command;
  int readings;  // -1: the window is gone
  int settings = 0;
};

}  // namespace

class TestRealTimeWindow : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void frames_data() {
    add_rows<Chosen>({
        {"start up", 0, 0, pattern},
        {"start up, wrap", 0, 1, "05 0f c8 03 1a 03 01 0a 00 00 8b 0e 2b 01 e8 03 97"},
        {"delayed", 1, 0, "05 0f 8c 03 1a 03 01 0a 00 00 8b 0e 2b 01 e8 03 d3"},
        {"delayed, wrap", 1, 1, "05 0f cc 03 1a 03 01 0a 00 00 8b 0e 2b 01 e8 03 93"},
        {"stop", 2, 0, "05 0f 00 03 00 00 00 00 00 00 8b 0e 2b 01 e8 03 4d"},
        {"stop, wrap", 2, 1, "05 0f 40 03 00 00 00 00 00 00 8b 0e 2b 01 e8 03 0d"},
    });
  }
  // Everything that goes over the line, in order; no separate start or stop is among it.
  void frames() {
    QFETCH(Chosen, row);
    MonitorWindow monitor;
    frmrealtime& window = monitor.window();
    type(window);
    window.Combo2->setCurrentIndex(row.startup_type);
    window.Combo3->setCurrentIndex(row.stop_type);
    monitor.set();
    QCOMPARE(monitor.requests(), QStringList({description, row.frame}) + limits + read_back);
    QVERIFY(window.Timer1->enabled());
    QCOMPARE(window.Combo2->currentIndex(), row.startup_type);
    QCOMPARE(window.Combo3->currentIndex(), row.stop_type);
    QCOMPARE(window.Text2->text(), row.startup_type == 2 ? "Stop" : "Recording");
    QCOMPARE(window.Text12->text(), row.startup_type == 0 ? "0" : "");
    QCOMPARE(std::count(monitor.clock.sleeps.begin(), monitor.clock.sleeps.end(), 500), 1);
  }

  void reads_back_what_the_recorder_holds() {
    MonitorWindow monitor;
    frmrealtime& window = monitor.window();
    type(window);
    const QList<QLineEdit*> boxes = {window.Text6,    window.Text15, window.Text1[0],
                                     window.Text1[3], window.Text14, window.Text11,
                                     window.Text3,    window.Text5,  window.Text4};
    const QStringList typed = {"冷库七字标题一二", "二十四个字的说明", "25.501", " 1e1 ", "65535"};
    for (int i = 0; i < typed.size(); ++i) boxes[i]->setText(typed[i]);
    window.Check1[0]->setChecked(false);
    set_picked_seconds(*window.DTP1, 0);
    window.Timer1->set_interval(0);
    monitor.set();
    // An interval of nothing goes out as 255 and comes back as 256 seconds. The timer, with none
    // either, stays off.
    QStringList shown = {window.DTP2->text(), window.DTP1->text()};
    for (const QLineEdit* box : boxes) shown << box->text();
    QCOMPARE(shown, QStringList({"01:02:03", "00:04:16", typed[0], typed[1], "25.50", "10.00",
                                 "65535", "0", "2026-3-1  10:0:0", "Two", "Ok"}));
    QVERIFY(!window.Check1[0]->isChecked() && window.Check1[1]->isChecked());
    QVERIFY(!window.Timer1->enabled());
    auto weak = steady();
    weak.battery_volts = 2.49;
    monitor.plug_in(weak);
    window.RefreshFromRecorder();
    QCOMPARE(window.Text4->text(), "Error");
  }

  void trouble_data() {
    const auto times = [](int count, const QString& what) { return QStringList(count, what); };
    const QStringList start = {description, pattern};
    const QString up2 = "Channel No.2Up Limit Error";
    const QString down1 = "Channel No.1Down Limit Error|";
    add_rows<Trouble>({
        {"No", "", "Text6", "AB", {}, "", true},
        {"no number", "", "Text14", "all", {}, "Input Error ，Please Retry", true},
        {"no description", "silent:command=09", "Text6", "AB", times(3, description), failed},
        {"bad answer", "check:command=05", "Text6", "AB", start + times(2, pattern), failed},
        {"no limits", "silent:command=0B", "Text6", "AB", start + times(3, limits[0]), failed},
        // It could only be sent as another value: nothing is sent in its place.
        {"limit beyond the range", "", "Text1(0)", "300", start, failed},
        // The request before goes out once more in place of the one that could not be built. At the
        // line's pace its answer comes too late for an exchange that expects nothing; a recorder
        // that answers at once makes it succeed.
        {"no number, slow", "", "Text1(1)", "warm", start + times(3, pattern),
         down1.repeated(3) + failed, false, true},
        {"no number, quick", "", "Text1(2)", "warm", start + times(2, limits[0]) + read_back, up2,
         true},
        {"late answers", "silent:first=2", "Text6", "AB",
         times(2, description) + start + limits + read_back, "", true},
    });
  }
  void trouble() {
    QFETCH(Trouble, row);
    MonitorWindow monitor(row.paced);
    if (!row.fault.isEmpty()) monitor.plug_in(steady(), row.fault);
    type(monitor.window());
    monitor.window().findChild<QLineEdit*>(row.box)->setText(row.text);
    QList<bool> polled;
    monitor.main.messages.meanwhile = [&] { polled << monitor.window().Timer1->enabled(); };
    monitor.set(row.name != QString("No"));
    QCOMPARE(monitor.requests(), row.requests);
    QCOMPARE(monitor.messages().mid(1).join('|'), row.messages);
    QCOMPARE(polled.count(true), 1);  // while the question stands
    QVERIFY(monitor.window().Command4->isEnabled());
    QCOMPARE(monitor.window().Timer1->enabled(), row.polls);
    // Between the tries.
    const auto pauses = std::count(monitor.clock.sleeps.begin(), monitor.clock.sleeps.end(), 50);
    QCOMPARE(pauses, row.messages.contains(failed) || !row.fault.isEmpty() ? 2 : 0);
  }

  void a_reading_is_shown() {
    MonitorWindow monitor;
    frmrealtime& window = monitor.window();
    const QString time = general_date_time_text(monitor.clock.now());
    QCOMPARE(monitor.link_state(), "");
    monitor.poll();
    QCOMPARE(monitor.link_state(), "Link Ok");
    QCOMPARE(monitor.requests(), QStringList("00 00 00"));
    QCOMPARE(row_texts(window.MSFlG1->model(), 0), QStringList({"1", time, "20", "21"}));
    QCOMPARE(window.MSFlG1->model()->headerData(3, Qt::Horizontal).toString(), "Damp ");
    QStringList labels;
    for (std::size_t which = 9; which < 18; ++which) labels << window.Label4[which]->text();
    QCOMPARE(labels.join('|'), "2|Damp|%RH|21.00|85.00|-40.00|21.00|21.00|");
    QVERIFY(window.Label4[9]->isVisible() && !window.Label4[18]->isVisible());
    // The window can be open before the recorder type is chosen.
    User::RecorderType = 2;
    monitor.plug_in(steady(3));
    monitor.poll();
    QCOMPARE(row_texts(window.MSFlG1->model(), 1).mid(2), QStringList({"20", "21", "22"}));
    QVERIFY(window.Line1[2]->isVisible() && window.Label4[18]->isVisible());
  }

  void alarms_are_seen() {
    MonitorWindow monitor;
    frmrealtime& window = monitor.window();
    QStringList values;
    window.Text1[0]->setText("-");
    for (const char* limit : {"21", "20.99", "85"}) {
      window.Text1[2]->setText(limit);
      monitor.poll();
      const QLabel& value = *window.Label4[9 + value_label];
      values << (value.palette().color(QPalette::WindowText).red() > 180 ? "red" : "");
    }
    QCOMPARE(values, QStringList({"", "red", ""}));
    QCOMPARE(window.MSFlG2->model()->rowCount(), 1);
    const QString time = row_texts(window.MSFlG1->model(), 1)[1];
    QCOMPARE(row_texts(window.MSFlG2->model(), 0),
             QStringList({"2", time, "DampOut Of Range    "}));
    QCOMPARE(window.Label4[9 + last_alarm_label]->text(), time);
  }

  // One missed cycle is tolerated, the second in a row is told, the next answer takes it back.
  void silence_and_return() {
    MonitorWindow monitor;
    QStringList states;
    for (const char* fault : {"", "silent", "", "silent", "check", "", "silent:first=2"}) {
      monitor.plug_in(steady(), fault);
      monitor.poll();
      states << QString("%1 %2 %3")
                    .arg(monitor.link_state())
                    .arg(monitor.live().buffer.LiveCount())
                    .arg(monitor.requests().size());
    }
    QCOMPARE(states, QStringList({"Link Ok 1 1", "Link Ok 1 3", "Link Ok 2 1", "Link Ok 2 3",
                                  "Link Error 2 3", "Link Ok 3 1", "Link Ok 4 3"}));
    // A tick in the middle of a cycle is left out.
    monitor.plug_in(steady(), "silent");
    for (int at = 100; at < 3000; at += 100) {
      monitor.clock.after(at, [&] { Q_EMIT monitor.window().Timer1->tick(); });
    }
    monitor.poll();
    QCOMPARE(monitor.requests().size(), 3);
    QCOMPARE(int{monitor.live().FailCount}, 1);
  }

  void in_the_middle_data() {
    add_rows<Middle>({
        {"Properties Set in a cycle", "poll", "set", 1, 1},
        {"Read Data in a cycle", "poll", "read", 1},
        {"Historical Data in a cycle", "poll", "history", 1},
        {"Unlink in a cycle", "poll", "unlink", -1},
        {"closing the window in a cycle", "poll", "shut", -1},
        {"Unlink and Link in a cycle", "poll", "unlink realtime", -1},
        {"Exit in a cycle", "poll", "Quit", 0},
        {"a cycle in Properties Set", "set", "poll", 1, 1},
        {"Read Data in Properties Set", "set", "read", 0, 1},
        {"Unlink in Properties Set", "set", "unlink", -1},
        {"Exit in Properties Set", "set", "Quit", 0},
        {"Properties Set in itself", "set", "set", 0, 1},
        {"Exit while Record Set loads the window", "load", "Quit", -1},
    });
  }
  // While the wait for an answer that does not come goes on. Once what the user did is over the
  // request is made again, so no reading and no setting is lost.
  void in_the_middle() {
    QFETCH(Middle, row);
    MonitorWindow monitor;
    const QPointer<frmrealtime> first = monitor.realtime();
    const auto segments =
        when_shown<frmhistorytime>([](frmhistorytime& dialog) { press(dialog.Command1); });
    const auto run = [&](const QString& command) {
      if (command == "poll") return monitor.poll();
      if (command == "set") return monitor.set();
      if (command == "shut" || command == "load") first->close();
      if (command == "load") monitor.record(true, true, 30);
      if (monitor.main.window->menu_entry(command)) monitor.main.run(command);
    };
    monitor.poll();
    monitor.plug_in(steady(), "silent:first=1");
    monitor.clock.after(300, [&] {
      for (const QString& command : row.command.split(' ')) run(command);
    });
    run(row.during);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(monitor.requests().filter(QRegularExpression("^05 0f")).size(), row.settings);
    QCOMPARE(monitor.messages().filter("Failed"), QStringList());
    QCOMPARE(first.isNull(), row.readings < 0);
    if (first) QCOMPARE(monitor.live().buffer.LiveCount(), 1 + row.readings);
    // Nobody polls any more, so nothing is said of the link.
    if (!first) QCOMPARE(monitor.link_state(), "");
    if (row.command == "read") QCOMPARE(User::recording.SampleCount, 250);
  }

  // The second file cannot be written, because a folder stands in its place.
  void saves_automatically() {
    MonitorWindow monitor;
    monitor.window().Text6->setText("Cold");
    const QDir folder(monitor.main.folder.path());
    const auto until_due = [&] {
      while (monitor.live().SaveCounter < 14999) monitor.live().add("then", {}, {});
      return monitor.clock.now().addMSecs(25).toString("yyyy-MM-dd HH-mm-ss") + ".qlx";
    };
    const QString name = until_due();
    monitor.poll();
    QCOMPARE(folder.entryList({"*.qlx"}), QStringList(name));
    QVERIFY(folder.mkdir(until_due()));
    // What is being read in a full sheet stays where it is, though rows go at its front.
    monitor.window().SSTab3->setCurrentWidget(monitor.window().MSFlG1);
    QScrollBar* bar = monitor.window().MSFlG1->verticalScrollBar();
    QVERIFY(bar->value() > 10000 && bar->value() == bar->maximum());
    bar->setValue(500);
    monitor.poll();
    QCOMPARE(bar->value(), 499);
    QCOMPARE(monitor.live().buffer.LiveCount(), 15000);
    QFile file(folder.filePath(name));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.read(70).replace("\r\n", "|"),
             "\"Cold\"|\"Two\"|2|\"1\",\"Air\",\"C\"|\"2\",\"Damp\",\"%RH\"|15000|\"then\",0,0|");
    monitor.main.files.choices = {file.fileName()};
    monitor.main.run("open");
    QCOMPARE(monitor.messages(), QStringList());
    QCOMPARE(User::recording.SampleCount, 15000);
    QCOMPARE(User::recording.SampleValues(14999, 1), 21.0F);
  }

  // With the slider at its end the graph follows the newest reading. The cursor stays on its own,
  // and goes out of sight with it.
  void graph() {
    MonitorWindow monitor;
    frmrealtime& window = monitor.window();
    GraphSurface& picture = *window.Pic1;
    const auto line_at = [&](double reading) {
      return int(std::lround(reading / 127 * (picture.width() - 1)));
    };
    monitor.poll(128);
    for (const int x : {0, line_at(127), line_at(40.3)}) {
      QTest::mouseClick(&picture, Qt::LeftButton, {}, {x, 10});
      for (const QLabel* label : {window.Label5, window.Label7}) {
        QVERIFY(picture.rect().contains(label->geometry()));
        QCOMPARE(label->x() - window.Line2->x(), x == line_at(127) ? -95 : 2);
      }
    }
    QCOMPARE(window.Label7->text(), "Air 20.00 C\nDamp 21.00 %RH");
    monitor.poll(30);
    const QAbstractItemModel* sheet = window.MSFlG1->model();
    window.resize(window.width() - 100, window.height());
    QCOMPARE(window.Line2->x(), line_at(10));
    QCOMPARE(window.Label5->text(), row_texts(sheet, 40)[1]);
    QCOMPARE(window.Label1->text(), row_texts(sheet, 30)[1]);
    QCOMPARE(window.Label2->text(), row_texts(sheet, 157)[1]);
    QTest::keyClick(&picture, Qt::Key_Home);
    QCOMPARE(window.Line2->x(), 0);
    monitor.poll();
    QVERIFY(!window.Line2->isVisible() && !window.Label5->isVisible());
    window.Slider1->setValue(0);
    window.cmd[1]->click();
    monitor.poll();
    QCOMPARE(window.Label2->text(), row_texts(sheet, 101)[1]);
    const auto script = when_shown<Frmwarn>([](Frmwarn& dialog) { dialog.reject(); });
    window.ShowDisplayLimits();
    QVERIFY(!script->isActive());
  }

  // Opened again the dialog shows the choice, with the window loaded anew the defaults. Where the
  // window is not there it is loaded; the choice comes after the defaults that its load sets.
  void online_record() {
    MonitorWindow monitor;
    const auto interval = [&](bool refresh, bool record, int seconds) {
      monitor.record(refresh, record, seconds);
      const IntervalTimer& timer = *monitor.window().Timer1;
      return timer.enabled() ? timer.interval() : -1;
    };
    QCOMPARE(interval(true, false, 10), 10'000);
    QCOMPARE(interval(false, false, 7), -1);
    QCOMPARE(monitor.record(true, true, 9, false), "0 0 00:00:07");
    QCOMPARE(interval(false, true, 86'399), 86'399'000);
    QCOMPARE(monitor.record(true, true, 0), "0 1 23:59:59");
    monitor.window().close();
    QCOMPARE(interval(false, true, 30), 30'000);
    monitor.window().close();
    monitor.main.window->show_realtime();
    QCOMPARE(monitor.record(true, true, 0), "1 1 00:00:05");
    QCOMPARE(interval(true, true, 0), 0);
  }

  // Buffer, graph and alarms stay; new rows go on from the buffer's count.
  void online_record_clears_the_sheet() {
    MonitorWindow monitor;
    const QAbstractItemModelTester live_tester(monitor.window().MSFlG1->model());
    const QAbstractItemModelTester alarm_tester(monitor.window().MSFlG2->model());
    monitor.window().Text1[0]->setText("-100");
    monitor.poll(3);
    monitor.record(true, true, 5);
    QCOMPARE(monitor.window().MSFlG1->model()->rowCount(), 0);
    QCOMPARE(monitor.window().MSFlG2->model()->rowCount(), 3);
    monitor.poll();
    QCOMPARE(row_texts(monitor.window().MSFlG1->model(), 0)[0], "4");
  }
};

const int registered = register_test<TestRealTimeWindow>();

#include "test_frmrealtime.moc"
