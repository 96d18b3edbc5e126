#include "monitor/monitor_window.h"

namespace {

const QString question = "Setting Recorder's Properties will Lose Historical Sampling，Continue?";
const QString failed = "Setting is Failed";

// What steady() and what is typed lead to, with their check bytes. The clock stands at
// 2026-03-01 10:00:00; a delay of 01:02:03, an interval of 00:05:00, 1000 samples.
const QString description = QString("09 40 41 00 42 ") + QString("00 ").repeated(13) + "09 4e " +
                            QString("00 ").repeated(46) + "0d";
const QString pattern = "05 0f 88 03 1a 03 01 0a 00 00 8b 0e 2b 01 e8 03 d7";
const QStringList limits = {"0b 06 01 00 80 f5 00 19 60", "0b 06 02 00 00 d8 00 55 82"};
const QStringList read_back = {"02 00 02", "08 00 08", "00 00 00", "0a 01 01 0a", "0a 01 02 09"};

struct Chosen {
  const char* name;
  int startup_type, stop_type;
  QString frame;
};

struct Trouble {
  const char* name;
  QString fault;
  const char *box, *text;
  QStringList requests;
  QString messages;  // after the question
  bool polls = false, paced = false;
};

void type(frmrealtime& window) {
  set_picked_seconds(*window.DTP2, 3723);
  set_picked_seconds(*window.DTP1, 300);
  window.Text14->setText("1000");
  window.Combo2->setCurrentIndex(0);
  window.Timer1->set_enabled(true);
}

}  // namespace

class TestPropertiesSet : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void frames_data() {
    add_rows<Chosen>({
        {"start up", 0, 0, pattern},
        {"start up, wrap", 0, 1, "05 0f c8 03 1a 03 01 0a 00 00 8b 0e 2b 01 e8 03 97"},
        {"delayed", 1, 0, "05 0f 8c 03 1a 03 01 0a 00 00 8b 0e 2b 01 e8 03 d3"},
        {"delayed, wrap", 1, 1, "05 0f cc 03 1a 03 01 0a 00 00 8b 0e 2b 01 e8 03 93"},
        {"stop", 2, 0, "05 0f 00 03 00 00 00 00 00 00 8b 0e 2b 01 e8 03 4d"},
        {"stop, wrap", 2, 1, "05 0f 40 03 00 00 00 00 00 00 8b 0e 2b 01 e8 03 0d"},
    });
  }
  // Everything that goes over the line, in order; no separate start or stop is among it.
  void frames() {
    QFETCH(Chosen, row);
    MonitorWindow monitor;
    frmrealtime& window = monitor.window();
    type(window);
    window.Combo2->setCurrentIndex(row.startup_type);
    window.Combo3->setCurrentIndex(row.stop_type);
    monitor.set();
    QCOMPARE(monitor.requests(), QStringList({description, row.frame}) + limits + read_back);
    QCOMPARE(monitor.messages(), QStringList(question));
    QVERIFY(window.Timer1->enabled());
    QCOMPARE(window.Combo2->currentIndex(), row.startup_type);
    QCOMPARE(window.Combo3->currentIndex(), row.stop_type);
    QCOMPARE(window.Text2->text(), row.startup_type == 2 ? "Stop" : "Recording");
    QCOMPARE(window.Text12->text(), row.startup_type == 0 ? "0" : "");
    QCOMPARE(std::count(monitor.clock.sleeps.begin(), monitor.clock.sleeps.end(), 500), 1);
  }

  void reads_back_what_the_recorder_holds() {
    MonitorWindow monitor;
    frmrealtime& window = monitor.window();
    type(window);
    window.Text6->setText("冷库七字标题一二");
    window.Text15->setText("二十四个字的说明");
    window.Text1[0]->setText("25.501");
    window.Text1[3]->setText(" 1e1 ");
    window.Check1[0]->setChecked(false);
    set_picked_seconds(*window.DTP1, 0);
    window.Text14->setText("65535");
    // With no interval the timer stays off.
    window.Timer1->set_interval(0);
    monitor.set();
    QVERIFY(!window.Timer1->enabled());
    QStringList shown;
    for (const QLineEdit* box :
         {window.Text6, window.Text15, window.Text1[0], window.Text1[1], window.Text1[3],
          window.Text14, window.Text11, window.Text3, window.Text5, window.Text4})
      shown << box->text();
    QCOMPARE(shown, QStringList({"冷库七字标题一二", "二十四个字的说明", "25.50", "-10.50", "10.00",
                                 "65535", "0", "2026-3-1  10:0:0", "Two", "Ok"}));
    QCOMPARE(picked_seconds(*window.DTP2), 3723);
    // An interval of nothing goes out as 255 and comes back as 256 seconds.
    QCOMPARE(picked_seconds(*window.DTP1), 256);
    QVERIFY(!window.Check1[0]->isChecked() && window.Check1[1]->isChecked());
    auto weak = steady();
    weak.battery_volts = 2.49;
    monitor.plug_in(weak);
    window.RefreshFromRecorder();
    QCOMPARE(window.Text4->text(), "Error");
  }

  void trouble_data() {
    const auto times = [](int count, const QString& what) { return QStringList(count, what); };
    const QStringList start = {description, pattern};
    const QString up2 = "Channel No.2Up Limit Error";
    const QString down1 = "Channel No.1Down Limit Error|";
    add_rows<Trouble>({
        {"No", "", "Text6", "AB", {}, "", true},
        {"no number", "", "Text14", "all", {}, "Input Error ，Please Retry", true},
        {"no description", "silent:command=09", "Text6", "AB", times(3, description), failed},
        {"bad check", "check:command=05", "Text6", "AB", start + times(2, pattern), failed},
        {"no limits", "silent:command=0B", "Text6", "AB", start + times(3, limits[0]), failed},
        // It could only be sent as another value: nothing is sent in its place.
        {"limit beyond the range", "", "Text1(0)", "300", start, failed},
        // The request before goes out once more in place of the one that could not be built. At the
        // line's pace its answer comes too late for an exchange that expects nothing; a recorder
        // that answers at once makes it succeed.
        {"no number, slow", "", "Text1(1)", "warm", start + times(3, pattern),
         down1.repeated(3) + failed, false, true},
        {"no number, quick", "", "Text1(2)", "warm", start + times(2, limits[0]) + read_back, up2,
         true},
        {"late answers", "silent:first=2", "Text6", "AB",
         times(2, description) + start + limits + read_back, "", true},
    });
  }
  void trouble() {
    QFETCH(Trouble, row);
    MonitorWindow monitor(row.paced);
    if (!row.fault.isEmpty()) monitor.plug_in(steady(), row.fault);
    type(monitor.window());
    monitor.window().findChild<QLineEdit*>(row.box)->setText(row.text);
    QList<bool> polled;
    monitor.main.messages.meanwhile = [&] { polled << monitor.window().Timer1->enabled(); };
    monitor.set(row.name != QString("No"));
    QCOMPARE(monitor.requests(), row.requests);
    QCOMPARE(monitor.messages().mid(1).join('|'), row.messages);
    QCOMPARE(polled.count(true), 1);  // while the question stands
    QVERIFY(monitor.window().Command4->isEnabled());
    QCOMPARE(monitor.window().Timer1->enabled(), row.polls);
    // Between the tries.
    const auto pauses = std::count(monitor.clock.sleeps.begin(), monitor.clock.sleeps.end(), 50);
    QCOMPARE(pauses, row.messages.contains(failed) || !row.fault.isEmpty() ? 2 : 0);
  }
};

const int registered = register_test<TestPropertiesSet>();

#include "test_properties_set.moc"
