#include "base/errors.h"
#include "device/pattern.h"
#include "device/texts.h"
#include "monitor/live_graph.h"
#include "monitor/monitor_window.h"

namespace {

// The pattern as sent, in hexadecimal, for these settings, or "refused".
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

}  // namespace

class TestMonitorLogic : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void numbers() {
    QCOMPARE(sent("65535", 32767, 32767, 2255), "8805ff03010c2238ff7ffe7fffffee");
    QCOMPARE(sent("1000", 0, 0), "88051a03010c22380000ff00e803ee");
    QCOMPARE(sent("1000", 0, 32768), "refused");
    for (const char* all_data : {"65535.5", "-1", "0x10", ""}) QCOMPARE(sent(all_data), "refused");
    for (const int year : {1999, 2256}) QCOMPARE(sent("1000", 0, 60, year), "refused");
    // "Stop!" keeps the clock bytes last sent, so a year outside the range does not matter.
    QCOMPARE(sent("1", 0, 1, 1980, StartupType::stop), "0005eeeeeeeeeeee000000000100ee");
  }

  // A field ends at its first zero unit. Half a surrogate pair at its border is kept.
  void texts() {
    const auto back = [](const QString& title) {
      const DescriptionFrame frame = encode_texts(title, title.repeated(9));
      return text_of_units(frame.data(), 16) + '|' + text_of_units(frame.data() + 16, 48);
    };
    QCOMPARE(back("A一B"), QString("A一B|") + QString("A一B").repeated(8));
    QCOMPARE(back(QString::fromUtf8("1234567\U0001F600")).left(8),
             QString("1234567") + QChar(0xD83D));
    QCOMPARE(back(QString("AB") + QChar(0) + 'C'), "AB|AB");
  }

  // Adds far more readings than the buffer holds. Every second one of the first 20000 has an alarm,
  // then every one.
  void full_buffer() {
    LiveMonitor live;
    live.set_channels({2, {"Air", "Damp", "", ""}, {"C", "%RH", "", ""}});
    QList<int> saves;
    auto add_until = [&, n = 0](int last) mutable {
      for (; n < last;) {
        const float value = ++n % 2 && n < 20000 ? 0 : 11;
        live.add(QString::number(n), {value, value - 20}, {alarm_limits(u"10", u"0")});
        if (!live.save_due()) continue;
        saves << n;
        live.SaveCounter = 0;
      }
    };
    const auto row = [](const auto& sheet, int n) { return row_text(&sheet, n, 2); };
    add_until(15001);
    QCOMPARE(row_text(&live.live_sheet, 0), "1|2|11|-9");
    QCOMPARE(row_text(&live.live_sheet, 14999), "15000|15001|0|-20");
    QCOMPARE(live.status[1].maximum() + live.status[1].minimum(), "-9.00-20.00");
    // Cleared rows do not come back; new ones continue the buffer's count.
    live.live_sheet.clear();
    add_until(15003);
    QCOMPARE(live.live_sheet.rowCount(), 2);
    QCOMPARE(row(live.live_sheet, 0), "14999|15002");
    // Until the list is full, an alarm keeps the number that its reading had.
    add_until(20000);
    QCOMPARE(row_text(&live.alarm_sheet, 0), "2|2|AirOut Of Range    ");
    QCOMPARE(row(live.alarm_sheet, 9999), "15000|20000");
    add_until(40000);
    QCOMPARE(saves, QList<int>({15000, 30000}));
    for (const auto& [n, text] : {std::pair(0, "1|25001"), {14999, "15000|40000"}}) {
      QCOMPARE(row(live.live_sheet, n), text);
      QCOMPARE(row(live.alarm_sheet, n), text);
    }
    // Days of silence do not bring "Link Ok" back.
    for (int i = 0; i < 40000; ++i) live.count_missed();
    QVERIFY(!live.link_ok());
  }

  void view() {
    const auto shown = [](int slider, int count, int span) {
      LiveView view;
      view.Span = span;
      view.place(slider, count);
      return QList<int>{view.FirstShown, view.LastShown, view.last_reading(count).value_or(-1)};
    };
    QCOMPARE(shown(100, 0, 128), QList<int>({0, 127, -1}));
    QCOMPARE(shown(100, 129, 128), QList<int>({1, 128, 128}));
    QCOMPARE(shown(1, 250, 5), QList<int>({2, 6, 6}));
    QCOMPARE(shown(1, 350, 5), QList<int>({4, 8, 8}));
    QCOMPARE(cursor_label_left(6277.5, 1387.5, 7695), 6307.5);
    QCOMPARE(cursor_label_left(6277.6, 1387.5, 7695), 6277.6 - 1417.5);
    LiveView view;
    view.place(100, 200);
    QCOMPARE(*view.nearest(645, 1270, 200), 64);
    QCOMPARE(*view.nearest(1270, 1270, 180), 107);
    for (int i = 0; i < 40; ++i) view.zoom(1);
    QCOMPARE(view.Span, 5);
    for (int i = 0; i < 60; ++i) view.zoom(0);
    QCOMPARE(view.Span, 16384);
  }

  // The curves span the whole view, even with fewer readings.
  void curves() {
    LiveBuffer buffer;
    for (int n = 0; n < 5; ++n) buffer.push({}, {float(n), float(10 + n)});
    LiveView view;
    view.FirstShown = 2;
    GraphCurves curves;
    copy_live_curves(curves, buffer, view, 2);
    QCOMPARE(curves.span, 128);
    QCOMPARE(curves.channels[1].values, std::vector<float>({12, 13, 14}));
    QCOMPARE(curves.channels[1].high - curves.channels[1].low, 160.0F);
  }
};

const int registered = register_test<TestMonitorLogic>();

#include "test_logic.moc"
