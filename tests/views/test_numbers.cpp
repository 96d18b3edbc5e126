#include <QTest>

#include <cmath>

#include "app/errors.h"
#include "support/runner.h"
#include "views/filled_recording.h"
#include "views/graph_view.h"
#include "views/statistics.h"

class TestViewNumbers : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void position() {
    QCOMPARE(view_start(30, 99, 100, 20), 30);
    // Ties go to even.
    QCOMPARE(view_start(3, 4, 7, 1), 4);
    QCOMPARE(view_start(1, 4, 7, 1), 2);
    // The end is told by the number of samples, the place by one less.
    QCOMPARE(view_start(6, 7, 1000, 143), 857);
    QCOMPARE(view_start(9, 10, 1000, 100), 899);
    QVERIFY_THROWS_EXCEPTION(RunTimeError, view_start(0, 0, 100, 20));
  }

  void zoom() {
    QCOMPARE(zoomed(Zoom::in, 128, 1000), 102);
    QCOMPARE(zoomed(Zoom::in, 2, 2), 2);
    QCOMPARE(zoomed(Zoom::out, 102, 1000), 128);
    QCOMPARE(zoomed(Zoom::out, 10, 1000), 12);
    QCOMPARE(zoomed(Zoom::out, 900, 1000), 1000);
    QCOMPARE(zoomed(Zoom::out, 1000, 1000), std::nullopt);
  }

  void cursor() {
    QCOMPARE(cursor_sample(4000, 8000, 6), 2);
    QCOMPARE(cursor_sample(4000, 8000, 8), 4);
    // The place of a sample leads back to it, so a cursor that is set again stays where it is.
    for (const int view : {2, 5, 1000, 30001}) {
      for (int sample = 0; sample < view; ++sample) {
        QCOMPARE(cursor_sample(cursor_x(sample, 7695, view), 7695, view), sample);
      }
    }
    QCOMPARE(stepped(CursorStep::page_on, 1, 5), 2);
    QCOMPARE(time_label_left(6164, 7695), 6164.0F);
    QVERIFY_THROWS_EXCEPTION(RunTimeError, cursor_x(0, 7695, 1));
    QVERIFY_THROWS_EXCEPTION(RunTimeError, cursor_sample(0, 0, 10));
  }

  void scales() {
    const auto scale = [](const std::optional<ScaleLimits>& limits) {
      const ChannelScale made = channel_scale(std::array{7.0F, 20.0F, -3.5F}, limits);
      const QStringList labels(made.labels.begin(), made.labels.end());
      return QStringLiteral("%1 to %2: ").arg(made.low).arg(made.high) + labels.join(u',');
    };
    QCOMPARE(scale({}), "-8.5 to 25: 25.00,20.81,16.63,12.44,8.25,4.06,-0.13,-4.31,-8.50");
    QCOMPARE(scale({{120, -40}}),
             "-40 to 120: 120.00,100.00,80.00,60.00,40.00,20.00,0.00,-20.00,-40.00");
    QCOMPARE(scale({{20, 20}}), "19.5 to 20.5: 20.50,,,,,,,,19.50");
    QCOMPARE(scale({{10, 30}}), "29.5 to 10.5: 10.50,,,,,,,,29.50");
    QCOMPARE(scale({{0.08F, 0}}), "0 to 0.08: 0.08,0.07,0.06,0.05,0.04,0.03,0.02,0.01,0.00");
    QCOMPARE(scale({{0.0799F, 0}}), "-0.5 to 0.5799: 0.58,,,,,,,,-0.50");
  }

  void statistics() {
    Recording recording;
    fill(recording, 3, 2);
    const std::array values = {0.1F, 0.2F, 0.3F, 0.0F, -0.0F, -12.02F};
    for (int n = 0; n < 6; ++n) {
      recording.SampleValues(n % 3, n / 3) = values[static_cast<std::size_t>(n)];
    }
    compute_statistics(recording);
    const auto& [maximum, minimum, average, unused] = recording.ChannelStats;
    // Summed first and divided once it would be ...555p-3.
    QCOMPARE(average[0], 0x1.99999a5555556p-3);
    QCOMPARE(maximum[0] + minimum[1], double{0.3F} + double{-12.02F});
    // An equal value replaces nothing, not even by its sign.
    QVERIFY(maximum[1] == 0 && !std::signbit(maximum[1]));
    // Slots that are not there show their first sample throughout.
    for (const auto& row : {maximum, minimum, average}) QCOMPARE(row[3], 300.0);
  }

  void intervals() {
    const QString first = "2026-03-01 08:00:00";
    QCOMPARE(interval_text(first, "2026-03-01 08:01:30"), "00-01-30");
    QCOMPARE(interval_text(first, "2026-03-02 09:00:00"), "01-00-00");
    QCOMPARE(interval_text(first, "2026-03-01 07:59:59"), "23-59-59");
    QVERIFY_THROWS_EXCEPTION(ConversionError, interval_text(first, "3/1/26 8:01:00 AM"));
  }
};

const int registered = register_test<TestViewNumbers>();
#include "test_numbers.moc"
