#include <QImage>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QRegularExpression>

#include "app/frmmdi.h"
#include "app/icons.h"
#include "app/times.h"
#include "app/user.h"
#include "device/packet.h"
#include "monitor/frmrealtime.h"
#include "support/runner.h"
#include "support/simulated_window.h"

class TestMainWindow : public QObject {
  Q_OBJECT

  // The enabled menu entries, and the enabled toolbar buttons by their index.
  QString enabled() const {
    QStringList names;
    const auto actions = w_->main.window->findChildren<QAction*>();
    for (const QAction* action : actions) {
      const QString& name = action->objectName();
      if (w_->main.window->menu_entry(name) && action->isEnabled()) names << name;
    }
    for (int i = 1; i <= 15; ++i) {
      const QAction* button = w_->main.window->toolbar_button(i);
      if (button->isEnabled() && !button->isSeparator()) names << QString::number(i);
    }
    return names.join(' ');
  }

  std::unique_ptr<SimulatedWindow> w_;

 private Q_SLOTS:
  void init() {
    User::DisplayLimit.fill(7);
    Packet::PacketCounter = 9;
    w_ = std::make_unique<SimulatedWindow>();
  }

  // The save button (2) is always enabled.
  void enabled_commands() {
    frmmdi& window = *w_->main.window;
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
    QVERIFY(User::DisplayLimitAuto[3] == 1 && Packet::PacketCounter == 0 && w_->port.log.isEmpty());
    // Nothing is there yet for these to act on.
    User::recording.SampleCount = 0;
    for (const char* name : {"in", "out", "limit", "setdisplaytime", "close"}) w_->main.run(name);
    QCOMPARE(w_->main.messages.shown, QStringList());
    w_->clock.sleep(61'000);
    QTRY_COMPARE(w_->main.window->Sts1[2]->text(), general_date_time_text(w_->clock.now()));
  }

  // Nobody answers, so the window waits; its frame is closed in the middle of that.
  void a_child_that_waits_can_be_closed() {
    w_->port.open();
    w_->main.run("realtime");
    const QPointer<frmrealtime> child = w_->main.window->loaded_realtime();
    QVERIFY(child && child->isVisible());
    w_->clock.after(300, [&] { qobject_cast<QMdiSubWindow*>(child->parentWidget())->close(); });
    const qint64 before = w_->clock.elapsed();
    child->RefreshFromRecorder();
    QVERIFY2(w_->clock.elapsed() - before < 1100, "a closed window sends no further request");
    QVERIFY(!w_->main.window->loaded_realtime());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!child);
    w_->main.run("realtime");
    QVERIFY(w_->main.window->loaded_realtime());
    w_->main.window->show_display();
    w_->main.window->unload_display();
    QTRY_VERIFY(w_->main.window->loaded_realtime()->parentWidget()->isMaximized());
  }

  void closing_ends_a_wait() {
    w_->port.open();
    w_->clock.after(300, [&] { w_->main.run("Quit"); });
    w_->main.run("realtime");
    QVERIFY(w_->clock.elapsed() < 400 && !w_->main.window->isVisible());
    QCOMPARE(w_->port.log.mid(w_->port.log.indexOf("close")),
             QStringList({"close", "rts 0", "dtr 0"}));
    QVERIFY(!w_->main.window->Timer1->isActive());
    QCOMPARE(w_->main.messages.shown, QStringList());
  }

  void every_input_has_an_accessible_name() {
    w_->main.run("realtime");
    // Parts of Qt's own, and two texts that nobody sees.
    const QRegularExpression inner("^(qt_.*|Text12|Text13)$");
    const auto widgets = w_->main.window->findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
      const auto is = [=](const char* type) { return widget->inherits(type); };
      const bool input = is("QLineEdit") || is("QComboBox") || is("QAbstractSpinBox") ||
                         is("QTabWidget") || is("QProgressBar");
      if (!input || widget->objectName().contains(inner)) continue;
      if (widget->parent()->inherits("QAbstractSpinBox")) continue;
      QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
    }
  }

  // On light and dark windows, at any scale; disabled ones pale.
  void icons_can_be_read() {
    for (const auto& [window, text] : {std::pair(0xF4, 0x11), {0x23, 0xEE}}) {
      QPalette palette(QColor(text, text, text), {}, {}, {}, {}, {}, {}, {},
                       QColor(window, window, window));
      // The largest difference in lightness between the window and the picture laid over it.
      const auto contrast = [&, shade = window](const QIcon& icon, qreal scale, QIcon::Mode mode) {
        const QImage image = icon.pixmap(QSize(24, 24), scale, mode).toImage();
        int largest = image.size() == QSize(24, 24) * scale ? 0 : -1000;
        for (int i = 0; i < image.width() * image.height(); ++i) {
          const QColor pixel = image.pixelColor(i % image.width(), i / image.width());
          largest = std::max(largest, std::abs(qGray(pixel.rgb()) - shade) * pixel.alpha() / 255);
        }
        return largest;
      };
      for (const char* key : {"open", "save", "outputs", "prints", "link", "unlink", "identity",
                              "read", "history", "realtime", "about"}) {
        const QIcon icon = command_icon(key, palette);
        for (const qreal scale : {1.0, 1.25, 2.0}) {
          const int disabled = contrast(icon, scale, QIcon::Disabled);
          const int normal = contrast(icon, scale, QIcon::Normal);
          QVERIFY2(normal > std::max(110, 2 * disabled) && disabled > 30, key);
        }
      }
    }
  }
};

const int registered = register_test<TestMainWindow>();

#include "test_frmmdi.moc"
