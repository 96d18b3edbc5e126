#include <QMdiSubWindow>
#include <QMenuBar>
#include <QTest>

#include "app/times.h"
#include "app/user.h"
#include "device/packet.h"
#include "monitor/frmrealtime.h"
#include "support/main_window.h"
#include "support/runner.h"

class TestMainWindow : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void cleanup();
  void start_state();
  void menus_are_complete();
  void toolbar_is_complete();
  void data_commands_leave_the_save_button();
  void linked_commands();
  void clock_panel();
  void commands_without_a_window_are_harmless();
  void a_child_that_waits_can_be_closed();
  void closing_ends_a_wait();
  void shut_down_order();
  void the_window_that_is_left_stays_maximised();
  void every_input_has_an_accessible_name();

 private:
  QStringList enabled_entries() const;

  std::unique_ptr<ScriptedPort> port_;
  std::unique_ptr<ScriptedClock> clock_;
  std::unique_ptr<MainWindow> main_;
};

void TestMainWindow::init() {
  port_ = std::make_unique<ScriptedPort>();
  clock_ = std::make_unique<ScriptedClock>();
  User::DisplayLimit.fill(7);
  Packet::PacketCounter = 9;
  main_ = std::make_unique<MainWindow>(*port_, *clock_);
}

void TestMainWindow::cleanup() {
  main_.reset();
}

QStringList TestMainWindow::enabled_entries() const {
  QStringList names;
  const auto menus = main_->window->menuBar()->actions();
  for (const QAction* top : menus) {
    const auto actions = top->menu()->actions();
    for (const QAction* action : actions) {
      if (!action->isSeparator() && action->isEnabled()) names << action->objectName();
    }
  }
  names.sort();
  return names;
}

void TestMainWindow::start_state() {
  QCOMPARE(enabled_entries(),
           QStringList({"Quit", "about", "close", "helpID", "history", "in", "limit", "link",
                        "open", "out", "realtime", "setdisplaytime"}));
  QCOMPARE(main_->window->windowTitle(), "Corvane");
  QCOMPARE(User::DisplayLimit[0], 120.0F);
  QCOMPARE(User::DisplayLimit[7], -40.0F);
  QCOMPARE(User::DisplayLimitAuto[3], std::int16_t{1});
  QCOMPARE(int{Packet::PacketCounter}, 0);
  QCOMPARE(int{User::DeviceTable.DeviceCount}, 5);
  QVERIFY(port_->log.isEmpty());
}

void TestMainWindow::menus_are_complete() {
  QStringList lines;
  const auto menus = main_->window->menuBar()->actions();
  for (const QAction* top : menus) {
    QStringList captions = {top->text()};
    const auto actions = top->menu()->actions();
    for (const QAction* action : actions) {
      captions << (action->isSeparator() ? QStringLiteral("-")
                                         : action->text() + action->shortcut().toString());
    }
    lines << captions.join(u' ');
  }
  QCOMPARE(lines,
           QStringList({"File(&F) Open(&O)...Ctrl+O Close(&C) - Save(&S)...Ctrl+S Save As(&A) - "
                        "Print View(&V) Print(&P)Ctrl+P - Exit(&Q)Ctrl+Q",
                        "Tool(&C) Link(&L)Ctrl+L Unlink(&N) Record Set(&S) Read Data(&R)Ctrl+R",
                        "Historical Data(&D) Zoom In(&I) Zoom Out(&O) - Display Limit Set(&S) "
                        "Display Time Set(&T)",
                        "View(&V) Real-time Data(&R) Historical Data(&D)",
                        "Help(&H) Contents(&H) - About(&A)..."}));
}

void TestMainWindow::toolbar_is_complete() {
  QStringList buttons;
  const auto actions = main_->window->Tool1->actions();
  for (const QAction* action : actions) {
    if (action->isSeparator()) {
      buttons << QStringLiteral("-");
      continue;
    }
    QCOMPARE(action->toolTip(), action->text());
    buttons << action->data().toString() + (action->isEnabled() ? u'+' : u'?') + action->text();
  }
  QCOMPARE(
      buttons,
      QStringList({"open+Open File", "save+Save File", "outputs?Save As", "prints?Print", "-", "-",
                   "link+Link", "unlink?Unlink", "identity?Record Set", "read?Read Data", "-",
                   "history+Historical Data", "realtime+Real-time Data", "-", "about+About"}));
}

void TestMainWindow::data_commands_leave_the_save_button() {
  frmmdi& window = *main_->window;
  for (const bool on : {false, true, false}) {
    window.enable_data_commands(on);
    for (const char* name :
         {"save", "outputs", "printview", "printdata", "limit", "setdisplaytime", "history"}) {
      QCOMPARE(window.menu_entry(QString::fromLatin1(name))->isEnabled(), on);
    }
    for (const int index : {3, 4, 12}) QCOMPARE(window.toolbar_button(index)->isEnabled(), on);
    QVERIFY(window.toolbar_button(2)->isEnabled());
  }
}

void TestMainWindow::linked_commands() {
  frmmdi& window = *main_->window;
  for (const bool linked : {true, false}) {
    window.set_linked_commands(linked);
    QCOMPARE(window.menu_entry(QStringLiteral("link"))->isEnabled(), !linked);
    QCOMPARE(window.toolbar_button(7)->isEnabled(), !linked);
    for (const char* name : {"realtime", "record", "unlink", "read"}) {
      QCOMPARE(window.menu_entry(QString::fromLatin1(name))->isEnabled(), linked);
    }
    for (const int index : {8, 9, 10, 13})
      QCOMPARE(window.toolbar_button(index)->isEnabled(), linked);
  }
}

void TestMainWindow::clock_panel() {
  QCOMPARE(main_->window->Timer1->interval(), 1000);
  QVERIFY(main_->window->Timer1->isActive());
  clock_->sleep(61'000);
  QTRY_COMPARE(main_->window->Sts1[2]->text(), general_date_time_text(clock_->now()));
}

void TestMainWindow::commands_without_a_window_are_harmless() {
  User::recording.SampleCount = 0;
  for (const char* name : {"in", "out", "limit", "setdisplaytime", "close"}) {
    main_->run(QString::fromLatin1(name));
  }
  QCOMPARE(main_->messages.shown, QStringList());
}

// Nobody answers, so the window waits; its frame is closed in the middle of that.
void TestMainWindow::a_child_that_waits_can_be_closed() {
  port_->open();
  main_->run(QStringLiteral("realtime"));
  const QPointer<frmrealtime> child = main_->window->loaded_realtime();
  QVERIFY(child);
  QVERIFY(child->isVisible());
  clock_->after(300, [&] { qobject_cast<QMdiSubWindow*>(child->parentWidget())->close(); });
  const qint64 before = clock_->elapsed();
  child->RefreshFromRecorder();
  QVERIFY2(clock_->elapsed() - before < 1100, "a closed window sends no further request");
  QVERIFY(!main_->window->loaded_realtime());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QVERIFY(!child);
  main_->run(QStringLiteral("realtime"));
  QVERIFY(main_->window->loaded_realtime());
}

void TestMainWindow::closing_ends_a_wait() {
  port_->open();
  clock_->after(300, [&] { main_->window->close(); });
  main_->run(QStringLiteral("realtime"));
  QVERIFY(clock_->elapsed() < 400);
  QVERIFY(!main_->window->isVisible());
  QVERIFY(!port_->is_open());
}

void TestMainWindow::shut_down_order() {
  port_->open();
  main_->run(QStringLiteral("realtime"));
  main_->window->loaded_realtime()->Timer1->set_enabled(true);
  port_->log.clear();
  main_->run(QStringLiteral("Quit"));
  QCOMPARE(port_->log, QStringList({"close", "rts 0", "dtr 0"}));
  QVERIFY(!main_->window->Timer1->isActive());
  QVERIFY(!main_->window->loaded_realtime()->Timer1->enabled());
  QCOMPARE(main_->messages.shown, QStringList());
}

void TestMainWindow::the_window_that_is_left_stays_maximised() {
  main_->window->show_realtime();
  main_->window->show_display();
  main_->window->unload_display();
  QTRY_VERIFY(main_->window->loaded_realtime()->parentWidget()->isMaximized());
}

void TestMainWindow::every_input_has_an_accessible_name() {
  main_->run(QStringLiteral("realtime"));
  const auto inputs = main_->window->findChildren<QWidget*>();
  for (const QWidget* input : inputs) {
    const bool typed = input->inherits("QLineEdit") || input->inherits("QComboBox") ||
                       input->inherits("QAbstractSpinBox") || input->inherits("QTabWidget") ||
                       input->inherits("QProgressBar");
    if (!typed || input->objectName().startsWith(u"qt_") ||
        input->parent()->inherits("QAbstractSpinBox")) {
      continue;
    }
    const bool hidden_role = input->objectName() == u"Text12" || input->objectName() == u"Text13";
    QVERIFY2(hidden_role || !input->accessibleName().isEmpty(), qPrintable(input->objectName()));
  }
}

namespace {
const int registered = register_test<TestMainWindow>();
}

#include "test_frmmdi.moc"
