#include "app/errors.h"
#include "monitor/live_graph.h"
#include "monitor/monitor_window.h"
#include "monitor/pattern.h"

namespace {

// The pattern of a start with these numbers as it is sent, or "refused".
QByteArray sent(const char* all_data, int delay = 0, int interval = 60, int year = 2026,
                StartupType type = StartupType::start_up) {
  const QDateTime now(QDate(year, 3, 1), QTime(12, 34, 56), Qt::UTC);
  PatternFrame frame;
  frame.fill(0xEE);
  const PatternSettings typed = {type, false, {true, false, true}, delay, interval, all_data};
  const bool accepted = stop_at_first_failure([&] { encode_pattern(typed, now, frame); });
  const QByteArray bytes(reinterpret_cast<const char*>(frame.data()), frame.size());
  return accepted ? bytes.toHex() : "refused";
}

const LiveChannels two_channels = {2, {"Air", "Damp", "", ""}, {"C", "%RH", "", ""}};
const std::array<AlarmLimits, 4> limits = {alarm_limits(u"10", u"-10"), alarm_limits(u"10", u"")};

}  // namespace

class TestMonitorLogic : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void numbers() {
    QCOMPARE(sent("65535", 32767, 32767, 2255), "8805ff03010c2238ff7ffe7fffffee");
    QCOMPARE(sent("1000", 0, 1), "88051a03010c223800000000e803ee");
    QCOMPARE(sent("1000", 0, 0), "88051a03010c22380000ff00e803ee");
    QCOMPARE(sent("1000", 32768), "refused");
    QCOMPARE(sent("1000", 0, 32768), "refused");
    for (const char* all_data : {"65535.5", "-1", "0x10", ""}) QCOMPARE(sent(all_data), "refused");
    for (const int year : {1999, 2256}) QCOMPARE(sent("1000", 0, 60, year), "refused");
    // "Stop!" leaves the clock as it was last sent, so one that could not be sent does not matter.
    QCOMPARE(sent("1", 0, 1, 1980, StartupType::stop), "0005eeeeeeeeeeee000000000100ee");
  }

  // A field ends at the text's first zero unit; half a pair that its border leaves is replaced.
  void texts() {
    const auto back = [](const QString& title) {
      const DescriptionFrame frame = encode_texts(title, title.repeated(9));
      return text_of_units(frame.data(), 16) + '|' + text_of_units(frame.data() + 16, 48);
    };
    QCOMPARE(back("A一B"), QString("A一B|") + QString("A一B").repeated(8));
    QCOMPARE(back("ABCDEFGHI"), "ABCDEFGH|ABCDEFGHIABCDEFGHIABCDEF");
    QCOMPARE(back(QString::fromUtf8("1234567\U0001F600")).left(8),
             QString("1234567") + QChar(QChar::ReplacementCharacter));
    QCOMPARE(back(QString("AB") + QChar(0) + 'C'), "AB|AB");
    QCOMPARE(back(QString(QChar(0xDE00)) + 'x').left(2), QString(QChar(0xDE00)) + 'x');
  }

  void readings_are_decoded() {
    QList<float> values;
    for (const char* raw : {"0000", "0019", "ff7f", "0080", "0180", "ffff"}) {
      values << decode_readings(QByteArray(9, '\0') + hex(raw), 3)[2];
    }
    QCOMPARE(values, QList<float>({0, 25, 127.99609375F, 128, -127.99609375F, -0.00390625F}));
    QVERIFY_THROWS_EXCEPTION(BoundsError, decode_readings(QByteArray(10, '\0'), 3));
  }

  // A limit that is no number guards nothing; the other one guards on.
  void alarms() {
    QVERIFY(!out_of_range(25, alarm_limits(u"25", u"25")));
    QVERIFY(!out_of_range(0.1F, alarm_limits(u"0.1", u"0")));
    QVERIFY(out_of_range(25.00390625F, alarm_limits(u"25", u"-10")));
    QVERIFY(out_of_range(-10.00390625F, alarm_limits(u"25", u"-10")));
    QVERIFY(!out_of_range(100, alarm_limits(u"warm", u"-10")));
    QVERIFY(out_of_range(-11, alarm_limits(u"warm", u"-10")));
  }

  // Far more readings than there is room for. From the 20001st on each has an alarm, before that
  // every second one.
  void full_buffer() {
    LiveMonitor live;
    live.set_channels(two_channels);
    QList<int> saves;
    auto add_until = [&, n = 0](int last) mutable {
      while (n++ < last) {
        const float value = n % 2 && n < 20000 ? 0 : 11;
        if (live.add(QString::number(n), {value, value}, limits)) saves << n;
      }
      --n;
    };
    add_until(15001);
    QCOMPARE(row_texts(&live.live_sheet, 0), QStringList({"1", "2", "11", "11"}));
    QCOMPARE(row_texts(&live.live_sheet, 14999), QStringList({"15000", "15001", "0", "0"}));
    // Cleared rows do not come back; new ones go on from the buffer's count.
    live.live_sheet.clear();
    add_until(15003);
    QCOMPARE(live.live_sheet.rowCount(), 2);
    QCOMPARE(row_texts(&live.live_sheet, 0, 2), QStringList({"14999", "15002"}));
    // While the list is not full an alarm keeps the number that its reading had.
    add_until(20000);
    QCOMPARE(row_texts(&live.alarm_sheet, 0),
             QStringList({"2", "2", "AirOut Of Range    DampOut Of Range    "}));
    QCOMPARE(row_texts(&live.alarm_sheet, 9999, 2), QStringList({"15000", "20000"}));
    add_until(40000);
    QCOMPARE(saves, QList<int>({15000, 30000}));
    QCOMPARE(row_texts(&live.live_sheet, 0, 2), QStringList({"1", "25001"}));
    QCOMPARE(row_texts(&live.alarm_sheet, 0, 2), QStringList({"1", "25001"}));
    QCOMPARE(row_texts(&live.live_sheet, 14999, 2), QStringList({"15000", "40000"}));
    QCOMPARE(row_texts(&live.alarm_sheet, 14999, 2), QStringList({"15000", "40000"}));
    // Days of silence do not bring "Link Ok" back.
    for (int i = 0; i < 70000; ++i) live.count_missed();
    QVERIFY(!live.link_ok());
  }

  void place() {
    const auto shown = [](int slider, int count, int span) {
      LiveView view;
      view.Span = span;
      view.place(slider, count);
      return QList<int>{view.FirstShown, view.LastShown, view.last_reading(count).value_or(-1)};
    };
    QCOMPARE(shown(100, 0, 128), QList<int>({0, 127, -1}));
    QCOMPARE(shown(100, 127, 128), QList<int>({0, 127, 126}));
    QCOMPARE(shown(100, 129, 128), QList<int>({1, 128, 128}));
    QCOMPARE(shown(99, 5000, 128), QList<int>({4872, 4999, 4999}));
    QCOMPARE(shown(1, 250, 5), QList<int>({2, 6, 6}));
    QCOMPARE(shown(1, 350, 5), QList<int>({4, 8, 8}));
    QCOMPARE(shown(100, 15000, 16384), QList<int>({0, 16383, 14999}));
  }

  void zoom_and_nearest() {
    LiveView view;
    view.place(100, 200);
    QCOMPARE(*LiveView().nearest(1270, 1270, 20), 19);
    QCOMPARE(*view.nearest(635, 1270, 200), 64);
    QCOMPARE(*view.nearest(645, 1270, 200), 64);
    const auto zoomed = [&](int button, int times) {
      while (times-- > 0) view.zoom(button);
      return view.Span;
    };
    QCOMPARE(zoomed(1, 1), 102);
    QCOMPARE(zoomed(1, 40), 5);
    QCOMPARE(zoomed(0, 1), 6);
    QCOMPARE(zoomed(0, 60), 16384);
  }

  // Equal curves lie side by side, each 3 twips lower: 9 twips are a pixel. To the right of the
  // last reading there is none.
  void curves() {
    for (const auto& [span, y] : {std::pair(5, 0), {641, 80}, {6401, 158}}) {
      const auto value = static_cast<float>(120 - y);
      const LiveReading reading = {value, value, value, value};
      LiveBuffer buffer;
      for (int n = 0; n <= span / 4; ++n) buffer.push({}, reading);
      LiveView view;
      view.Span = span;
      GraphPicture picture;
      take_live_curves(picture.new_curves(), buffer, view, 4);
      QImage image(321, 161, QImage::Format_RGB32);
      picture.draw(image, picture_size(image.size(), 1), qRgb(255, 255, 255));
      for (int x = 0; x < image.width(); ++x) {
        QCOMPARE(image.pixel(x, y) == curve_colours[2], x <= 80);
        QCOMPARE(image.pixel(x, y + 1) == curve_colours[3], x <= 80);
      }
    }
  }
};

const int registered = register_test<TestMonitorLogic>();

#include "test_logic.moc"
