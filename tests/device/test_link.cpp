#include <QTest>

#include "app/user.h"
#include "device/frmport.h"
#include "monitor/frmrealtime.h"
#include "support/dialogs.h"
#include "support/main_window.h"
#include "support/runner.h"
#include "support/simulated_port.h"

// The real main window, linking to recorders in software on scripted ports.
class TestLink : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void cleanup();
  void outcomes_data();
  void outcomes();
  void search_goes_through_the_ports_in_order();
  void window_shows_the_recorder();
  void unlink_leaves_the_port_open();
  void commands_during_a_link();
  void window_closed_while_it_loads();
  void closing_the_window_ends_the_search();
  void dialog_takes_the_later_of_two_types();

 private:
  void link(int option, const QString& type, bool ok = true);
  QString state() const;
  int count(const QString& word) const { return int(port_->log.filter(word).size()); }

  std::unique_ptr<ScriptedClock> clock_;
  std::unique_ptr<SimulatedPort> port_;
  std::unique_ptr<MainWindow> main_;
};

namespace {

simulator::Settings two_channels(const char* fault = nullptr) {
  simulator::Settings settings;
  settings.channels = 2;
  settings.mask = 0x03;
  settings.readings = 500;
  if (fault) settings.faults.push_back(*simulator::fault_from_text(QString::fromLatin1(fault)));
  return settings;
}

}  // namespace

void TestLink::init() {
  clock_ = std::make_unique<ScriptedClock>();
  port_ = std::make_unique<SimulatedPort>(*clock_);
  main_ = std::make_unique<MainWindow>(*port_, *clock_);
}

void TestLink::cleanup() {
  main_.reset();
  port_.reset();
}

// Option -1 chooses no port.
void TestLink::link(int option, const QString& type, bool ok) {
  const auto script = when_shown<frmport>([=](frmport& dialog) {
    if (option >= 0) dialog.Option1[static_cast<std::size_t>(option)]->click();
    dialog.Combo1->setCurrentText(type);
    press(ok ? dialog.Command1 : dialog.Command2);
  });
  main_->run(QStringLiteral("link"));
}

QString TestLink::state() const {
  const frmmdi& window = *main_->window;
  const bool linked = window.menu_entry(QStringLiteral("unlink"))->isEnabled();
  return (linked ? QStringLiteral("linked") : QStringLiteral("not linked")) +
         (port_->is_open() ? QStringLiteral(", open") : QStringLiteral(", closed"));
}

void TestLink::outcomes_data() {
  QTest::addColumn<int>("option");
  QTest::addColumn<QString>("type");
  QTest::addColumn<bool>("ok");
  QTest::addColumn<QByteArray>("fault");
  QTest::addColumn<QStringList>("messages");
  QTest::addColumn<QString>("after");
  QTest::addColumn<int>("probes");  // status requests sent, where it did not link
  const QStringList timeout = {QStringLiteral("Warnning: Link Timeout!")};
  QTest::newRow("links") << 0 << "Two" << true << QByteArray() << QStringList() << "linked, open"
                         << -1;
  QTest::newRow("cancelled") << 0 << "Two" << false << QByteArray() << QStringList()
                             << "not linked, closed" << 0;
  QTest::newRow("no port chosen") << -1 << "Two" << true << QByteArray() << QStringList()
                                  << "not linked, closed" << 0;
  QTest::newRow("absent port") << 3 << "Two" << true << QByteArray() << timeout
                               << "not linked, closed" << 0;
  QTest::newRow("type without channels")
      << 0 << "Broken" << true << QByteArray() << timeout << "not linked, closed" << 0;
  QTest::newRow("another channel count")
      << 0 << "Four" << true << QByteArray() << timeout << "not linked, closed" << 3;
  QTest::newRow("third try") << 0 << "Two" << true << QByteArray("silent:first=2") << QStringList()
                             << "linked, open" << -1;
  for (const char* fault : {"silent", "check", "truncated", "garbage"}) {
    QTest::newRow(fault) << 0 << "Two" << true << QByteArray(fault) << timeout
                         << "not linked, closed" << 3;
  }
  QTest::newRow("extra") << 0 << "Two" << true << QByteArray("extra") << QStringList()
                         << "linked, open" << -1;
  // The answer to the first try comes in time for the second.
  QTest::newRow("late") << 0 << "Two" << true << QByteArray("late") << QStringList()
                        << "linked, open" << -1;
  QTest::newRow("unplugged") << 0 << "Two" << true << QByteArray("unplug") << timeout
                             << "not linked, closed" << 1;
}

void TestLink::outcomes() {
  QFETCH(int, option);
  QFETCH(QString, type);
  QFETCH(bool, ok);
  QFETCH(QByteArray, fault);
  QFETCH(int, probes);
  simulator::Recorder recorder(two_channels(fault.isEmpty() ? nullptr : fault.constData()),
                               clock_->now());
  port_->recorders[1] = &recorder;
  link(option, type, ok);
  QTEST(main_->messages.shown, "messages");
  QTEST(state(), "after");
  if (probes >= 0) QCOMPARE(count(QStringLiteral("write 00 00 00")), probes);
  const bool linked = state().startsWith(u"linked");
  QCOMPARE(main_->window->loaded_realtime() != nullptr, linked);
  if (linked) QCOMPARE(int{User::PortChoice}, option);
}

void TestLink::search_goes_through_the_ports_in_order() {
  simulator::Recorder recorder(two_channels(), clock_->now());
  port_->recorders[1] = nullptr;
  port_->recorders[3] = &recorder;
  link(4, QStringLiteral("Two"));
  QCOMPARE(state(), "linked, open");
  QCOMPARE(int{User::PortChoice}, 2);
  QCOMPARE(main_->messages.shown, QStringList());
  QStringList steps = port_->log.filter(QRegularExpression(QStringLiteral("number|open|close")));
  QCOMPARE(steps, QStringList({"number 1", "open", "close", "number 2", "open", "close", "number 3",
                               "open"}));

  // Nobody anywhere: one message, and the last port is left as it is.
  main_->run(QStringLiteral("unlink"));
  port_->close();
  port_->recorders = {{2, nullptr}, {8, nullptr}};
  link(4, QStringLiteral("Two"));
  QCOMPARE(main_->messages.shown, QStringList({"Warnning: Link Timeout!"}));
  QCOMPARE(state(), "not linked, open");
  QCOMPARE(port_->port_number(), 8);
}

void TestLink::window_shows_the_recorder() {
  simulator::Settings settings = two_channels();
  settings.start = QDateTime(QDate(2026, 2, 3), QTime(4, 5, 6), Qt::UTC);
  settings.running = false;
  settings.wrap = true;
  settings.mask = 0x02;
  settings.interval_s = 65536;
  settings.delay_s = 65535;
  settings.all_data = 65535;
  settings.title = QStringLiteral("冷库12345678");
  settings.description = QStringLiteral("<b>shelf</b> 3");
  settings.battery_volts = 2.4;
  settings.limits[1] = {-10.5, 25.0};
  simulator::Recorder recorder(settings, clock_->now());
  port_->recorders[1] = &recorder;
  link(0, QStringLiteral("Two"));
  const frmrealtime* window = main_->window->loaded_realtime();
  QVERIFY(window);
  QCOMPARE(window->Text5->text(), "Two");
  QCOMPARE(window->Text6->text(), QStringLiteral("冷库123456"));
  QCOMPARE(window->Text15->text(), "<b>shelf</b> 3");
  QCOMPARE(window->Text4->text(), "Error");
  QCOMPARE(window->Text2->text(), "Stop");
  QCOMPARE(window->Combo2->currentText(), "Stop!");
  QCOMPARE(window->Combo3->currentText(), "When buffer is full,Wrap buffer!");
  QCOMPARE(window->Text3->text(), "2026-2-3  4:5:6");
  QCOMPARE(window->DTP2->text(), "18:12:15");
  QCOMPARE(window->DTP1->text(), "18:12:16");
  QCOMPARE(window->Text14->text(), "65535");
  QCOMPARE(window->Text11->text(), "500");
  QVERIFY(!window->Check1[0]->isChecked());
  QVERIFY(window->Check1[1]->isChecked());
  QCOMPARE(window->Text1[2]->text(), "25.00");
  QCOMPARE(window->Text1[3]->text(), "-10.50");
  QVERIFY(window->Text1[4]->text().isEmpty());
}

// The next link finds the recorder on the port that is still open, whatever port is chosen.
void TestLink::unlink_leaves_the_port_open() {
  simulator::Recorder recorder(two_channels(), clock_->now());
  port_->recorders = {{1, &recorder}, {2, nullptr}};
  link(0, QStringLiteral("Two"));
  main_->run(QStringLiteral("unlink"));
  QCOMPARE(state(), "not linked, open");
  QVERIFY(!main_->window->loaded_realtime());
  link(1, QStringLiteral("Two"));
  QCOMPARE(state(), "linked, open");
  QCOMPARE(port_->port_number(), 1);

  main_->run(QStringLiteral("unlink"));
  port_->recorders[1] = nullptr;
  link(1, QStringLiteral("Two"));
  QCOMPARE(main_->messages.shown, QStringList({"Warnning: Link Timeout!"}));
  QCOMPARE(state(), "not linked, closed");
}

// While nobody has answered yet Link can be pressed again, and View can open the window.
void TestLink::commands_during_a_link() {
  simulator::Recorder recorder(two_channels("silent:first=2"), clock_->now());
  port_->recorders[1] = &recorder;
  clock_->after(500, [&] { main_->run(QStringLiteral("link")); });
  clock_->after(900, [&] { main_->run(QStringLiteral("realtime")); });
  link(0, QStringLiteral("Two"));
  QCOMPARE(main_->messages.shown, QStringList());
  QCOMPARE(state(), "linked, open");
  QCOMPARE(main_->window->loaded_realtime()->Text11->text(), "500");
}

// Unlinked before the window has read the recorder: nothing is left to work on.
void TestLink::window_closed_while_it_loads() {
  simulator::Recorder recorder(two_channels("silent:command=08"), clock_->now());
  port_->recorders[1] = &recorder;
  clock_->after(700, [&] {
    QVERIFY(!main_->window->loaded_realtime());
    main_->run(QStringLiteral("read"));  // nobody knows the channels yet
    main_->run(QStringLiteral("unlink"));
  });
  link(0, QStringLiteral("Two"));
  QCOMPARE(main_->messages.shown, QStringList());
  QCOMPARE(state(), "not linked, open");
  QCOMPARE(main_->window->Sts1[0]->text(), QString());
}

void TestLink::closing_the_window_ends_the_search() {
  port_->recorders = {{1, nullptr}, {2, nullptr}, {3, nullptr}};
  clock_->after(1500, [&] { main_->window->close(); });
  link(4, QStringLiteral("Two"));
  QVERIFY(clock_->elapsed() < 1600);
  QCOMPARE(main_->messages.shown, QStringList());
  QVERIFY(!port_->is_open());
}

void TestLink::dialog_takes_the_later_of_two_types() {
  User::DeviceTable.set_text(0, 3, QStringLiteral("Two"));
  link(2, QStringLiteral("Two"), true);
  QCOMPARE(int{User::RecorderType}, 3);
  link(2, QStringLiteral("One"), false);
  QCOMPARE(int{User::RecorderType}, 3);
  QCOMPARE(int{User::PortChoice}, -1);
}

namespace {
const int registered = register_test<TestLink>();
}

#include "test_link.moc"
