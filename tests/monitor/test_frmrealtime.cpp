#include <QAbstractItemModelTester>
#include <QScrollBar>

#include "acquire/frmhistorytime.h"
#include "app/times.h"
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
  window.Timer1->set_enabled(true);
}

struct Middle {
  const char* name;
  QString during, command;
  int readings, settings = 0;  // -1 readings: the window is gone
};

}  // namespace

class TestRealTimeWindow : public QObject {
  Q_OBJECT

  void make(bool paced) {
    monitor_.reset();
    monitor_ = std::make_unique<MonitorWindow>(paced);
    window_ = monitor_->realtime();
  }
  std::unique_ptr<MonitorWindow> monitor_;
  frmrealtime* window_ = nullptr;

 private Q_SLOTS:
  void init() { make(false); }
  void cleanup() { monitor_.reset(); }

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
    type(*window_);
    window_->Combo2->setCurrentIndex(row.startup_type);
    window_->Combo3->setCurrentIndex(row.stop_type);
    monitor_->set();
    QCOMPARE(monitor_->requests(), QStringList({description, row.frame}) + limits + read_back);
    QVERIFY(window_->Timer1->enabled());
    QCOMPARE(window_->Combo2->currentIndex(), row.startup_type);
    QCOMPARE(window_->Combo3->currentIndex(), row.stop_type);
    QCOMPARE(window_->Text2->text(), row.startup_type == 2 ? "Stop" : "Recording");
    QCOMPARE(window_->Text12->text(), row.startup_type == 0 ? "0" : "");
    QCOMPARE(std::count(monitor_->clock.sleeps.begin(), monitor_->clock.sleeps.end(), 500), 1);
  }

  void reads_back_what_the_recorder_holds() {
    type(*window_);
    const QList<QLineEdit*> boxes = {window_->Text6,    window_->Text15, window_->Text1[0],
                                     window_->Text1[3], window_->Text14, window_->Text11,
                                     window_->Text3,    window_->Text5,  window_->Text4};
    const QStringList typed = {"冷库七字标题一二", "二十四个字的说明", "25.501", " 1e1 ", "65535"};
    for (int i = 0; i < typed.size(); ++i) boxes[i]->setText(typed[i]);
    window_->Check1[0]->setChecked(false);
    set_picked_seconds(*window_->DTP1, 0);
    window_->Timer1->set_interval(0);
    monitor_->set();
    // An interval of nothing goes out as 255 and comes back as 256 seconds. The timer, with none
    // either, stays off.
    QStringList shown = {window_->DTP2->text(), window_->DTP1->text()};
    for (const QLineEdit* box : boxes) shown << box->text();
    QCOMPARE(shown, QStringList({"01:02:03", "00:04:16", typed[0], typed[1], "25.50", "10.00",
                                 "65535", "0", "2026-3-1  10:0:0", "Two", "Ok"}));
    QVERIFY(!window_->Check1[0]->isChecked() && window_->Check1[1]->isChecked());
    QVERIFY(!window_->Timer1->enabled());
    auto weak = steady();
    weak.battery_volts = 2.49;
    monitor_->plug_in(weak);
    window_->RefreshFromRecorder();
    QCOMPARE(window_->Text4->text(), "Error");
  }

  void trouble_data() {
    const QStringList start = {description, pattern};
    const QString down1 = "Channel No.1Down Limit Error|";
    add_rows<Trouble>({
        {"No", "", "Text6", "AB", {}, "", true},
        {"no number", "", "Text14", "all", {}, "Input Error ，Please Retry", true},
        {"no description", "silent:command=09", "Text6", "AB", QStringList(3, description), failed},
        {"no limits", "silent:command=0B", "Text6", "AB", start + QStringList(3, limits[0]),
         failed},
        // It could only be sent as another value: nothing is sent in its place.
        {"limit beyond the range", "", "Text1(0)", "300", start, failed},
        // The request before goes out once more in place of the one that could not be built. At the
        // line's pace its answer comes too late for an exchange that expects nothing; a recorder
        // that answers at once makes it succeed.
        {"no number, slow", "", "Text1(1)", "warm", start + QStringList(3, pattern),
         down1.repeated(3) + failed, false, true},
        {"no number, quick", "", "Text1(2)", "warm", start + QStringList(2, limits[0]) + read_back,
         "Channel No.2Up Limit Error", true},
        {"late answers", "silent:first=2", "Text6", "AB",
         QStringList(2, description) + start + limits + read_back, "", true},
    });
  }
  void trouble() {
    QFETCH(Trouble, row);
    if (row.paced) make(true);
    if (!row.fault.isEmpty()) monitor_->plug_in(steady(), row.fault);
    type(*window_);
    window_->findChild<QLineEdit*>(row.box)->setText(row.text);
    QList<bool> polled;
    monitor_->main.messages.meanwhile = [&] { polled << monitor_->window().Timer1->enabled(); };
    monitor_->set(row.name != QString("No"));
    QCOMPARE(monitor_->requests(), row.requests);
    QCOMPARE(monitor_->messages().mid(1).join('|'), row.messages);
    QCOMPARE(polled.count(true), 1);  // while the question stands
    QVERIFY(monitor_->window().Command4->isEnabled());
    QCOMPARE(monitor_->window().Timer1->enabled(), row.polls);
  }

  void a_reading_is_shown() {
    const QString time = general_date_time_text(monitor_->clock.now());
    monitor_->poll();
    QCOMPARE(monitor_->requests(), QStringList("00 00 00"));
    QCOMPARE(row_texts(window_->MSFlG1->model(), 0), QStringList({"1", time, "20", "21"}));
    QCOMPARE(window_->MSFlG1->model()->headerData(3, Qt::Horizontal).toString(), "Damp ");
    QStringList labels;
    for (std::size_t which = 9; which < 18; ++which) labels << window_->Label4[which]->text();
    QCOMPARE(labels.join('|'), "2|Damp|%RH|21.00|85.00|-40.00|21.00|21.00|");
    QVERIFY(window_->Label4[9]->isVisible() && !window_->Label4[18]->isVisible());
    // The window can be open before the recorder type is chosen.
    User::RecorderType = 2;
    monitor_->plug_in(steady(3));
    monitor_->poll();
    QCOMPARE(row_texts(window_->MSFlG1->model(), 1).mid(2), QStringList({"20", "21", "22"}));
    QVERIFY(window_->Line1[2]->isVisible() && window_->Label4[18]->isVisible());
  }

  void alarms_are_seen() {
    QStringList values;
    window_->Text1[0]->setText("-");
    for (const char* limit : {"21", "20.99", "85"}) {
      window_->Text1[2]->setText(limit);
      monitor_->poll();
      const QLabel& value = *window_->Label4[9 + value_label];
      values << (value.palette().color(QPalette::WindowText).red() > 180 ? "red" : "");
    }
    QCOMPARE(values, QStringList({"", "red", ""}));
    QCOMPARE(window_->MSFlG2->model()->rowCount(), 1);
    const QString time = row_texts(window_->MSFlG1->model(), 1)[1];
    QCOMPARE(row_texts(window_->MSFlG2->model(), 0),
             QStringList({"2", time, "DampOut Of Range    "}));
    QCOMPARE(window_->Label4[9 + last_alarm_label]->text(), time);
  }

  // One missed cycle is tolerated, the second in a row is told, the next answer takes it back.
  void silence_and_return() {
    QStringList states;
    for (const char* fault : {"", "silent", "", "silent", "check", "", "silent:first=2"}) {
      monitor_->plug_in(steady(), fault);
      monitor_->poll();
      const auto count = QString(" %1 ").arg(monitor_->live().buffer.LiveCount());
      states << monitor_->link_state() + count + QString::number(monitor_->requests().size());
    }
    QCOMPARE(states, QStringList({"Link Ok 1 1", "Link Ok 1 3", "Link Ok 2 1", "Link Ok 2 3",
                                  "Link Error 2 3", "Link Ok 3 1", "Link Ok 4 3"}));
    QCOMPARE(std::ranges::count(monitor_->clock.sleeps, 50), 0);  // between the tries: 10 ms
    // A tick in the middle of a cycle is left out.
    monitor_->plug_in(steady(), "silent");
    for (int at = 100; at < 3000; at += 100) {
      monitor_->clock.after(at, [&] { Q_EMIT monitor_->window().Timer1->tick(); });
    }
    monitor_->poll();
    QCOMPARE(monitor_->requests().size(), 3);
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
    const QPointer<frmrealtime> first = monitor_->realtime();
    const auto segments =
        when_shown<frmhistorytime>([](frmhistorytime& dialog) { press(dialog.Command1); });
    const auto run = [&](const QString& command) {
      if (command == "poll") return monitor_->poll();
      if (command == "set") return monitor_->set();
      if (command == "shut" || command == "load") first->close();
      if (command == "load") monitor_->record(true, true, 30);
      if (monitor_->main.window->menu_entry(command)) monitor_->main.run(command);
    };
    monitor_->poll();
    monitor_->plug_in(steady(), "silent:first=1");
    monitor_->clock.after(300, [&] {
      for (const QString& command : row.command.split(' ')) run(command);
    });
    run(row.during);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(monitor_->requests().filter(QRegularExpression("^05 0f")).size(), row.settings);
    QCOMPARE(monitor_->messages().filter("Failed"), QStringList());
    QCOMPARE(first.isNull(), row.readings < 0);
    if (first) QCOMPARE(monitor_->live().buffer.LiveCount(), 1 + row.readings);
    // Nobody polls any more, so nothing is said of the link.
    if (!first) QCOMPARE(monitor_->link_state(), "");
    frmrealtime* now = monitor_->realtime();
    if (row.command == "Quit" && now) QVERIFY(!now->Timer1->enabled());
    if (row.command == "read") QCOMPARE(User::recording.SampleCount, 250);
  }

  // The second file cannot be written, because a folder stands in its place, and goes among the
  // user's documents; for the third there is no place at all.
  void saves_automatically() {
    const QTemporaryDir home;
    const QByteArray real_home = qgetenv("HOME");
    qputenv("HOME", home.path().toLocal8Bit());
    monitor_->window().Text6->setText("Cold");
    const QDir folder(monitor_->main.folder.path());
    const QLabel& saved_label = *monitor_->window().saved_label;
    const auto until_due = [&] {
      while (monitor_->live().SaveCounter < 14999) monitor_->live().add("then", {}, {});
      return monitor_->clock.now().addMSecs(25).toString("yyyy-MM-dd HH-mm-ss") + ".qlx";
    };
    const QString name = until_due();
    monitor_->poll();
    QCOMPARE(folder.entryList({"*.qlx"}), QStringList(name));
    QVERIFY(saved_label.text().endsWith(folder.filePath(name)) && saved_label.isVisible());
    const QDir documents(home.path() + "/Documents/Corvane");
    const QString second = until_due();
    QVERIFY(folder.mkdir(second));
    // What is being read in a full sheet stays where it is, though rows go at its front.
    monitor_->window().SSTab3->setCurrentWidget(monitor_->window().MSFlG1);
    QScrollBar* bar = monitor_->window().MSFlG1->verticalScrollBar();
    QVERIFY(bar->value() > 10000 && bar->value() == bar->maximum());
    bar->setValue(500);
    monitor_->poll();
    QCOMPARE(bar->value(), 499);
    QCOMPARE(documents.entryList({"*.qlx"}), QStringList(second));
    QVERIFY(saved_label.text().endsWith(documents.filePath(second)));
    const QString third = until_due();
    QVERIFY(folder.mkdir(third) && documents.mkdir(third));
    monitor_->poll();
    QCOMPARE(saved_label.text(), "Not saved automatically: " + third + " cannot be written");
    QCOMPARE(monitor_->live().buffer.LiveCount(), 15000);
    qputenv("HOME", real_home);
    QFile file(folder.filePath(name));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.read(70).replace("\r\n", "|"),
             "\"Cold\"|\"Two\"|2|\"1\",\"Air\",\"C\"|\"2\",\"Damp\",\"%RH\"|15000|\"then\",0,0|");
    monitor_->main.files.choices = {file.fileName()};
    monitor_->main.run("open");
    QCOMPARE(User::recording.SampleCount, 15000);
    QCOMPARE(User::recording.SampleValues(14999, 1), 21.0F);
  }

  // With the slider at its end the graph follows the newest reading. The cursor stays on its own,
  // and goes out of sight with it.
  void graph() {
    GraphSurface& picture = *window_->Pic1;
    const auto line_at = [&](double reading) {
      return int(std::lround(reading / 127 * (picture.width() - 1)));
    };
    monitor_->poll(130);
    for (const int x : {0, line_at(127), line_at(40.3)}) {
      QTest::mouseClick(&picture, Qt::LeftButton, {}, {x, 10});
      for (const QLabel* label : {window_->Label5, window_->Label7}) {
        QVERIFY(picture.rect().contains(label->geometry()));
        QCOMPARE(label->x() - window_->Line2->x(), x == line_at(127) ? -95 : 2);
      }
    }
    QCOMPARE(window_->Label7->text(), "Air 20.00 C\nDamp 21.00 %RH");
    monitor_->poll(30);
    const QAbstractItemModel* sheet = window_->MSFlG1->model();
    window_->resize(window_->width() - 100, window_->height());
    QCOMPARE(window_->Line2->x(), line_at(10));
    QCOMPARE(window_->Label5->text(), row_texts(sheet, 42)[1]);
    QCOMPARE(window_->Label1->text(), row_texts(sheet, 32)[1]);
    QCOMPARE(window_->Label2->text(), row_texts(sheet, 159)[1]);
    QTest::keyClick(&picture, Qt::Key_Home);
    QCOMPARE(window_->Line2->x(), 0);
    monitor_->poll();
    QVERIFY(!window_->Line2->isVisible() && !window_->Label5->isVisible());
    window_->Slider1->setValue(0);
    window_->cmd[1]->click();
    monitor_->poll();
    QCOMPARE(window_->Label2->text(), row_texts(sheet, 101)[1]);
  }

  // Opened again the dialog shows the choice, with the window loaded anew the defaults. Where the
  // window is not there it is loaded; the choice comes after the defaults that its load sets.
  void online_record() {
    const auto interval = [&](bool refresh, bool record, int seconds) {
      monitor_->record(refresh, record, seconds);
      const IntervalTimer& timer = *monitor_->window().Timer1;
      return timer.enabled() ? timer.interval() : -1;
    };
    // Buffer, graph and alarms stay; new rows go on from the buffer's count.
    const QAbstractItemModelTester live_tester(window_->MSFlG1->model());
    const QAbstractItemModelTester alarm_tester(window_->MSFlG2->model());
    window_->Text1[0]->setText("-100");
    monitor_->poll(3);
    QCOMPARE(interval(true, false, 10), 10'000);
    QCOMPARE(window_->MSFlG1->model()->rowCount(), 0);
    QCOMPARE(window_->MSFlG2->model()->rowCount(), 3);
    monitor_->poll();
    QCOMPARE(row_texts(window_->MSFlG1->model(), 0)[0], "4");
    QCOMPARE(interval(false, false, 7), -1);
    QCOMPARE(monitor_->record(true, true, 9, false), "0 0 00:00:07");
    QCOMPARE(interval(false, true, 86'399), 86'399'000);
    QCOMPARE(monitor_->record(true, true, 0), "0 1 23:59:59");
    monitor_->window().close();
    QCOMPARE(interval(false, true, 30), 30'000);
    monitor_->window().close();
    monitor_->main.window->show_realtime();
    QCOMPARE(monitor_->record(true, true, 0), "1 1 00:00:05");
    QCOMPARE(interval(true, true, 0), 0);
  }
};

const int registered = register_test<TestRealTimeWindow>();

#include "test_frmrealtime.moc"
