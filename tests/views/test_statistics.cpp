#include <QTest>

#include <cmath>

#include "app/errors.h"
#include "support/runner.h"
#include "views/date_segment.h"
#include "views/filled_recording.h"
#include "views/sheet_model.h"
#include "views/statistics.h"

class TestStatistics : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void average_keeps_its_order_of_rounding();
  void extremes();
  void intervals_data();
  void intervals();
  void information_list();
  void broken_recordings_data();
  void broken_recordings();
  void segments_data();
  void segments();
  void segment_of_a_broken_recording();
  void sheet();
  void copied_text_data();
  void copied_text();
};

void TestStatistics::average_keeps_its_order_of_rounding() {
  Recording recording;
  fill(recording, 3, 1);
  for (int n = 0; n < 3; ++n) recording.SampleValues(n, 0) = static_cast<float>(n + 1) / 10;
  compute_statistics(recording);
  // Summed first and divided once it would be ...555p-3.
  QCOMPARE(recording.ChannelStats[2][0], 0x1.99999a5555556p-3);
}

void TestStatistics::extremes() {
  Recording recording;
  fill(recording, 5, 2);
  const std::array values = {0.0F, -0.0F, 65.3F, -12.02F, 65.3F};
  for (int n = 0; n < 5; ++n) {
    for (int c = 0; c < 4; ++c) {
      const auto above = static_cast<float>(n == 1 ? 0 : 7 * c);
      recording.SampleValues(n, c) = values[static_cast<std::size_t>(n)] + above;
    }
  }
  recording.SampleValues(3, 0) = -0.0F;
  compute_statistics(recording);
  const auto& [maximum, minimum, average, unused] = recording.ChannelStats;
  QCOMPARE(maximum[0], double{65.3F});
  // An equal value replaces nothing, not even by its sign.
  QVERIFY(minimum[0] == 0 && !std::signbit(minimum[0]));
  QCOMPARE(minimum[1], double{-12.02F + 7});
  // Slots that are not there show their first sample throughout.
  for (const auto& row : {maximum, minimum, average}) {
    QCOMPARE(row[2], 14.0);
    QCOMPARE(row[3], 21.0);
  }
}

void TestStatistics::intervals_data() {
  QTest::addColumn<QString>("first");
  QTest::addColumn<QString>("second");
  QTest::addColumn<QString>("text");
  const auto row = [](const char* name, const char* first, const char* second, const char* text) {
    QTest::newRow(name) << first << second << text;
  };
  row("90 seconds", "2026-03-01 08:00:00", "2026-03-01 08:01:30", "00-01-30");
  row("25 hours", "2026-03-01 08:00:00", "2026-03-02 09:00:00", "01-00-00");
  row("over a leap day", "2024-02-28 23:59:59", "2024-03-01 00:00:00", "00-00-01");
  row("clock set back", "2026-03-01 08:00:00", "2026-03-01 07:59:59", "23-59-59");
  row("other form", "3/1/26 8:00:00 AM", "3/1/26 8:01:00 AM", "");
  row("no second sample", "2026-03-01 08:00:00", "", "");
}

void TestStatistics::intervals() {
  QFETCH(QString, first);
  QFETCH(QString, second);
  Recording recording;
  fill(recording, 2, 1);
  recording.SampleTimes(0) = first;
  recording.SampleTimes(1) = second;
  QTEST(information_rows(recording)[6].value, "text");
}

void TestStatistics::information_list() {
  Recording recording;
  fill(recording, 3, 2);
  compute_statistics(recording);
  QStringList rows;
  for (const auto& [label, value] : information_rows(recording)) rows << label + u'=' + value;
  QCOMPARE(rows.join(u'|'),
           "Title=Cold store|Recorder Name=Logger 4|Channels=2|Length=3|"
           "Start Time=2026-03-01 08:00:00|End Time=2026-03-01 08:02:00|Interval Time=00-01-00|"
           "Channel No.=1|Channel Name=Air|Unit=C|Max.=2.00|Min.=0.00|Average=1.00|"
           "Channel No.=2|Channel Name=Humidity|Unit=%RH|Max.=102.00|Min.=100.00|Average=101.00");
}

// What a failed opening of a file can leave behind.
void TestStatistics::broken_recordings_data() {
  QTest::addColumn<int>("samples");
  QTest::addColumn<int>("channels");
  QTest::addColumn<int>("list_rows");
  QTest::addColumn<QString>("end");
  QTest::newRow("more samples than fit") << 50000 << 2 << 19 << "";
  QTest::newRow("fewer than none") << -3 << 2 << 19 << "";
  QTest::newRow("more channels than fit") << 4 << 9 << 31 << "2026-03-01 08:03:00";
  QTest::newRow("fewer channels than none") << 4 << -1 << 7 << "2026-03-01 08:03:00";
}

void TestStatistics::broken_recordings() {
  QFETCH(int, samples);
  QFETCH(int, channels);
  Recording recording;
  fill(recording, samples, channels);
  compute_statistics(recording);
  const auto rows = information_rows(recording);
  QTEST(static_cast<int>(rows.size()), "list_rows");
  QTEST(rows[5].value, "end");
  const SheetModel sheet(recording);
  QCOMPARE(sheet.rowCount(), std::clamp(samples, 0, 30001));
  if (const int last = sheet.rowCount() - 1; last >= 0) {
    for (int column = 0; column < sheet.columnCount(); ++column) {
      QVERIFY(!sheet.index(last, column).data().toString().isEmpty());
    }
  }
}

void TestStatistics::segments_data() {
  QTest::addColumn<QString>("start");
  QTest::addColumn<QString>("end");
  QTest::addColumn<int>("first");
  QTest::addColumn<int>("count");
  // 100 samples, a minute apart from 08:00.
  const auto row = [](const char* name, const char* start, const char* end, int first, int count) {
    QTest::newRow(name) << QStringLiteral("2026-03-01 ") + QLatin1String(start)
                        << QStringLiteral("2026-03-01 ") + QLatin1String(end) << first << count;
  };
  row("whole minutes", "08:10:00", "08:30:00", 10, 20);
  row("the end itself is outside", "08:10:00", "08:30:01", 10, 21);
  row("between two samples", "08:09:30", "08:29:30", 10, 20);
  row("one time", "08:10:00", "08:10:00", 10, 5);
  row("short", "08:10:00", "08:14:00", 10, 5);
  row("from before the first", "07:00:00", "08:30:00", 0, 30);
  row("beyond the last", "08:10:00", "23:00:00", 10, 90);
  row("starts beyond the last", "22:00:00", "23:00:00", 99, 5);
}

void TestStatistics::segments() {
  QFETCH(QString, start);
  QFETCH(QString, end);
  Recording recording;
  fill(recording, 100, 1);
  const DateSegment segment = date_segment(recording, start, end);
  QTEST(segment.first, "first");
  QTEST(segment.count, "count");
}

void TestStatistics::segment_of_a_broken_recording() {
  Recording recording;
  fill(recording, 50000, 1);
  QVERIFY_THROWS_EXCEPTION(BoundsError,
                           date_segment(recording, QStringLiteral("9"), QStringLiteral("9")));
  fill(recording, 0, 1);
  QCOMPARE(date_segment(recording, QStringLiteral("1"), QStringLiteral("2")).first, 0);
}

void TestStatistics::sheet() {
  Recording recording;
  fill(recording, 30, 2);
  recording.SampleValues(29, 1) = -0.125F;
  const SheetModel model(recording);
  QCOMPARE(model.rowCount(), 30);
  QStringList texts;
  for (int column = 0; column < model.columnCount(); ++column) {
    texts << model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
  }
  for (int column = 0; column < model.columnCount(); ++column) {
    texts << model.index(29, column).data().toString();
  }
  QCOMPARE(texts, QStringList({"Number", "Time", "Air(C)", "Humidity(%RH)", "30",
                               "2026-03-01 08:29:00", "29.00", "-0.13"}));
}

void TestStatistics::copied_text_data() {
  QTest::addColumn<QList<QRect>>("ranges");  // columns across, rows down
  QTest::addColumn<QString>("text");
  QTest::newRow("nothing") << QList<QRect>{} << "";
  QTest::newRow("a cell") << QList<QRect>{{2, 4, 1, 1}} << "4.00";
  QTest::newRow("rows") << QList<QRect>{{0, 1, 3, 2}}
                        << "2\t2026-03-01 08:01:00\t1.00\n3\t2026-03-01 08:02:00\t2.00";
  QTest::newRow("apart, out of order") << QList<QRect>{{2, 5, 1, 1}, {0, 3, 1, 1}} << "4\t\n\t5.00";
}

void TestStatistics::copied_text() {
  QFETCH(QList<QRect>, ranges);
  Recording recording;
  fill(recording, 10, 1);
  const SheetModel model(recording);
  QItemSelection selection;
  for (const QRect& range : ranges) {
    selection.append(QItemSelectionRange(model.index(range.top(), range.left()),
                                         model.index(range.bottom(), range.right())));
  }
  QTEST(selection_text(selection), "text");
}

const int registered = register_test<TestStatistics>();
#include "test_statistics.moc"
