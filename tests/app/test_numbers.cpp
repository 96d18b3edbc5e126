#include <bit>
#include <charconv>
#include <cmath>

#include "app/errors.h"
#include "app/numbers.h"
#include "app/times.h"
#include "support/runner.h"

class TestNumbers : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  // Ties away from zero, none by accident, no negative zero.
  void two_decimals() {
    using Case = std::pair<double, const char*>;
    for (const auto& [value, text] :
         {Case(-0.125, "-0.13"), Case(0.375, "0.38"), Case(2.675, "2.67"), Case(-0.0039, "0.00"),
          Case(9.9951171875, "10.00"), Case(1048576.125, "1048576.13")}) {
      QCOMPARE(fixed2(value), text);
      QCOMPARE(rounded_to_2_decimals(value), QString(text).toFloat());
    }
  }

  // The fast form must agree with the exact one for every float, ties and giants included.
  void readings_with_two_decimals() {
    std::uint32_t bits = 7;
    for (int i = 0; i < 40000; ++i) {
      bits = bits * 1664525U + 1013904223U;
      // A reading is a multiple of 1/256; every 32nd multiple of 1/4096 is a tie.
      const float reading = static_cast<float>(static_cast<std::int32_t>(bits) >> 12) / 4096.0F;
      for (const float value : {std::bit_cast<float>(bits), reading}) {
        char16_t text[fixed2_size];
        QCOMPARE(QString::fromUtf16(text, write_fixed2(text, value) - text),
                 fixed2(static_cast<double>(value)));
      }
    }
  }

  // The written form must give the same 32 bits again, and be the shortest plain one.
  void floats_read_back_the_same() {
    const auto written = [](float value) {
      char text[shortest_float_size];
      return QString::fromLatin1(text, write_shortest_float(text, value) - text);
    };
    using Case = std::pair<float, const char*>;
    for (const auto& [value, text] : {Case(16777216.0F, "16777216"), Case(1e-5F, "0.00001"),
                                      Case(-123456789.0F, "-123456790"), Case(-0.0F, "-0")}) {
      QCOMPARE(written(value), text);
    }
    // Readings, which have two decimals, across the bound of the quick way for them.
    for (int hundredths = -6'600'000; hundredths <= 6'600'000; hundredths += 121) {
      const float value = static_cast<float>(hundredths) / 100.0F;
      char general[64];
      *std::to_chars(general, general + sizeof general, value, std::chars_format::fixed).ptr = '\0';
      QCOMPARE(written(value), general);
    }
    std::uint32_t bits = 1;
    for (int i = 0; i < 20000; ++i) {
      bits = bits * 1664525U + 1013904223U;
      const auto value = std::bit_cast<float>(bits);
      if (!std::isfinite(value)) continue;
      const QString text = written(value);
      QVERIFY2(!text.contains('e') && std::bit_cast<std::uint32_t>(text.toFloat()) == bits,
               qPrintable(text));
    }
  }

  void other_forms() {
    using Case = std::pair<const char*, double>;
    for (const auto& [text, value] :
         {Case("  -10 ", -10.0), Case("+3", 3.0), Case(".5", 0.5), Case("1E+02", 100.0)}) {
      QCOMPARE(to_double(QString(text)), value);
    }
    for (const char* text :
         {"", " ", "abc", "1,5", "12x", "0x10", "inf", "1e999", "+-1", ".", "٣"}) {
      QVERIFY2(!is_number(QString(text)), text);
    }
    QVERIFY_THROWS_EXCEPTION(ConversionError, to_double(u"x"));
    QVERIFY_THROWS_EXCEPTION(ConversionError, to_float(u"1e39"));
    QVERIFY(to_int16(2.5) == 2 && to_int16(3.5) == 4 && to_int16(-32768.5) == -32768);
    QVERIFY_THROWS_EXCEPTION(ConversionError, to_int16(32767.5));
    QVERIFY_THROWS_EXCEPTION(ConversionError, to_int32(std::nan("")));
    QCOMPARE(general_number(65.3F) + general_number(-127.99609375F), "65.3-127.9961");
    QCOMPARE(whole_with_leading_blank(7), " 7");
  }

  void times() {
    const QDateTime time = wall_time(2006, 14, 0, 25, 61, 5);
    QCOMPARE(stamp_text(time), "2007-02-01 02:01:05");
    QCOMPARE(stamp_time(stamp_text(time)), time);
    qputenv("TZ", "Europe/Berlin");  // leaves out an hour each spring
    QVERIFY(stamp_time("2024-03-31 02:30:00").isValid());
    qunsetenv("TZ");
    for (const char* text : {"1 Feb 2007 02:01:05", "2007-02)01 02:01:05", "2007-02-01T02:01:05"}) {
      QVERIFY2(!stamp_time(text).isValid(), text);
    }
  }
};

const int registered = register_test<TestNumbers>();

#include "test_numbers.moc"
