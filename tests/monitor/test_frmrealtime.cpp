#include <QAbstractItemModelTester>

#include "base/contrast.h"
#include "base/times.h"
#include "monitor/channel_status.h"
#include "monitor/monitor_window.h"
#include "views/frmdate.h"
#include "views/frmdisplay.h"
#include "views/statistics.h"

namespace {

const QString failed = "Setting is Failed";

// The frames, with check bytes, for steady() and the typed settings: clock 2026-03-01 10:00:00,
// delay 01:02:03, interval 00:05:00, 1000 samples.
const QString description = QString("09 40 41 00 42 ") + QString("00 ").repeated(13) + "09 4e " +
                            QString("00 ").repeated(46) + "0d";
const QString pattern = "05 0f 88 03 1a 03 01 0a 00 00 8b 0e 2b 01 e8 03 d7";
// The requests that write the limits, and those that then read everything back.
const QStringList limits = {"0b 06 01 00 80 f5 00 19 60", "0b 06 02 00 00 d8 00 55 82"};
const QStringList read_back = {"02 00 02", "08 00 08", "00 00 00", "0a 01 01 0a", "0a 01 02 09"};

struct Setting {
  const char* name;
  int startup_type, stop_type;
  const char *box, *text;
  QStringList requests;
  QString messages;  // those shown after the question
  bool polls = true;
};

struct Middle {
  const char* name;
  QString during, command;
  int readings, settings = 0;  // -1 readings: the window is gone
};

}  // namespace

class TestRealTimeWindow : public QObject {
  Q_OBJECT

  std::unique_ptr<MonitorWindow> monitor_;
  frmrealtime* window_ = nullptr;

 private Q_SLOTS:
  void init() {
    monitor_ = std::make_unique<MonitorWindow>();
    window_ = monitor_->realtime();
  }
  void cleanup() { monitor_.reset(); }

  void properties_set_data() {
    const QStringList start = {description, pattern};
    const QStringList rest = limits + read_back;
    const QString delayed = "05 0f cc 03 1a 03 01 0a 00 00 8b 0e 2b 01 e8 03 93";
    const QString stop = "05 0f 00 03 00 00 00 00 00 00 8b 0e 2b 01 e8 03 4d";
    const QString down2 = "Channel No.2Down Limit Error|";
    add_rows<Setting>({
        {"start up", 0, 0, "Text6", "AB", start + rest, ""},
        {"delayed, wrap", 1, 1, "Text6", "AB", QStringList{description, delayed} + rest, ""},
        {"stop", 2, 0, "Text6", "AB", QStringList{description, stop} + rest, ""},
        {"No", 0, 0, "Text6", "AB", {}, ""},
        {"no number", 0, 0, "Text14", "all", {}, "Input Error ，Please Retry"},
        // It does not fit into 16 bits, so nothing is sent in its place.
        {"limit beyond the range", 0, 0, "Text1(0)", "300", start, failed, false},
        // The previous request is sent again in place of the one that could not be built. Its
        // answer does not count, because the exchange expects none.
        {"limit that is none", 0, 0, "Text1(3)", "warm", start + QStringList(4, limits[0]),
         down2.repeated(3) + failed, false},
    });
  }
  // Compares all requests, in order. None of them is a separate start or stop.
  void properties_set() {
    QFETCH(Setting, row);
    set_picked_seconds(*window_->setup().DTP2, 3723);
    set_picked_seconds(*window_->setup().DTP1, 300);
    window_->setup().Text14->setText("1000");
    monitor_->main.window->set_panel(2, "Link Ok");
    window_->live().Timer1->set_enabled(true);
    window_->setup().Combo2->setCurrentIndex(row.startup_type);
    window_->setup().Combo3->setCurrentIndex(row.stop_type);
    window_->findChild<QLineEdit*>(row.box)->setText(row.text);
    QList<bool> polled;
    monitor_->main.messages.meanwhile = [&] { polled << window_->live().Timer1->enabled(); };
    window_->setup().Command4->setFocus();
    monitor_->set(row.name != QString("No"));
    QCOMPARE(monitor_->requests(), row.requests);
    QCOMPARE(monitor_->messages().mid(1).join('|'), row.messages);
    QCOMPARE(polled.count(true), 1);  // only while the question is open
    // After a failure polling is off and the link panel is empty.
    QCOMPARE(monitor_->link_state(), row.polls ? "Link Ok" : "");
    // The focus is back on the button, or on the box that was refused.
    const QWidget& focus = *window_->focusWidget();
    QCOMPARE(focus.objectName(), row.messages.isEmpty() ? "Command4" : row.box);
    QVERIFY(window_->setup().Command4->isEnabled() && focus.isVisible());
    QCOMPARE(window_->live().Timer1->enabled(), row.polls);
    QCOMPARE(window_->setup().Combo2->currentIndex(), row.startup_type);
    QCOMPARE(window_->setup().Combo3->currentIndex(), row.stop_type);
    QCOMPARE(std::ranges::count(monitor_->clock.sleeps, 500), row.requests.endsWith(read_back[4]));
  }

  void reads_back_what_the_recorder_holds() {
    const QList<QLineEdit*> boxes = {window_->setup().Text6,    window_->setup().Text15,
                                     window_->setup().Text1[0], window_->setup().Text1[3],
                                     window_->setup().Text14,   window_->setup().Text11,
                                     window_->setup().Text3,    window_->setup().Text4};
    const QStringList typed = {"冷库七字标题一二", "二十四个字的说明", "25.501", " 1e1 ", "65535"};
    for (int i = 0; i < typed.size(); ++i) boxes[i]->setText(typed[i]);
    window_->setup().Check1[0]->setChecked(false);
    set_picked_seconds(*window_->setup().DTP1, 0);
    set_picked_seconds(*window_->setup().DTP2, 3723);
    window_->live().Timer1->set_interval(0);
    monitor_->set();
    for (QLineEdit* box : boxes) box->clear();
    set_picked_seconds(*window_->setup().DTP2, 0);
    window_->RefreshFromRecorder();
    // An interval of 0 is sent as 255 and read back as 256 seconds. The timer's interval is 0 too,
    // so it stays off.
    QStringList shown = {window_->setup().DTP2->text(), window_->setup().DTP1->text()};
    for (const QLineEdit* box : boxes) shown << box->text();
    QCOMPARE(shown, QStringList({"01:02:03", "00:04:16", typed[0], typed[1], "25.50", "10.00",
                                 "65535", "0", "2026-3-1  10:0:0", "Error"}));
    QVERIFY(!window_->setup().Check1[0]->isChecked() && window_->setup().Check1[1]->isChecked());
    QVERIFY(!window_->live().Timer1->enabled());
  }

  void readings_and_alarms() {
    const auto values_shown = [this] {
      QStringList texts;
      for (std::size_t which = 9; which < 17; ++which)
        texts << window_->live().Label4[which]->text();
      const QColor colour = window_->live().Label4[9 + value_label]->palette().windowText().color();
      return texts.join('|') + (colour.red() > 180 ? " red" : "");
    };
    QLineEdit& limit = *window_->setup().Text1[0];
    for (const auto& [text, marked] : {std::pair("-", true), {"1", false}, {"", true}}) {
      limit.setText(text);
      QCOMPARE(!limit.accessibleDescription().isEmpty(), marked);
      QCOMPARE(limit.findChild<QToolButton*>()->isVisible(), marked);
      QCOMPARE(!window_->setup().SSTab1->tabIcon(0).isNull(), marked);
    }
    monitor_->poll();
    QCOMPARE(values_shown(), "2|Damp|%RH|21.00|85.00|-40.00|21.00|21.00");
    window_->setup().Text1[2]->setText("20.99");
    const QString time = general_date_time_text(monitor_->clock.now());
    monitor_->poll();
    QCOMPARE(values_shown(), "2|Damp|%RH|21.00|20.99|-40.00|21.00|21.00 red");
    const QPalette light = QApplication::palette();
    QApplication::setPalette(QPalette(Qt::darkBlue));
    QCoreApplication::processEvents();
    const QPalette dark = window_->live().Label4[9 + value_label]->palette();
    QVERIFY(contrast(dark.color(QPalette::WindowText), dark.color(QPalette::Window)) >= 4.5);
    QApplication::setPalette(light);
    window_->setup().Text1[2]->setText("21");
    // The user can choose the recorder type while the window is open.
    User::RecorderType = 2;
    monitor_->plug_in(steady(3));
    monitor_->poll();
    QCOMPARE(values_shown(), "2|Damp|%RH|21.00|21|-40.00|21.00|21.00");
    QCOMPARE(window_->live().Label4[9 + last_alarm_label]->text(), time);
    QCOMPARE(row_text(window_->live().MSFlG1->model(), 1), "2|" + time + "|20|21|0");
    QVERIFY(row_text(window_->live().MSFlG1->model(), 2).endsWith("|20|21|22"));
    QCOMPARE(window_->live().MSFlG2->model()->rowCount(), 1);
    QCOMPARE(row_text(window_->live().MSFlG2->model(), 0), "2|" + time + "|DampOut Of Range    ");
    QVERIFY(window_->live().Label4[18]->isVisible() && !window_->live().Label4[27]->isVisible());
  }

  // One missed cycle is tolerated, the second in a row is shown, and the next answer clears it.
  void silence_and_return() {
    QStringList states;
    QStringList stale;
    std::vector<int> pauses;
    for (const char* fault : {"", "silent", "", "silent", "check", "", "silent:first=2"}) {
      monitor_->plug_in(steady(), fault);
      monitor_->clock.sleeps.clear();
      monitor_->poll();
      if (states.size() == 1) pauses = monitor_->clock.sleeps;
      states << monitor_->link_state() + QString::number(monitor_->buffer().LiveCount());
      const bool grey = !window_->live().Label4[value_label]->isEnabled();
      QCOMPARE(window_->live().stale_label->isVisible(), grey);
      if (grey) stale << states.last() + window_->live().stale_label->text();
    }
    QCOMPARE(states, QStringList({"Link Ok1", "Link Ok1", "Link Ok2", "Link Ok2", "Link Error2",
                                  "Link Ok3", "Link Ok4"}));
    // In three silent tries: two in each, one between two, and the test's own at the end.
    QCOMPARE(pauses, std::vector<int>({10, 10, 10, 10, 10, 10, 10, 10, 1000}));
    QCOMPARE(stale.size(), 1);
    QVERIFY(stale[0].endsWith(monitor_->buffer().LiveTimes(1) + '.'));
  }

  // The tab keeps its mark until the newest row is visible in the active window.
  void unseen_alarms() {
    const QTabWidget& tabs = *window_->live().SSTab3;
    QString marks;
    const auto look = [&] { marks += tabs.tabIcon(2).isNull() ? "-" : "!"; };
    window_->setup().Text1[0]->setText("-100");
    monitor_->poll();
    look();
    window_->live().SSTab3->setCurrentIndex(2);
    QTRY_VERIFY(tabs.tabIcon(2).isNull());
    monitor_->poll();
    look();
    monitor_->main.window->show_display();  // covers the sheet
    QCoreApplication::processEvents();
    monitor_->poll();
    look();
    monitor_->main.window->unload_display();
    QTRY_VERIFY(tabs.tabIcon(2).isNull() && window_->parentWidget()->isMaximized());
    // The newest row is below the visible ones.
    monitor_->poll(60);
    window_->live().MSFlG2->scrollToTop();
    monitor_->poll();
    look();
    window_->live().MSFlG2->scrollToBottom();
    QTRY_VERIFY(tabs.tabIcon(2).isNull());
    QCOMPARE(marks, "!-!!");
  }

  void in_the_middle_data() {
    add_rows<Middle>({
        {"a tick in a cycle", "poll", "poll", 1},
        {"Properties Set in a cycle", "poll", "set", 1, 1},
        {"a Properties Set that fails in a cycle", "poll", "fail", 1, 4},
        {"Unlink in a cycle", "poll", "unlink", -1},
        {"closing the window in a cycle", "poll", "shut", -1},
        {"closing the window in a refresh", "refresh", "shut", -1},
        {"Unlink and Link in a cycle", "poll", "unlink realtime", -1},
        {"Exit in a cycle", "poll", "Quit", 0},
        {"a cycle in Properties Set", "set", "poll", 0, 1},
        {"Unlink in Properties Set", "set", "unlink", -1},
        {"Exit in Properties Set", "set", "Quit", 0},
        {"Properties Set in itself", "set", "set", 0, 1},
        {"Exit while Record Set loads the window", "load", "Quit", -1},
        {"Unlink at the question", "ask", "unlink", -1},
        {"Exit at the question", "ask", "Quit", 0},
        {"Exit at an input error", "error", "Quit", 0},
    });
  }
  // Runs a command while the window waits for an answer that does not come. After the command the
  // window sends its request again, so no reading and no setting is lost.
  void in_the_middle() {
    QFETCH(Middle, row);
    const QPointer<frmrealtime> first = window_;
    const auto run = [&](const QString& command) {
      if (command == "poll") return monitor_->poll();
      if (command == "refresh") return first->RefreshFromRecorder();
      if (command == "fail") window_->setup().Text1[1]->setText("warm");
      if (command == "error") window_->setup().Text14->setText("all");
      if (QStringList{"set", "fail", "ask", "error"}.contains(command)) return monitor_->set();
      if (command == "shut" || command == "load") first->close();
      if (command == "load") monitor_->record(true, true, 30);
      if (monitor_->main.window->menu_entry(command)) monitor_->main.run(command);
    };
    window_->live().Timer1->set_enabled(true);
    monitor_->poll();
    monitor_->plug_in(steady(), "silent:first=1");
    const auto act = [&] {
      for (const QString& command : row.command.split(' ')) run(command);
    };
    const int box = row.during == "ask" ? 1 : row.during == "error" ? 2 : 0;
    monitor_->main.messages.meanwhile = [&, shown = 0]() mutable {
      if (++shown == box) act();
    };
    if (box == 0) monitor_->clock.after(300, act);
    run(row.during);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const QStringList sent = monitor_->requests();
    QCOMPARE(sent.filter(QRegularExpression("^05 0f")).size(), row.settings);
    if (box != 0) QCOMPARE(sent.filter(QRegularExpression("^09 40")).size(), 0);
    if (row.during == "load") QCOMPARE(User::OnlineInterval, QTime(0, 0, 5));
    const bool failed = row.command == "fail";
    QCOMPARE(monitor_->messages().filter("Failed").size(), failed ? 1 : 0);
    QCOMPARE(first.isNull(), row.readings < 0);
    if (first) QCOMPARE(monitor_->buffer().LiveCount(), 1 + row.readings);
    // Polling has ended, so the link panel is empty.
    if (!first || failed) QCOMPARE(monitor_->link_state(), "");
    window_ = monitor_->realtime();
    if (row.command == "Quit" && window_) QVERIFY(!window_->live().Timer1->enabled());
  }

  // The second file finds the disk full and goes into the user's documents. The third fits nowhere,
  // because folders of its name are in both places.
  void saves_automatically() {
    const QTemporaryDir home;
    const QByteArray real_home = qgetenv("HOME");
    qputenv("HOME", home.path().toLocal8Bit());
    const QDir folder(monitor_->main.folder.path());
    const QDir documents(home.path() + "/Documents/Corvane");
    const QLabel& saved_label = *window_->live().saved_label;
    // Fills the buffer until one reading is missing, and returns the name of the file to come.
    const auto until_due = [this] {
      const QString time = general_date_time_text(monitor_->clock.now());
      LiveMonitor& live = window_->live().monitor();
      while (live.SaveCounter < 14999) live.add(time, {}, {});
      monitor_->clock.sleep(1000);
      return monitor_->clock.now().addMSecs(25).toString("yyyy-MM-dd HH-mm-ss") + ".qlx";
    };
    window_->setup().Text6->setText("Cold");
    const QString name = until_due();
    monitor_->poll();
    QCOMPARE(folder.entryList({"*.qlx"}), QStringList(name));
    QVERIFY(saved_label.text().endsWith(folder.filePath(name)) && saved_label.isVisible());
    QVERIFY(!documents.exists());
    const QString second = until_due();
    QVERIFY(QFile::link("/dev/full", folder.filePath(second)));
    // Rows in view of a full sheet stay in place while its first rows are removed.
    window_->live().SSTab3->setCurrentWidget(window_->live().MSFlG1);
    QScrollBar* bar = window_->live().MSFlG1->verticalScrollBar();
    QVERIFY(bar->value() > 10000 && bar->value() == bar->maximum());
    bar->setValue(500);
    monitor_->poll();
    QCOMPARE(bar->value(), 499);
    QVERIFY(saved_label.text().endsWith(documents.filePath(second)));
    // The graph's cursor stays on its reading, too.
    window_->live().SSTab3->setCurrentIndex(0);
    GraphSurface& picture = *window_->live().Pic1;
    QTest::mouseClick(&picture, Qt::LeftButton, {}, {picture.width() - 1, 9});
    const QString newest = monitor_->buffer().LiveTimes(14999);
    monitor_->poll(3);
    QCOMPARE(window_->live().Label5->text(), newest);
    QVERIFY(newest == monitor_->buffer().LiveTimes(14996) && window_->live().Line2->isVisible());
    const QString third = until_due();
    QVERIFY(folder.mkdir(third) && documents.mkdir(third));
    monitor_->poll();
    QCOMPARE(saved_label.text(), "Not saved automatically: " + third + " cannot be written");
    qputenv("HOME", real_home);
    monitor_->main.files.choices = {folder.filePath(name)};
    monitor_->main.run("open");
    const Recording& saved = User::recording;
    QString channels;
    for (const auto& texts : saved.ChannelInfo) channels += texts[0] + u' ' + texts[1] + u' ';
    QCOMPARE(saved.Title + saved.RecorderName + channels, "ColdTwo1 2 Air Damp C %RH   ");
    QCOMPARE(saved.SampleCount, 15000);
    QCOMPARE(saved.SampleValues(14999, 1), 21.0F);
    // Its stamps are read as times, though they have the system's general form.
    QCOMPARE(information_rows(saved).at(6).value, "00-00-00");
    const auto choose = when_shown<frmdate>([&](frmdate& dialog) {
      QCOMPARE(dialog.DTP2[0]->text(), "2026-03-01");
      dialog.DTP2[1]->setTime(date_time_of(saved.SampleTimes(14999)).time());
      dialog.DTP2[3]->setTime(QTime(23, 0));
      press(dialog.Command1);
    });
    monitor_->main.run("setdisplaytime");
    QCOMPARE(monitor_->main.window->loaded_display()->ViewStart, 14995);
  }

  // With the slider at its end the graph follows the newest reading. The cursor stays on its own
  // reading and moves out of view with it.
  void graph() {
    GraphSurface& picture = *window_->live().Pic1;
    const auto line_at = [&](double reading) {
      return int(std::lround(reading / 127 * (picture.width() - 1)));
    };
    monitor_->poll(130);
    for (const int x : {line_at(127), line_at(40.3)}) {
      QTest::mouseClick(&picture, Qt::LeftButton, {}, {x, 10});
      QVERIFY(picture.rect().contains(window_->live().Label5->geometry()));
      QVERIFY(picture.rect().contains(window_->live().Label7->geometry()));
    }
    QCOMPARE(window_->live().Label7->x(), window_->live().Line2->x() + 2);
    QCOMPARE(window_->live().Label7->text(), "Air 20.00 C\nDamp 21.00 %RH");
    monitor_->poll(30);
    window_->resize(window_->width() - 100, window_->height());
    QCOMPARE(window_->live().Line2->x(), line_at(10));
    QCOMPARE(window_->live().Label5->text(), monitor_->buffer().LiveTimes(42));
    QCOMPARE(window_->live().Label1->text(), monitor_->buffer().LiveTimes(32));
    QCOMPARE(window_->live().Label2->text(), monitor_->buffer().LiveTimes(159));
    QTest::keyClick(&picture, Qt::Key_Home);
    QCOMPARE(window_->live().Line2->x(), 0);
    monitor_->poll();
    QVERIFY(!window_->live().Line2->isVisible() && !window_->live().Label5->isVisible());
    QTest::keyClick(window_->live().Slider1, Qt::Key_PageUp);
    QCOMPARE(window_->live().Slider1->value(), 90);
    window_->live().Slider1->setValue(0);
    window_->live().cmd[1]->click();
    monitor_->poll();
    QCOMPARE(window_->live().Label2->text(), monitor_->buffer().LiveTimes(101));
  }

  // The dialog shows the last choice, or the defaults after the window has been loaded again. It
  // loads a closed window; the choice then replaces the defaults that the load sets.
  void online_record() {
    const auto interval = [&](bool refresh, bool record, int seconds) {
      monitor_->record(refresh, record, seconds);
      const IntervalTimer& timer = *monitor_->realtime()->live().Timer1;
      return timer.enabled() ? timer.interval() : -timer.interval();
    };
    // Buffer, graph and alarms stay; new rows continue the buffer's count.
    const QAbstractItemModelTester live_tester(window_->live().MSFlG1->model());
    const QAbstractItemModelTester alarm_tester(window_->live().MSFlG2->model());
    window_->setup().Text1[0]->setText("-100");
    monitor_->poll(3);
    QCOMPARE(interval(true, false, 10), 10'000);
    QCOMPARE(window_->live().MSFlG1->model()->rowCount(), 0);
    QCOMPARE(window_->live().MSFlG2->model()->rowCount(), 3);
    monitor_->poll();
    QCOMPARE(row_text(window_->live().MSFlG1->model(), 0, 1), "4");
    QCOMPARE(interval(false, false, 7), -10'000);
    QCOMPARE(monitor_->link_state(), "");
    QCOMPARE(monitor_->record(true, true, 9, false), "0 0 00:00:07");
    QCOMPARE(interval(false, true, 86'399), 86'399'000);
    window_->close();
    QCOMPARE(interval(false, true, 30), 30'000);
    monitor_->realtime()->close();
    // A choice confirmed while the window loads takes effect all the same.
    monitor_->clock.after(100, [this] { monitor_->record(true, false, 20); });
    monitor_->plug_in(steady(), "silent:first=1");
    monitor_->main.window->show_realtime();
    QCOMPARE(monitor_->realtime()->live().Timer1->interval(), 20'000);
    QVERIFY(monitor_->realtime()->live().Timer1->enabled());
    monitor_->realtime()->close();
    monitor_->main.window->show_realtime();
    QCOMPARE(monitor_->record(true, true, 0), "1 1 00:00:05");
    QCOMPARE(monitor_->realtime()->live().Timer1->interval(), 0);
  }
};

const int registered = register_test<TestRealTimeWindow>();

#include "test_frmrealtime.moc"
