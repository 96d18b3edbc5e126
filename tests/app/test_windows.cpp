#include "app/frmAbout.h"
#include "monitor/Frmwarn.h"
#include "monitor/frmrecord.h"
#include "print/Frmprint.h"
#include "print/preview.h"
#include "support/controls.h"
#include "support/simulated_window.h"
#include "views/frmdate.h"
#include "views/frmdisplay.h"

// Checks every window and dialog with channel names that look like markup or are far too long.
class TestWindows : public QObject {
  Q_OBJECT

  static void check(const QWidget& window) {
    QCoreApplication::sendPostedEvents();
    const QString fault = fault_of_controls(window);
    if (!fault.isEmpty()) qWarning("%s: %s", qPrintable(window.objectName()), qPrintable(fault));
    QCOMPARE(fault, QString());
  }
  // Runs the command and checks its dialog, which `act` then closes.
  template <class Dialog>
  void look_at(const QString& command, const std::function<void(Dialog&)>& act) {
    const auto script = when_shown<Dialog>([&](Dialog& dialog) {
      check(dialog);
      act(dialog);
    });
    w_->main.run(command);
  }

  const QFont usual_font_ = QApplication::font();
  std::unique_ptr<SimulatedWindow> w_;

 private Q_SLOTS:
  void controls_data() {
    QTest::addColumn<int>("points");
    for (const int points : {9, 16}) QTest::addRow("%d points", points) << points;
  }
  void controls() {
    QFETCH(int, points);
    QApplication::setFont(QFont(usual_font_.family(), points));
    w_ = std::make_unique<SimulatedWindow>();
    w_->main.window->resize(points == 9 ? QSize(1180, 820) : QSize(1024, 600));
    w_->plug_in({.readings = 400});
    for (const int field : {3, 5, 7, 9}) User::DeviceTable.set_text(field, 3, "<b>x</b>");
    User::DeviceTable.set_text(7, 3, "<b>x</b>" + QString(" long").repeated(60));
    check(*w_->main.window);
    look_at<frmport>("link", [](frmport& dialog) {
      dialog.Option1[0]->click();
      dialog.Combo1->setCurrentIndex(3);
      press(dialog.Command1);
    });
    Q_EMIT w_->realtime()->live().Timer1->tick();
    w_->realtime()->live().Pic1->setFocus();
    QTest::keyClick(w_->realtime()->live().Pic1, Qt::Key_Home);
    check(*w_->main.window);
    const auto cancel = [](auto& dialog) { dialog.reject(); };
    look_at<frmrecord>("record", cancel);
    look_at<frmhistorytime>("read", [](frmhistorytime& dialog) { press(dialog.Command1); });
    QVERIFY(w_->main.window->loaded_display());
    check(*w_->main.window);
    look_at<Frmwarn>("limit", cancel);
    look_at<frmdate>("setdisplaytime", cancel);
    look_at<frmAbout>("about", cancel);
    for (const std::size_t kind : {0, 1}) {
      const auto look = when_shown<Preview>([&](Preview& preview) {
        check(preview);
        preview.reject();
      });
      look_at<Frmprint>("printview", [kind](Frmprint& dialog) {
        dialog.Option1[kind]->click();
        press(dialog.Cmd1);
      });
    }
  }
  void cleanup() {
    w_.reset();
    QApplication::setFont(usual_font_);
  }
};

const int registered = register_test<TestWindows>();

#include "test_windows.moc"
