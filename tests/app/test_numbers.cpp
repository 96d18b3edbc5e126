#include <QTest>

#include <charconv>
#include <cmath>
#include <limits>

#include "app/errors.h"
#include "app/numbers.h"
#include "app/times.h"
#include "support/runner.h"

class TestNumbers : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void two_decimals_data();
  void two_decimals();
  void floats_read_back_the_same();
  void numeric_texts_data();
  void numeric_texts();
  void sixteen_bits_round_to_even_and_overflow();
  void stamps();
};

void TestNumbers::two_decimals_data() {
  QTest::addColumn<double>("value");
  QTest::addColumn<QString>("text");
  QTest::newRow("tie up") << 0.125 << "0.13";
  QTest::newRow("tie up negative") << -0.125 << "-0.13";
  QTest::newRow("tie to odd") << 0.375 << "0.38";
  QTest::newRow("below a tie") << 2.675 << "2.67";
  QTest::newRow("no negative zero") << -0.0039 << "0.00";
  QTest::newRow("carry") << 9.996 << "10.00";
  QTest::newRow("tie with carry") << 9.9951171875 << "10.00";
  QTest::newRow("largest reading") << 128.0 << "128.00";
  QTest::newRow("32769 of 65536") << -127.99609375 << "-128.00";
  QTest::newRow("large tie") << 1048576.125 << "1048576.13";
}

void TestNumbers::two_decimals() {
  QFETCH(double, value);
  QFETCH(QString, text);
  QCOMPARE(fixed2(value), text);
  QCOMPARE(rounded_to_2_decimals(value), text.toFloat());
}

// The written form must give the same 32 bits again, and be the shortest plain one.
void TestNumbers::floats_read_back_the_same() {
  const auto written = [](float value) {
    char text[shortest_float_size];
    return QString::fromLatin1(text, write_shortest_float(text, value) - text);
  };
  QCOMPARE(written(23.5F), "23.5");
  QCOMPARE(written(-5.0F), "-5");
  QCOMPARE(written(0.0F), "0");
  QCOMPARE(written(65.3F), "65.3");
  QCOMPARE(written(16777216.0F), "16777216");
  QCOMPARE(written(1e-5F), "0.00001");
  QCOMPARE(written(1e14F), "100000000000000");
  QCOMPARE(written(-123456789.0F), "-123456790");
  QCOMPARE(written(-0.0F), "-0");
  QCOMPARE(written(-0.07F), "-0.07");
  // Readings, which have two decimals, across the bound of the quick way for them.
  for (int hundredths = -6'600'000; hundredths <= 6'600'000; hundredths += 121) {
    const float value = static_cast<float>(hundredths) / 100.0F;
    char general[64];
    const auto end =
        std::to_chars(general, general + sizeof general, value, std::chars_format::fixed).ptr;
    QCOMPARE(written(value), QString::fromLatin1(general, end - general));
  }
  std::uint32_t bits = 1;
  for (int i = 0; i < 20000; ++i) {
    bits = bits * 1664525U + 1013904223U;
    float value = 0;
    memcpy(&value, &bits, sizeof value);
    if (!std::isfinite(value)) continue;
    const QString text = written(value);
    QVERIFY2(!text.contains(u'e'), qPrintable(text));
    const float again = text.toFloat();
    QVERIFY2(memcmp(&again, &value, sizeof value) == 0, qPrintable(text));
  }
}

void TestNumbers::numeric_texts_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<bool>("numeric");
  QTest::addColumn<double>("value");
  QTest::newRow("plain") << "25.5" << true << 25.5;
  QTest::newRow("blanks") << "  -10 " << true << -10.0;
  QTest::newRow("plus") << "+3" << true << 3.0;
  QTest::newRow("bare point") << ".5" << true << 0.5;
  QTest::newRow("exponent") << "1E+02" << true << 100.0;
  for (const char* text :
       {"", " ", "abc", "1,5", "12x", "0x10", "inf", "nan", "1e999", "+-1", "-", ".", "1 2", "٣"}) {
    QTest::newRow(text) << QString::fromUtf8(text) << false << 0.0;
  }
}

void TestNumbers::numeric_texts() {
  QFETCH(QString, text);
  QFETCH(bool, numeric);
  QFETCH(double, value);
  QCOMPARE(is_number(text), numeric);
  if (numeric) {
    QCOMPARE(to_double(text), value);
  } else {
    QVERIFY_THROWS_EXCEPTION(ConversionError, to_double(text));
  }
}

void TestNumbers::sixteen_bits_round_to_even_and_overflow() {
  QCOMPARE(to_int16(2.5), std::int16_t{2});
  QCOMPARE(to_int16(3.5), std::int16_t{4});
  QCOMPARE(to_int16(-32768.5), std::int16_t{-32768});
  QVERIFY_THROWS_EXCEPTION(ConversionError, to_int16(32767.5));
  QVERIFY_THROWS_EXCEPTION(ConversionError, to_int32(std::nan("")));
  QVERIFY_THROWS_EXCEPTION(ConversionError, to_float(u"1e39"));
  QCOMPARE(general_number(65.3F), "65.3");
  QCOMPARE(general_number(-127.99609375F), "-127.9961");
  QCOMPARE(whole_with_leading_blank(7), " 7");
}

void TestNumbers::stamps() {
  const QDateTime time = wall_time(2006, 14, 0, 25, 61, 5);
  QCOMPARE(stamp_text(time), "2007-02-01 02:01:05");
  QCOMPARE(stamp_time(stamp_text(time)), time);
  qputenv("TZ", "Europe/Berlin");  // leaves out an hour each spring
  QVERIFY(stamp_time(QStringLiteral("2024-03-31 02:30:00")).isValid());
  qunsetenv("TZ");
  QVERIFY(!stamp_time(QStringLiteral("1 Feb 2007 02:01:05")).isValid());
  QVERIFY(general_date_time_text(time).endsWith(QStringLiteral(" 02:01:05")));
}

namespace {
const int registered = register_test<TestNumbers>();
}

#include "test_numbers.moc"
