#include "acquire/frmhistorytime.h"
#include "app/frmAbout.h"
#include "app/user.h"
#include "device/frmport.h"
#include "monitor/Frmwarn.h"
#include "monitor/frmrealtime.h"
#include "monitor/frmrecord.h"
#include "monitor/live_pane.h"
#include "monitor/setup_pane.h"
#include "print/Frmprint.h"
#include "print/preview.h"
#include "support/controls.h"
#include "support/dialogs.h"
#include "support/runner.h"
#include "support/simulated_window.h"
#include "views/frmdate.h"
#include "views/frmdisplay.h"

// Every window and dialog once, with channels whose names look like markup.
class TestWindows : public QObject {
  Q_OBJECT

  static void check(const QWidget& window) {
    QCoreApplication::sendPostedEvents();
    const QString fault = fault_of_controls(window);
    if (!fault.isEmpty()) qWarning("%s: %s", qPrintable(window.objectName()), qPrintable(fault));
    QCOMPARE(fault, QString());
  }
  // Runs the command and looks at its dialog, which `act` then ends.
  template <class Dialog>
  void look_at(const QString& command, const std::function<void(Dialog&)>& act) {
    const auto script = when_shown<Dialog>([&](Dialog& dialog) {
      check(dialog);
      act(dialog);
    });
    w_->main.run(command);
  }

  std::unique_ptr<SimulatedWindow> w_;

 private Q_SLOTS:
  void controls() {
    w_ = std::make_unique<SimulatedWindow>();
    w_->main.window->resize(1180, 820);
    w_->plug_in({.readings = 400});
    for (const int field : {3, 5, 7, 9}) User::DeviceTable.set_text(field, 3, "<b>x</b>");
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
  void cleanup() { w_.reset(); }
};

const int registered = register_test<TestWindows>();

#include "test_windows.moc"
