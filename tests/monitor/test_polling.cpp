#include <QAbstractItemModelTester>
#include <QScrollBar>

#include "acquire/frmhistorytime.h"
#include "app/times.h"
#include "monitor/Frmwarn.h"
#include "monitor/channel_status.h"
#include "monitor/monitor_window.h"

namespace {

struct Middle {
  const char* name;
  QString during, command;
  int readings;  // -1: the window is gone
};

}  // namespace

class TestPolling : public QObject {
  Q_OBJECT
 private Q_SLOTS:
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
        {"Properties Set in a cycle", "poll", "set", 1},
        {"Read Data in a cycle", "poll", "read", 1},
        {"Historical Data in a cycle", "poll", "history", 1},
        {"Unlink in a cycle", "poll", "unlink", -1},
        {"closing the window in a cycle", "poll", "shut", -1},
        {"Unlink and Link in a cycle", "poll", "unlink realtime", -1},
        {"Exit in a cycle", "poll", "Quit", 0},
        {"a cycle in Properties Set", "set", "poll", 1},
        {"Read Data in Properties Set", "set", "read", 0},
        {"Unlink in Properties Set", "set", "unlink", -1},
        {"Exit in Properties Set", "set", "Quit", 0},
        {"Properties Set in itself", "set", "set", 0},
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
    const bool ended = row.readings < 0 || row.command == "Quit";
    const bool sets = row.command == "set" || (row.during == "set" && !ended);
    QCOMPARE(monitor.requests().filter(QRegularExpression("^05 0f")).size(), sets ? 1 : 0);
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
    monitor.poll();
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

  void graph_follows_the_newest_reading() {
    MonitorWindow monitor;
    frmrealtime& window = monitor.window();
    const auto shows = [&](int first, int last) {
      const QAbstractItemModel* sheet = window.MSFlG1->model();
      QCOMPARE(window.Label1->text(), row_texts(sheet, first)[1]);
      QCOMPARE(window.Label2->text(), row_texts(sheet, last)[1]);
    };
    monitor.poll(20);
    shows(0, 19);
    for (int step = 0; step < 12; ++step) window.cmd[1]->click();
    monitor.poll();
    shows(12, 20);
    window.Slider1->setValue(0);
    monitor.poll();
    shows(0, 8);
    window.cmd[0]->click();
    shows(0, 10);
  }

  // The cursor stays on its reading while the graph moves on, and goes out of sight with it.
  void cursor() {
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
    window.resize(window.width() - 100, window.height());
    QCOMPARE(window.Line2->x(), line_at(10));
    for (const auto& [key, row] : {std::pair(Qt::Key_Shift, 40),
                                   {Qt::Key_Right, 41},
                                   {Qt::Key_End, 157},
                                   {Qt::Key_Home, 30}}) {
      QTest::keyClick(&picture, key);
      QCOMPARE(window.Label5->text(), row_texts(window.MSFlG1->model(), row)[1]);
    }
    monitor.poll();
    QVERIFY(!window.Line2->isVisible() && !window.Label5->isVisible());
    const auto script = when_shown<Frmwarn>([](Frmwarn& dialog) { dialog.reject(); });
    window.ShowDisplayLimits();
    QVERIFY(!script->isActive());
  }

  // A full sheet drops rows at its front: what is being read stays where it is.
  void sheets_follow_their_end() {
    MonitorWindow monitor;
    frmrealtime& window = monitor.window();
    window.SSTab3->setCurrentWidget(window.MSFlG1);
    QScrollBar* bar = window.MSFlG1->verticalScrollBar();
    for (int n = 0; n < 15000; ++n) window.live().add({}, {}, {});
    monitor.poll();
    QVERIFY(bar->value() > 10000 && bar->value() == bar->maximum());
    bar->setValue(500);
    monitor.poll(7);
    QCOMPARE(bar->value(), 493);
  }

  // Opened again the dialog shows the choice, with the window loaded anew the defaults. Where the
  // window is not there it is loaded; the choice comes after the defaults that its load sets.
  void online_record() {
    for (const auto& [refresh, record, seconds] : {std::tuple(true, false, 10),
                                                   {false, true, 1},
                                                   {false, false, 7},
                                                   {true, true, 86'399},
                                                   {true, true, 0}}) {
      MonitorWindow monitor;
      const bool polls = refresh || record;
      monitor.window().Timer1->set_enabled(!polls);
      QCOMPARE(monitor.record(refresh, record, seconds), "1 1 00:00:05");
      QCOMPARE(monitor.window().Timer1->enabled(), polls);
      QCOMPARE(monitor.window().Timer1->interval(), polls ? seconds * 1000 : 5000);
      monitor.record(false, false, 9, false);
      monitor.window().close();
      QCOMPARE(monitor.record(false, true, 30),
               QString("%1 %2 ").arg(refresh).arg(record) +
                   QTime(0, 0).addSecs(seconds).toString("HH:mm:ss"));
      QVERIFY(monitor.window().Timer1->enabled());
      QCOMPARE(monitor.record(true, true, 5), "0 1 00:00:30");
      monitor.window().close();
      monitor.main.window->show_realtime();
      QCOMPARE(monitor.record(true, true, 5), "1 1 00:00:05");
    }
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

const int registered = register_test<TestPolling>();

#include "test_polling.moc"
