#include <QMdiSubWindow>
#include <QMenuBar>

#include "app/frmmdi.h"
#include "app/times.h"
#include "app/user.h"
#include "device/packet.h"
#include "monitor/frmrealtime.h"
#include "support/main_window.h"
#include "support/runner.h"

class TestMainWindow : public QObject {
  Q_OBJECT

  // The enabled menu entries, and the enabled toolbar buttons by their index.
  QString enabled() const {
    QStringList names;
    const auto menus = main_->window->menuBar()->actions();
    for (const QAction* top : menus) {
      const auto actions = top->menu()->actions();
      for (const QAction* action : actions) {
        if (!action->isSeparator() && action->isEnabled()) names << action->objectName();
      }
    }
    for (int i = 1; i <= 15; ++i) {
      const QAction* button = main_->window->toolbar_button(i);
      if (!button->isSeparator() && button->isEnabled()) names << QString::number(i);
    }
    return names.join(' ');
  }

  std::unique_ptr<ScriptedPort> port_;
  std::unique_ptr<ScriptedClock> clock_;
  std::unique_ptr<MainWindow> main_;

 private Q_SLOTS:
  void init() {
    port_ = std::make_unique<ScriptedPort>();
    clock_ = std::make_unique<ScriptedClock>();
    User::DisplayLimit.fill(7);
    Packet::PacketCounter = 9;
    main_ = std::make_unique<MainWindow>(*port_, *clock_);
  }
  void cleanup() { main_.reset(); }

  // The save button (2) is always enabled.
  void enabled_commands() {
    frmmdi& window = *main_->window;
    QCOMPARE(enabled(),
             "open close Quit link in out limit setdisplaytime realtime history helpID about "
             "1 2 7 12 13 15");
    window.enable_data_commands(true);
    QCOMPARE(enabled(),
             "open close save outputs printview printdata Quit link in out limit setdisplaytime "
             "realtime history helpID about 1 2 3 4 7 12 13 15");
    window.set_linked_commands(true);
    QCOMPARE(enabled(),
             "open close save outputs printview printdata Quit unlink record read in out limit "
             "setdisplaytime realtime history helpID about 1 2 3 4 8 9 10 12 13 15");
    window.enable_data_commands(false);
    QCOMPARE(enabled(),
             "open close Quit unlink record read in out realtime helpID about 1 2 8 9 10 13 15");
    window.set_linked_commands(false);
    QCOMPARE(enabled(), "open close Quit link in out helpID about 1 2 7 15");
  }

  void start_state() {
    QCOMPARE(User::DisplayLimit, (std::array<float, 9>{120, -40, 120, -40, 120, -40, 120, -40, 7}));
    QCOMPARE(User::DisplayLimitAuto[3], std::int16_t{1});
    QCOMPARE(int{Packet::PacketCounter}, 0);
    QCOMPARE(int{User::DeviceTable.DeviceCount}, 5);
    QVERIFY(port_->log.isEmpty());
    // Nothing is there yet for these to act on.
    User::recording.SampleCount = 0;
    for (const char* name : {"in", "out", "limit", "setdisplaytime", "close"}) main_->run(name);
    QCOMPARE(main_->messages.shown, QStringList());
    QCOMPARE(main_->window->Timer1->interval(), 1000);
    clock_->sleep(61'000);
    QTRY_COMPARE(main_->window->Sts1[2]->text(), general_date_time_text(clock_->now()));
  }

  // Nobody answers, so the window waits; its frame is closed in the middle of that.
  void a_child_that_waits_can_be_closed() {
    port_->open();
    main_->run("realtime");
    const QPointer<frmrealtime> child = main_->window->loaded_realtime();
    QVERIFY(child && child->isVisible());
    clock_->after(300, [&] { qobject_cast<QMdiSubWindow*>(child->parentWidget())->close(); });
    const qint64 before = clock_->elapsed();
    child->RefreshFromRecorder();
    QVERIFY2(clock_->elapsed() - before < 1100, "a closed window sends no further request");
    QVERIFY(!main_->window->loaded_realtime());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!child);
    main_->run("realtime");
    QVERIFY(main_->window->loaded_realtime());
  }

  void closing_ends_a_wait() {
    port_->open();
    clock_->after(300, [&] { main_->window->close(); });
    main_->run("realtime");
    QVERIFY(clock_->elapsed() < 400);
    QVERIFY(!main_->window->isVisible() && !port_->is_open());
  }

  void shut_down_order() {
    port_->open();
    main_->run("realtime");
    main_->window->loaded_realtime()->Timer1->set_enabled(true);
    port_->log.clear();
    main_->run("Quit");
    QCOMPARE(port_->log, QStringList({"close", "rts 0", "dtr 0"}));
    QVERIFY(!main_->window->Timer1->isActive());
    QVERIFY(!main_->window->loaded_realtime()->Timer1->enabled());
    QCOMPARE(main_->messages.shown, QStringList());
  }

  void the_window_that_is_left_stays_maximised() {
    main_->window->show_realtime();
    main_->window->show_display();
    main_->window->unload_display();
    QTRY_VERIFY(main_->window->loaded_realtime()->parentWidget()->isMaximized());
  }

  void every_input_has_an_accessible_name() {
    main_->run("realtime");
    const auto widgets = main_->window->findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
      const QString name = widget->objectName();
      const auto is = [=](const char* type) { return widget->inherits(type); };
      const bool input = is("QLineEdit") || is("QComboBox") || is("QAbstractSpinBox") ||
                         is("QTabWidget") || is("QProgressBar");
      // Parts of Qt's own, and two texts that nobody sees.
      const bool inner = name.startsWith("qt_") || widget->parent()->inherits("QAbstractSpinBox");
      if (!input || inner || name == u"Text12" || name == u"Text13") continue;
      QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(name));
    }
  }
};

const int registered = register_test<TestMainWindow>();

#include "test_frmmdi.moc"
