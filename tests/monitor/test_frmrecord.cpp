#include "monitor/frmrecord.h"
#include "monitor/monitor_window.h"
#include "monitor/time_picker.h"
#include "support/dialogs.h"
#include "support/runner.h"

class TestRecordDialog : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void shows_the_last_choice();
  void accept_data();
  void accept();
  void cancel_changes_nothing();
  void live_sheet_is_cleared();
  void loads_the_window();
  void exit_while_the_window_loads();

 private:
  static void choose(MonitorWindow& monitor, bool refresh, bool record, int seconds);
};

// Record Set with these settings and "Ok".
void TestRecordDialog::choose(MonitorWindow& monitor, bool refresh, bool record, int seconds) {
  const auto script = when_shown<frmrecord>([=](frmrecord& dialog) {
    dialog.Check1[1]->setChecked(refresh);
    dialog.Check1[2]->setChecked(record);
    set_picked_seconds(*dialog.DTP1, seconds);
    press(dialog.Command1);
  });
  monitor.main.run(QStringLiteral("record"));
}

void TestRecordDialog::shows_the_last_choice() {
  MonitorWindow monitor;
  QStringList shown;
  const auto look = [&] {
    const auto script = when_shown<frmrecord>([&](frmrecord& dialog) {
      QCOMPARE(dialog.windowTitle(), "Online Record");
      shown << QStringLiteral("%1 %2 %3")
                   .arg(dialog.Check1[1]->isChecked())
                   .arg(dialog.Check1[2]->isChecked())
                   .arg(picked_seconds(*dialog.DTP1));
      press(dialog.Command2);
    });
    monitor.main.run(QStringLiteral("record"));
  };
  look();
  choose(monitor, false, false, 70);
  look();
  monitor.main.run(QStringLiteral("unlink"));
  monitor.main.window->show_realtime();
  look();
  QCOMPARE(shown, QStringList({"1 1 5", "0 0 70", "1 1 5"}));
}

void TestRecordDialog::accept_data() {
  QTest::addColumn<bool>("refresh");
  QTest::addColumn<bool>("record");
  QTest::addColumn<int>("seconds");
  QTest::addColumn<bool>("enabled");
  QTest::addColumn<int>("interval");
  QTest::newRow("refresh alone") << true << false << 10 << true << 10'000;
  QTest::newRow("record alone") << false << true << 1 << true << 1'000;
  QTest::newRow("neither") << false << false << 10 << false << 5'000;
  QTest::newRow("longer than 65 s") << true << true << 66 << true << 66'000;
  QTest::newRow("a day less a second") << true << true << 86'399 << true << 86'399'000;
  QTest::newRow("no interval") << true << true << 0 << true << 0;
}

void TestRecordDialog::accept() {
  QFETCH(bool, refresh);
  QFETCH(bool, record);
  QFETCH(int, seconds);
  MonitorWindow monitor;
  monitor.window().Timer1->set_enabled(!refresh);
  choose(monitor, refresh, record, seconds);
  QTEST(monitor.window().Timer1->enabled(), "enabled");
  QTEST(monitor.window().Timer1->interval(), "interval");
  QCOMPARE(User::OnlineRefresh, refresh);
  QCOMPARE(User::OnlineRecord, record);
  QCOMPARE(QTime(0, 0).secsTo(User::OnlineInterval), seconds);
}

void TestRecordDialog::cancel_changes_nothing() {
  MonitorWindow monitor;
  const auto script = when_shown<frmrecord>([](frmrecord& dialog) {
    dialog.Check1[1]->setChecked(false);
    set_picked_seconds(*dialog.DTP1, 9);
    dialog.reject();
  });
  monitor.main.run(QStringLiteral("record"));
  QVERIFY(User::OnlineRefresh);
  QCOMPARE(User::OnlineInterval, QTime(0, 0, 5));
  QVERIFY(!monitor.window().Timer1->enabled());
}

// Buffer, graph and alarms stay; new rows go on from the buffer's count.
void TestRecordDialog::live_sheet_is_cleared() {
  MonitorWindow monitor;
  frmrealtime& window = monitor.window();
  window.Text1[0]->setText(QStringLiteral("-100"));
  for (int i = 0; i < 3; ++i) monitor.tick();
  const QString last_shown = window.Label2->text();
  choose(monitor, true, true, 5);
  QCOMPARE(window.MSFlG1->model()->rowCount(), 0);
  QCOMPARE(window.MSFlG1->model()->columnCount(), 6);
  QVERIFY(window.MSFlG1->columnWidth(1) >= 2000 / 15);
  QCOMPARE(window.MSFlG2->model()->rowCount(), 3);
  QCOMPARE(window.live().buffer.LiveCount(), 3);
  QCOMPARE(window.Label2->text(), last_shown);
  monitor.tick();
  QCOMPARE(window.MSFlG1->model()->index(0, 0).data().toString(), "4");
}

// The window was closed by its box. Loading it sets the defaults; the choice comes after that.
void TestRecordDialog::loads_the_window() {
  MonitorWindow monitor;
  monitor.window().close();
  QVERIFY(!monitor.main.window->loaded_realtime());
  choose(monitor, false, true, 30);
  QVERIFY(monitor.main.window->loaded_realtime());
  QVERIFY(monitor.window().Timer1->enabled());
  QCOMPARE(monitor.window().Timer1->interval(), 30'000);
  QVERIFY(!User::OnlineRefresh);
  QCOMPARE(User::OnlineInterval, QTime(0, 0, 30));
  monitor.tick();
  QCOMPARE(monitor.link_state(), "Link Ok");
}

void TestRecordDialog::exit_while_the_window_loads() {
  MonitorWindow monitor;
  monitor.window().close();
  monitor.attach({}, "silent");
  monitor.clock.after(300, [&] { monitor.main.window->close(); });
  choose(monitor, true, true, 30);
  QVERIFY(!monitor.main.window->isVisible());
}

namespace {
const int registered = register_test<TestRecordDialog>();
}

#include "test_frmrecord.moc"
