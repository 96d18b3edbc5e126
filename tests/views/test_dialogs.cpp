#include <QTest>

#include "app/user.h"
#include "monitor/Frmwarn.h"
#include "support/dialogs.h"
#include "support/runner.h"
#include "support/scripted.h"
#include "views/filled_recording.h"
#include "views/frmdate.h"

class TestViewDialogs : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void cleanup() { User::recording = Recording(); }
  void limits_as_shown_are_stored();
  void automatic_greys_out_and_still_stores();
  void refused_limits_data();
  void refused_limits();
  void cancelled_limits();
  void pickers_are_limited();
  void start_after_end();
  void equal_times();
  void start_beyond_the_last_sample();
  void other_time_stamps();
  void clock_set_back();
};

void TestViewDialogs::init() {
  User::reset_display_limits();
  fill(User::recording, 3000, 1);
  User::recording.ViewCount = 3000;
}

void TestViewDialogs::limits_as_shown_are_stored() {
  ScriptedMessages messages;
  User::DisplayLimit[0] = 19.126F;
  User::DisplayLimitAuto[0] = 0;
  Frmwarn dialog(messages, nullptr);
  QCOMPARE(dialog.Text1[0]->text(), "19.13");
  QCOMPARE(dialog.Text1[1]->text(), "-40.00");
  QVERIFY(dialog.Text1[0]->isEnabled() && !dialog.Text1[2]->isEnabled());
  QCOMPARE(dialog.Command1->text(), "Ok");
  press(dialog.Command1);
  QCOMPARE(dialog.result(), int{QDialog::Accepted});
  QCOMPARE(User::DisplayLimit[0], 19.13F);
  QCOMPARE(int{User::DisplayLimitAuto[0]}, 0);
  QCOMPARE(int{User::DisplayLimitAuto[3]}, 1);
}

void TestViewDialogs::automatic_greys_out_and_still_stores() {
  ScriptedMessages messages;
  Frmwarn dialog(messages, nullptr);
  dialog.Check1[2]->setChecked(false);
  QVERIFY(dialog.Text1[4]->isEnabled() && dialog.Text1[5]->isEnabled());
  // An upper limit below the lower one is not looked at.
  dialog.Text1[4]->setText(QStringLiteral("-7.5"));
  dialog.Text1[5]->setText(QStringLiteral("1e2"));
  dialog.Check1[2]->setChecked(true);
  QVERIFY(!dialog.Text1[4]->isEnabled() && !dialog.Text1[5]->isEnabled());
  press(dialog.Command1);
  QCOMPARE(User::DisplayLimit[4], -7.5F);
  QCOMPARE(User::DisplayLimit[5], 100.0F);
  QCOMPARE(int{User::DisplayLimitAuto[2]}, 1);
}

void TestViewDialogs::refused_limits_data() {
  QTest::addColumn<QString>("text");
  QTest::newRow("empty") << "";
  QTest::newRow("word") << "high";
  QTest::newRow("too large") << "1e39";
}

// Also where the text stands in a box that is greyed out.
void TestViewDialogs::refused_limits() {
  QFETCH(QString, text);
  ScriptedMessages messages;
  Frmwarn dialog(messages, nullptr);
  dialog.show();
  dialog.Text1[0]->setText(QStringLiteral("50"));
  dialog.Text1[5]->setText(text);
  dialog.Check1[0]->setChecked(false);
  press(dialog.Command1);
  QCOMPARE(messages.shown, QStringList({"Corvane: Input Error,Please Retry"}));
  QVERIFY(dialog.isVisible());
  QCOMPARE(dialog.Text1[0]->text(), "50");
  QCOMPARE(dialog.Text1[5]->text(), text);
  QCOMPARE(dialog.SSTab1->currentIndex(), 2);
  QCOMPARE(User::DisplayLimit[0], 120.0F);
  QCOMPARE(int{User::DisplayLimitAuto[0]}, 1);
}

void TestViewDialogs::cancelled_limits() {
  ScriptedMessages messages;
  Frmwarn dialog(messages, nullptr);
  dialog.Text1[0]->setText(QStringLiteral("50"));
  press(dialog.Command2);
  QCOMPARE(User::DisplayLimit[0], 120.0F);
}

namespace {

// What "Ok" hands to the graph.
struct Shown {
  std::vector<int> first;
  std::function<void(std::int32_t)> show = [this](std::int32_t sample) { first.push_back(sample); };
};

}  // namespace

void TestViewDialogs::pickers_are_limited() {
  ScriptedMessages messages;
  Shown shown;
  User::recording.ViewCount = 100;
  frmdate dialog(messages, 2000, shown.show, nullptr);
  QCOMPARE(dialog.windowTitle(), "Select Date Segment");
  for (const std::size_t date : {0, 2}) {
    QCOMPARE(dialog.DTP2[date]->minimumDate(), QDate(2026, 3, 1));
    QCOMPARE(dialog.DTP2[date]->maximumDate(), QDate(2026, 3, 3));
  }
  QCOMPARE(dialog.DTP2[0]->text(), "2026-03-02");
  QCOMPARE(dialog.DTP2[1]->text(), "17:20:00");
  QCOMPARE(dialog.DTP2[3]->text(), "18:59:00");
  dialog.DTP2[3]->setTime(QTime(23, 59, 59));
  QCOMPARE(dialog.DTP2[3]->text(), "23:59:59");
  press(dialog.Command2);
  QVERIFY(shown.first.empty());
  QCOMPARE(User::recording.ViewCount, 100);
}

void TestViewDialogs::start_after_end() {
  ScriptedMessages messages;
  Shown shown;
  frmdate dialog(messages, 0, shown.show, nullptr);
  dialog.show();
  dialog.DTP2[2]->setDate(QDate(2026, 3, 1));
  dialog.DTP2[3]->setTime(QTime(7, 59, 59));
  press(dialog.Command1);
  QCOMPARE(messages.shown, QStringList({"Corvane: Start Time>End Time"}));
  QVERIFY(dialog.isVisible());
  QCOMPARE(dialog.DTP2[3]->text(), "07:59:59");
  QVERIFY(shown.first.empty());
  QCOMPARE(User::recording.ViewCount, 3000);
}

void TestViewDialogs::equal_times() {
  ScriptedMessages messages;
  Shown shown;
  frmdate dialog(messages, 0, shown.show, nullptr);
  for (const std::size_t time : {1, 3}) dialog.DTP2[time]->setTime(QTime(9, 0));
  for (const std::size_t date : {0, 2}) dialog.DTP2[date]->setDate(QDate(2026, 3, 2));
  press(dialog.Command1);
  QCOMPARE(shown.first, std::vector<int>({1500}));
  QCOMPARE(User::recording.ViewCount, 5);
  QCOMPARE(dialog.result(), int{QDialog::Accepted});
}

void TestViewDialogs::start_beyond_the_last_sample() {
  ScriptedMessages messages;
  Shown shown;
  frmdate dialog(messages, 0, shown.show, nullptr);
  for (const std::size_t date : {0, 2}) dialog.DTP2[date]->setDate(QDate(2026, 3, 3));
  for (const std::size_t time : {1, 3}) dialog.DTP2[time]->setTime(QTime(23, 0));
  press(dialog.Command1);
  QCOMPARE(shown.first, std::vector<int>({2999}));
  QCOMPARE(User::recording.ViewCount, 5);
}

void TestViewDialogs::other_time_stamps() {
  ScriptedMessages messages;
  Shown shown;
  User::recording.SampleTimes(2999) = QStringLiteral("3/3/26 9:59:00 AM");
  frmdate dialog(messages, 0, shown.show, nullptr);
  // What can be read is taken over, the rest left out.
  QCOMPARE(dialog.DTP2[0]->minimumDate(), QDate(2026, 3, 1));
  QCOMPARE(dialog.DTP2[0]->text(), "2026-03-01");
  QCOMPARE(dialog.DTP2[1]->text(), "08:00:00");
  QVERIFY(dialog.DTP2[2]->maximumDate() > QDate(2026, 3, 3));
  dialog.DTP2[3]->setTime(QTime(9, 0));
  press(dialog.Command1);
  QVERIFY(messages.shown.isEmpty());
  QCOMPARE(shown.first, std::vector<int>({0}));
}

void TestViewDialogs::clock_set_back() {
  ScriptedMessages messages;
  Shown shown;
  User::recording.SampleTimes(2999) = QStringLiteral("2025-12-31 23:59:59");
  frmdate dialog(messages, 0, shown.show, nullptr);
  QCOMPARE(dialog.DTP2[0]->minimumDate(), QDate(2026, 3, 1));
  QVERIFY(dialog.DTP2[0]->maximumDate() > QDate(2026, 3, 1));
}

const int registered = register_test<TestViewDialogs>();
#include "test_dialogs.moc"
