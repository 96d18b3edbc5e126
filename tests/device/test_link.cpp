#include "app/user.h"
#include "device/frmport.h"
#include "monitor/frmrealtime.h"
#include "support/dialogs.h"
#include "support/runner.h"
#include "support/simulated_window.h"

namespace {

const simulator::Settings two_channels = {.channels = 2, .mask = 0x03, .readings = 500};
const QString linked = "linked, open";
const QString untouched = "not linked, closed";
const QString timeout = "not linked, closed, Warnning: Link Timeout!";

}  // namespace

// The real main window, linking to recorders in software on scripted ports.
class TestLink : public QObject {
  Q_OBJECT

  struct Outcome {
    const char *name, *type, *button;
    int option;  // -1 chooses no port
    QString after;
    int requests;  // for the status
  };

  void link(int option, const QString& type = "Two", const QString& button = "Ok") {
    const auto script = when_shown<frmport>([=](frmport& dialog) {
      if (option >= 0) dialog.Option1[static_cast<std::size_t>(option)]->click();
      dialog.Combo1->setCurrentText(type);
      press(button == u"Ok" ? dialog.Command1 : dialog.Command2);
    });
    w_->main.run("link");
  }
  QString state() const {
    const bool on = w_->main.window->menu_entry("unlink")->isEnabled();
    const QStringList state = {on ? "linked" : "not linked",
                               w_->port.is_open() ? "open" : "closed"};
    return (state + w_->main.messages.shown).join(", ");
  }

  std::unique_ptr<SimulatedWindow> w_;

 private Q_SLOTS:
  void init() { w_ = std::make_unique<SimulatedWindow>(); }

  void outcomes_data() {
    add_rows<Outcome>({{"cancelled", "Two", "Cancel", 0, untouched, 0},
                       {"no port chosen", "Two", "Ok", -1, untouched, 0},
                       {"absent port", "Two", "Ok", 3, timeout, 0},
                       {"type without channels", "Broken", "Ok", 0, timeout, 0},
                       {"another channel count", "Four", "Ok", 0, timeout, 3}});
  }
  void outcomes() {
    QFETCH(Outcome, row);
    w_->plug_in(two_channels);
    link(row.option, row.type, row.button);
    QCOMPARE(state(), row.after);
    QCOMPARE(int(w_->port.log.count("write 00 00 00")), row.requests);
  }

  void search_goes_through_the_ports_in_order() {
    w_->plug_in(two_channels);
    w_->port.recorders = {{1, nullptr}, {3, w_->recorder.get()}};
    link(4);
    QCOMPARE(state(), linked);
    QCOMPARE(int{User::PortChoice}, 2);
    QCOMPARE(w_->port.log.filter(QRegularExpression("number|open|close")).join(' '),
             "number 1 open close number 2 open close number 3 open");

    // Nobody anywhere: one message, and the last port is left as it is.
    w_->main.run("unlink");
    QCOMPARE(state(), "not linked, open");
    QVERIFY(!w_->realtime());
    w_->port.close();
    w_->port.recorders = {{2, nullptr}, {8, w_->recorder.get()}};
    link(4, "Four");
    QCOMPARE(state(), "not linked, open, Warnning: Link Timeout!");
    // The next link finds the recorder on the port that is still open, whatever port is chosen.
    w_->main.messages.shown.clear();
    link(0);
    QCOMPARE(state(), linked);
    QCOMPARE(w_->port.port_number(), 8);
  }

  void window_shows_the_recorder() {
    w_->plug_in({.channels = 2,
                 .mask = 0x02,
                 .readings = 500,
                 .interval_s = 65536,
                 .start = QDateTime(QDate(2026, 2, 3), QTime(4, 5, 6), Qt::UTC),
                 .running = false,
                 .wrap = true,
                 .delay_s = 65535,
                 .all_data = 65535,
                 .title = "冷库12345678",
                 .description = "<b>shelf</b> 3",
                 .battery_volts = 2.4,
                 .limits = {{{}, {-10.5, 25.0}}}});
    link(0);
    QStringList shown;
    for (const char* name : {"Text5", "Text6", "Text15", "Text4", "Text2", "Text3", "Text14",
                             "Text11", "Text1(2)", "Text1(3)", "Text1(4)", "DTP2", "DTP1"}) {
      shown << w_->realtime()->findChild<QWidget*>(name)->property("text").toString();
    }
    QCOMPARE(shown.join('|'),
             "Two|冷库123456|<b>shelf</b> 3|Error|Stop|2026-2-3  4:5:6|65535|500|25.00|-10.50||"
             "18:12:15|18:12:16");
    QCOMPARE(w_->realtime()->Combo2->currentText(), "Stop!");
    QCOMPARE(w_->realtime()->Combo3->currentText(), "When buffer is full,Wrap buffer!");
    const auto& channels = w_->realtime()->Check1;
    QVERIFY(!channels[0]->isChecked() && channels[1]->isChecked());
  }

  // While nobody has answered yet Link can be pressed again, and View can open the window.
  void commands_during_a_link() {
    w_->plug_in(two_channels, "silent:first=2");
    w_->clock.after(500, [&] { w_->main.run("link"); });
    w_->clock.after(900, [&] { w_->main.run("realtime"); });
    link(0);
    QCOMPARE(state(), linked);
    QCOMPARE(w_->realtime()->Text11->text(), "500");
  }

  // Unlinked before the window has read the recorder: nothing is left to work on.
  void window_closed_while_it_loads() {
    w_->plug_in(two_channels, "silent:command=08");
    w_->clock.after(700, [&] {
      QVERIFY(!w_->realtime());
      w_->main.run("read");  // nobody knows the channels yet
      w_->main.run("unlink");
    });
    link(0);
    QCOMPARE(state(), "not linked, open");
    QCOMPARE(w_->main.window->Sts1[0]->text(), QString());
  }

  void dialog_takes_the_later_of_two_types() {
    User::DeviceTable.set_text(0, 3, "Two");
    link(2);
    link(2, "One", "Cancel");
    QCOMPARE(int{User::RecorderType}, 3);
    QCOMPARE(int{User::PortChoice}, -1);
  }
};

const int registered = register_test<TestLink>();

#include "test_link.moc"
