#include <QTest>

#include "app/user.h"
#include "print/Frmprint.h"
#include "print/sample_recording.h"
#include "support/dialogs.h"
#include "support/fake_shell.h"
#include "support/runner.h"

class TestPrintSet : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void load();
  void ok_data();
  void ok();
  void choices();
  void no_channel();
  void cancel_data();
  void cancel();
  void printer_set_data();
  void printer_set();

 private:
  std::unique_ptr<FakeShell> shell_;
};

void TestPrintSet::init() {
  shell_ = std::make_unique<FakeShell>();
  User::recording = Recording();
  fill_recording(User::recording, 10, 2);
  User::PrintPages = 7;
  User::PrintGraph = false;
  User::PrintChannels = {9, 9, 9, 9, 9};
}

void TestPrintSet::load() {
  User::recording.ChannelInfo[1][0] = QStringLiteral("In & out");
  const Frmprint dialog(*shell_);
  QCOMPARE(int{User::PrintPages}, 0);
  QCOMPARE(dialog.windowTitle(), "Print Set");
  QCOMPARE(dialog.Combo1->count(), 14);
  QCOMPARE(dialog.Combo1->itemText(13), "100");
  QVERIFY(dialog.Combo1->isEditable());
  QStringList boxes;
  for (const QCheckBox* box : dialog.Check1) {
    boxes << QStringLiteral("%1 %2%3").arg(box->text()).arg(box->isEnabled()).arg(box->isChecked());
  }
  QCOMPARE(boxes, QStringList({"趋势合并打印 11", "4(In && out) 11", "3(Damp) 11", " 00", " 00"}));
  QVERIFY(dialog.Option1[0]->isChecked());
  QVERIFY(!dialog.Option1[1]->isChecked());
  QCOMPARE(shell_->scripted_printer.log, QStringList{"a4"});
}

void TestPrintSet::ok_data() {
  QTest::addColumn<QString>("pages");
  QTest::addColumn<int>("result");
  QTest::addColumn<bool>("closes");
  QTest::newRow("from the list") << "20" << 20 << true;
  QTest::newRow("typed") << "15" << 15 << true;
  QTest::newRow("letters") << "abc" << 1 << true;
  QTest::newRow("empty") << "" << 1 << true;
  QTest::newRow("half to even") << "2.5" << 2 << true;
  QTest::newRow("none") << "0" << 0 << true;
  QTest::newRow("too many for 16 bits") << "32768" << 0 << false;
}

void TestPrintSet::ok() {
  QFETCH(QString, pages);
  QFETCH(int, result);
  QFETCH(bool, closes);
  Frmprint dialog(*shell_);
  dialog.show();
  dialog.Combo1->setEditText(pages);
  press(dialog.Cmd1);
  QCOMPARE(int{User::PrintPages}, result);
  QCOMPARE(!dialog.isVisible(), closes);
}

void TestPrintSet::choices() {
  Frmprint dialog(*shell_);
  dialog.show();
  QTest::mouseClick(dialog.Option1[1], Qt::LeftButton);
  QVERIFY(!dialog.Option1[0]->isChecked());
  dialog.Check1[0]->setChecked(false);
  dialog.Check1[1]->setChecked(false);
  press(dialog.Cmd1);
  QVERIFY(User::PrintGraph);
  QCOMPARE(User::PrintChannels, (std::array<std::int16_t, 5>{0, 0, 1, 0, 0}));
}

void TestPrintSet::no_channel() {
  Frmprint dialog(*shell_);
  dialog.show();
  for (std::size_t i = 1; i < 5; ++i) dialog.Check1[i]->setChecked(false);
  press(dialog.Cmd1);
  QCOMPARE(shell_->scripted_messages.shown, QStringList{"Corvane: Please Select Channel"});
  QVERIFY(dialog.isVisible());
  QCOMPARE(int{User::PrintPages}, 0);
  QCOMPARE(int{User::PrintChannels[0]}, 9);
}

void TestPrintSet::cancel_data() {
  QTest::addColumn<int>("how");
  QTest::newRow("button") << 0;
  QTest::newRow("close box") << 1;
  QTest::newRow("escape") << 2;
}

void TestPrintSet::cancel() {
  QFETCH(int, how);
  Frmprint dialog(*shell_);
  dialog.show();
  dialog.Combo1->setEditText(QStringLiteral("3"));
  if (how == 0) press(dialog.Cmd2);
  if (how == 1) dialog.close();
  if (how == 2) QTest::keyClick(&dialog, Qt::Key_Escape);
  QVERIFY(!dialog.isVisible());
  QCOMPARE(int{User::PrintPages}, 0);
  QCOMPARE(int{User::PrintChannels[1]}, 9);
}

void TestPrintSet::printer_set_data() {
  QTest::addColumn<int>("chosen");
  QTest::addColumn<QString>("fault");
  QTest::addColumn<QStringList>("log");
  QTest::newRow("taken back") << 1 << "" << QStringList{"a4", "setup 2", "orientation 1"};
  QTest::newRow("cancelled") << 0 << "" << QStringList{"a4", "setup 2"};
  QTest::newRow("no printer") << 1 << "none" << QStringList{};
}

void TestPrintSet::printer_set() {
  QFETCH(int, chosen);
  QFETCH(QString, fault);
  QFETCH(QStringList, log);
  ScriptedPrinter& printer = shell_->scripted_printer;
  printer.present = Orientation::landscape;
  printer.fault = fault;
  if (chosen == 1) printer.chosen = Orientation::portrait;
  Frmprint dialog(*shell_);
  dialog.show();
  press(dialog.Cmd3);
  QCOMPARE(printer.log, log);
  QVERIFY(dialog.isVisible());
  QVERIFY(shell_->scripted_messages.shown.isEmpty());
}

const int registered_print_set = register_test<TestPrintSet>();

#include "test_print_set.moc"
