#include "base/errors.h"
#include "device/port_names.h"
#include "support/simulated_window.h"

namespace {

const simulator::Settings two_channels = {.channels = 2, .mask = 0x03, .readings = 500};
const QString linked = "linked, open";
const QString untouched = "not linked, closed";
const QString timeout = "not linked, closed, Warnning: Link Timeout!";

}  // namespace

// Links the real main window to recorders in software on scripted ports, with device files and
// ports of all kinds.
class TestLink : public QObject {
  Q_OBJECT

  void link(int option, const QString& type = "Two", bool ok = true) {
    w_->main.link(option, type, ok);
  }
  // The state of link and port, with the messages since the last call.
  QString state() const {
    const bool on = w_->main.window->menu_entry("unlink")->isEnabled();
    const QStringList state = {on ? "linked" : "not linked",
                               w_->port.is_open() ? "open" : "closed"};
    return (state + w_->main.told()).join(", ");
  }

  std::unique_ptr<SimulatedWindow> w_;

 private Q_SLOTS:
  void init() {
    w_ = std::make_unique<SimulatedWindow>();
    w_->plug_in(two_channels);
  }

  void outcomes() {
    for (const auto& [type, ok, option, after, requests] :
         {std::tuple("Two", false, 0, untouched, 0),
          {"Two", true, -1, untouched, 0},
          {"Two", true, 3, timeout, 0},     // an absent port
          {"Broken", true, 0, timeout, 0},  // a type without channels
          {"Four", true, 0, timeout, 3}}) {
      init();
      User::PortChoice = 0;  // left by an earlier link
      link(option, type, ok);
      QCOMPARE(state(), after);
      QCOMPARE(int(w_->port.log.count("write 00 00 00")), requests);
    }
    // Of two types with the same name the later counts.
    User::DeviceTable.set_text(0, 3, "Two");
    link(-1);
    QCOMPARE(int{User::RecorderType}, 3);
  }

  void search_goes_through_the_ports_in_order() {
    w_->port.recorders = {{1, nullptr}, {3, w_->recorder.get()}};
    link(4);
    QCOMPARE(state(), linked);
    QCOMPARE(int{User::PortChoice}, 2);
    QCOMPARE(w_->port.log.filter(QRegularExpression("number|open|close")).join(' '),
             "number 1 open close number 2 open close number 3 open");

    // When no recorder answers, there is one message, and the last port stays as it is.
    w_->main.run("unlink");
    QCOMPARE(state(), "not linked, open");
    QVERIFY(!w_->realtime());
    w_->port.close();
    w_->port.recorders = {{2, nullptr}, {8, w_->recorder.get()}};
    link(4, "Four");
    QCOMPARE(state(), "not linked, open, Warnning: Link Timeout!");
    // The next link finds the recorder on the port that is still open, whatever port is chosen.
    link(0);
    QCOMPARE(state(), linked);
    QCOMPARE(w_->port.port_number(), 8);
    // Closing the main window ends the search.
    w_->port.close();
    w_->port.recorders = {{1, nullptr}, {2, nullptr}, {3, nullptr}};
    w_->clock.after(1500, [&] { w_->main.window->close(); });
    link(4);
    QVERIFY(w_->main.messages.shown.isEmpty() && !w_->port.is_open());
    QCOMPARE(w_->port.log.last(3), QStringList({"close", "rts 0", "dtr 0"}));
  }

  // Before the recorder has answered, Link can be pressed again, and View can open the window.
  void commands_during_a_link() {
    w_->plug_in(two_channels, "silent:first=2");
    w_->clock.after(500, [&] { w_->main.run("link"); });
    w_->clock.after(900, [&] { w_->main.run("realtime"); });
    link(0);
    QCOMPARE(state(), linked);
    QCOMPARE(w_->realtime()->setup().Text11->text(), "500");
    // Unlink comes before the window has read the recorder: nothing is left to work on.
    w_->plug_in(two_channels, "silent:command=08");
    w_->clock.after(700, [&] {
      QVERIFY(!w_->realtime());
      w_->main.run("read");  // nobody knows the channels yet
      w_->main.run("unlink");
    });
    link(0);
    QCOMPARE(state() + w_->main.window->Sts1[0]->text(), "not linked, open");
  }

  // Escape ends the search at once and without a message.
  void escape_ends_a_link() {
    QStringList shown;
    connect(w_->main.window->Text1, &QLineEdit::textChanged, this,
            [&](const QString& text) { shown << text + (w_->port.is_open() ? "open" : ""); });
    w_->port.recorders = {{1, nullptr}, {2, nullptr}, {3, w_->recorder.get()}};
    for (const int option : {0, 4}) {
      w_->clock.after(500, [&] {
        QVERIFY(QGuiApplication::overrideCursor() &&
                !w_->main.window->Sts1[1]->toolTip().isEmpty());
        QTest::keyClick(w_->main.window.get(), Qt::Key_Escape);
      });
      const qint64 before = w_->clock.elapsed();
      link(option);
      QVERIFY(w_->clock.elapsed() - before < 1100);
      QCOMPARE(state(), untouched);
      QVERIFY(!QGuiApplication::overrideCursor() && w_->main.window->Sts1[1]->toolTip().isEmpty());
    }
    QCOMPARE(shown.join('|'), "COM1 ...|open|COM1 ...|open");  // first, since opening can take long
    link(4);
    QCOMPARE(state(), linked);
    QVERIFY(!QGuiApplication::overrideCursor());
  }

  // A window that could not be loaded leaves nothing behind.
  void a_failing_load_can_be_tried_again() {
    w_->plug_in(two_channels, "silent:command=02");
    w_->clock.each_pause = [this] {
      frmrealtime* window = w_->main.window->loading_realtime();
      if (!window) return;
      QCOMPARE(window->setup().work_label->text(), "Reading ...");
      throw RunTimeError("a failing load");
    };
    link(0);
    QCOMPARE(state(), "not linked, open");
    QVERIFY(w_->main.window->menu_entry("link")->isEnabled() && !QGuiApplication::overrideCursor());
    w_->clock.each_pause = {};
    w_->plug_in(two_channels);
    link(0);
    const SetupPane& setup = w_->realtime()->setup();
    QCOMPARE(state() + setup.Text11->text() + setup.work_label->text(), linked + "500");
  }

  // The links in the folder come first; the system's ports keep their own numbers beside them.
  void port_devices() {
    const QTemporaryDir& folder = w_->main.folder;
    QVERIFY(QFile::link("/dev/null", folder.filePath("com1")));
    QVERIFY(QFile::link("/dev/gone", folder.filePath("com3")));
    const QStringList system = {"/dev/ttyUSB0", "/dev/ttyS10", "/dev/ttyS12", "/dev/ttyS2"};
    QStringList devices;
    for (int n = 1; n <= 5; ++n) devices << serial_device(n, folder.path(), system);
    QCOMPARE(devices, QStringList({"/dev/null", "/dev/ttyS10", "/dev/gone", "/dev/ttyUSB0", ""}));

    const LineSettings mark = line_settings(" 9600, m,8,1");
    QVERIFY(mark.baud_rate == 9600 && mark.parity == QSerialPort::MarkParity &&
            mark.data_bits == QSerialPort::Data8 && mark.stop_bits == QSerialPort::OneStop);
    QVERIFY_THROWS_EXCEPTION(PortError, line_settings("9600,X,8,1"));
  }

  void device_files() {
    // Count, rows in use, first and last field of row 1.
    const auto read = [](const QByteArray& bytes) {
      const DeviceTable table = read_device_table(bytes.toStdString());
      const QString outside = table.text(11, 1) + table.text(0, 101) + table.text(12, 0);
      return QStringLiteral("%1|%2|").arg(table.DeviceCount).arg(table.rows()) + table.text(0, 1) +
             u'|' + table.text(10, 1) + outside;
    };
    const QByteArray a = "\"A\",,1,\"t\",C,,,,,,\r\n";
    QCOMPARE(read("\xEF\xBB\xBF"
                  "2\r\n" +
                  a + "\"B, \"\"2\"\"\",x,2,a,b,c,d,e,f,g,h"),
             "2|2|B, \"2\"|h");
    QCOMPARE(read("2\n" + a + "  B \nx\n2\na"), "2|2|B|");
    QCOMPARE(read("200\n" + a + "B"), "200|101|B|");
    // The file can be anything; nothing beyond a megabyte is read.
    const QString path = w_->main.folder.filePath("long.txt");
    QVERIFY(
        make_file(path, "9\n" + QByteArray(2'000'000, 'x') + QByteArray("\nlast").repeated(99)));
    QCOMPARE(read_device_file(path).rows(), 9);
    QCOMPARE(read_device_file(path).text(0, 8), "");
    QCOMPARE(read_device_file("none").rows(), 0);
  }
};

const int registered = register_test<TestLink>();

#include "test_link.moc"
