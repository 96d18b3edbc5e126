// Numbers, times and the fields of data files as text.
#include <bit>
#include <charconv>
#include <cmath>
#include <random>

#include "base/clock.h"
#include "base/errors.h"
#include "base/field_reader.h"
#include "base/numbers.h"
#include "base/times.h"
#include "support/runner.h"

namespace {

using Case = std::pair<double, const char*>;

constexpr int longest = 64 * 1024;

// All texts up to the end or the first refused one, joined by "|".
QString texts(const QByteArray& bytes) {
  FieldReader reader({bytes.constData(), static_cast<std::size_t>(bytes.size())});
  QStringList result;
  while (stop_at_first_failure([&] { result << reader.next_text(); })) {
  }
  return result.join('|');
}

// The value as the standard library writes it: in the shortest plain form, or with `decimals`.
template <class Real>
QByteArray plain(Real value, auto... decimals) {
  char text[400];
  return {text,
          std::to_chars(text, text + 400, value, std::chars_format::fixed, decimals...).ptr - text};
}

}  // namespace

class TestTexts : public QObject {
  Q_OBJECT

  std::mt19937 random_{1};  // the same in every run

 private Q_SLOTS:
  // Rounds ties away from zero, takes no other value for a tie, and gives no negative zero.
  void two_decimals() {
    for (const auto& [value, text] :
         {Case(-0.125, "-0.13"), Case(0.375, "0.38"), Case(2.675, "2.67"), Case(-0.0039, "0.00"),
          Case(9.9951171875, "10.00"), Case(1048576.125, "1048576.13")}) {
      QCOMPARE(fixed2(value), text);
      QCOMPARE(rounded_to_2_decimals(value), QString(text).toFloat());
    }
    // The fast form must agree with the exact one for every float, giants included. A reading is a
    // multiple of 1/256; every 32nd multiple of 1/4096 is a tie.
    for (int i = 0; i < 40000; ++i) {
      const auto bits = static_cast<std::uint32_t>(random_());
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
      return QByteArray(text, write_shortest_float(text, value) - text);
    };
    for (const auto& [value, text] : {Case(16777216.0F, "16777216"), Case(1e-5F, "0.00001"),
                                      Case(-123456789.0F, "-123456790"), Case(-0.0F, "-0")}) {
      QCOMPARE(written(float(value)), text);
    }
    // Readings have two decimals. These lie on both sides of the quick way's bound.
    for (int hundredths = -6'600'000; hundredths <= 6'600'000; hundredths += 121) {
      const float value = static_cast<float>(hundredths) / 100.0F;
      QCOMPARE(written(value), plain(value));
    }
    for (int i = 0; i < 20000; ++i) {
      const auto bits = static_cast<std::uint32_t>(random_());
      const auto value = std::bit_cast<float>(bits);
      if (!std::isfinite(value)) continue;
      const QByteArray text = written(value);
      QVERIFY2(!text.contains('e') && std::bit_cast<std::uint32_t>(text.toFloat()) == bits, text);
    }
  }

  void times() {
    const QDateTime time = wall_time({2006, 14, 0, 25, 61, 5});
    QCOMPARE(stamp_text(time), "2007-02-01 02:01:05");
    QCOMPARE(stamp_time(stamp_text(time)), time);
    qputenv("TZ", "Europe/Berlin");  // skips an hour each spring
    QVERIFY(stamp_time("2024-03-31 02:30:00").isValid());
    // The program's times are local wall-clock times.
    qputenv("TZ", "Asia/Tokyo");
    const QDateTime utc = QDateTime::currentDateTimeUtc();
    QCOMPARE(qRound(double(utc.secsTo(SystemClock().now())) / 3600), 9);
    qunsetenv("TZ");
    for (const char* text : {"1 Feb 2007 02:01:05", "2007-02)01 02:01:05", "2007-02-01T02:01:05"}) {
      QVERIFY2(!stamp_time(text).isValid(), text);
    }
  }

  // In every locale, a written time can be read back, and no letter of the format is left in it.
  void general_times() {
    for (const QLocale& locale : QLocale::matchingLocales({}, {}, {})) {
      for (const int minutes : {0, 12 * 60, 22 * 60 + 30, 90 * 24 * 60 + 11 * 60}) {
        const QDateTime time = wall_time({2026, 3, 1, 0, minutes, 5});
        const QString text = general_date_time_text(time, locale);
        QVERIFY2(date_time_of(text, locale) == time, qPrintable(locale.name() + ' ' + text));
        QVERIFY2(locale.language() != QLocale::Chinese || !text.contains('B'), qPrintable(text));
      }
    }
    QCOMPARE(general_date_time_text(wall_time({2026, 3, 1, 22, 0, 5}), QLocale("zh_TW")),
             "2026/3/1 22:00:05");
    for (const char* text : {"", "1 Feb 2007", "1 Feb 2007 02:01:", "31 Feb 2007 02:01:05",
                             "1 Feb 2007 02:01:05 x", "1 Feb 2007 24:00:00"}) {
      QVERIFY2(!date_time_of(text, QLocale::c()).isValid(), text);
    }
  }

  void fields_are_taken_apart() {
    for (const char* bytes :
         {"\"a\"\r\n\"b\"\r\n\"c\"\r\n", "\"a\",\"b\",\"c\"", "\"a\"\n\"b\"\r\"c\"\n", "a, b \t,c",
          " \"a\" ,\t\"b\"\t\r\n \"c\" "}) {
      QCOMPARE(texts(bytes), "a|b|c");
    }
    QCOMPARE(texts("\" a \",\"a,b\r\nc\",d,5\" pipe"), " a |a,b\r\nc|d|5\" pipe");
    QCOMPARE(texts("\"a\"\"b\",\"\"\"\",\"\"\"c\"\"\",\"\""), "a\"b|\"|\"c\"|");
    QCOMPARE(texts(",\r\n\r\n\"\""), "|||");
    QCOMPARE(texts("\"23.5 °C\",\"冷\"\"库\",µ"), "23.5 °C|冷\"库|µ");
    // A character that stands for a lost one is a character like any other.
    QCOMPARE(texts("冷\xEF\xBF\xBD库"), "冷\uFFFD库");
    // The first is not UTF-8; the second is not valid in the user's code page either.
    QCOMPARE(texts("\"K\xFChl\",\xC2\xB5"), "Kühl|Âµ");
    QCOMPARE(texts("K\x81hl"), "K\u0081hl");
    const QByteArray text(longest - 2, 'x');
    QCOMPARE(texts('"' + text + "\"," + text), text + '|' + text);
    for (const QByteArray& bytes :
         {QByteArray("  \t"), QByteArray("\"a\r\nb\r\n"), QByteArray("\"a\"\""),
          QByteArray("\"a\"\"b,c"), QByteArray("\"a\" \"b\""), text + "xxx", '"' + text + "xxx\"",
          QByteArray(4 * longest + 2, '"'), QByteArray(10'000'000, '\0')}) {
      QCOMPARE(texts(bytes), "");
    }
  }

  void code_pages() {
    using Bytes = std::tuple<const char*, const char*, const char*>;
    for (const auto& [locale, bytes, text] :
         {Bytes("zh_CN", "\xC0\xE4\xBF\xE2", "冷库"), Bytes("zh_TW", "\xAE\x77", "庫"),
          Bytes("ja_JP", "\x89\xB7", "温"), Bytes("ko_KR", "\xBF\xC2", "온"),
          Bytes("ru_RU", "\xF1\xEA\xEB", "скл"), Bytes("pl_PL", "\xB3", "ł"),
          Bytes("th_TH", "\xCB", "ห"), Bytes("de_DE", "\x80", "€"), Bytes("C", "\xB0", "°")}) {
      QStringDecoder decoder(code_page(QLocale(locale)));
      QCOMPARE(QString(decoder(bytes)), text);
    }
  }

  // Numbers before a separator, at the end of the input, and as typed.
  void numbers() {
    for (const auto& [value, text] :
         {Case(-0.00390625, "-0.00390625"), Case(65.3F, "  65.3\t"), Case(1, "+1"), Case(0.5, ".5"),
          Case(5, "5."), Case(15, "1.5E+01"), Case(0, "1e-60"), Case(0, "1e-400"),
          Case(0, "0.0e999"), Case(1, "00000000000000000000000001"),
          Case(3.4028235e38F, "3.4028235e38")}) {
      QCOMPARE(FieldReader(std::string(text) + "\r\n7").next_float(), float(value));
      QCOMPARE(FieldReader(text).next_float(), float(value));
      QCOMPARE(to_float(QString(text)), float(value));
    }
    for (const char* text : {"x", "\"5\"", "12x", "0x10", "inf", "1e39", "1.2.3", "5 6", "--5",
                             "+-1", "-", ".", "٣"}) {
      QVERIFY_THROWS_EXCEPTION(ConversionError, FieldReader(text).next_float());
      QVERIFY_THROWS_EXCEPTION(ConversionError, to_float(QString(text)));
    }
    QVERIFY(!is_number(u"") && !is_number(u" ") && !is_number(u"1,5") && !is_number(u"1e999"));
    QVERIFY(to_int16(2.5) == 2 && to_int16(3.5) == 4 && to_int16(-32768.5) == -32768);
    QVERIFY_THROWS_EXCEPTION(ConversionError, to_int16(32767.5));
    QVERIFY_THROWS_EXCEPTION(ConversionError, to_int32(std::nan("")));
    QCOMPARE(general_number(65.3F) + general_number(-127.99609375F), "65.3-127.9961");
    FieldReader reader("x,32768\r\n-32768");
    QVERIFY_THROWS_EXCEPTION(ConversionError, reader.next_float());
    QVERIFY_THROWS_EXCEPTION(ConversionError, reader.next_int16());
    QCOMPARE(reader.next_int16(), std::int16_t{-32768});
    QVERIFY_THROWS_EXCEPTION(FileError, reader.next_float());
    QCOMPARE(FieldReader("2147483647").next_int32(), 2147483647);
    QVERIFY_THROWS_EXCEPTION(ConversionError, FieldReader("2147483648").next_int32());
  }

  // Decimals of many lengths, on and beside the middle between two floats, where rounding twice
  // would give another result.
  void the_quick_way_rounds_the_same() {
    const auto check = [](double value, int decimals) {
      const QByteArray text = plain(value, decimals);
      float general = 0;
      std::from_chars(text.begin(), text.end(), general);
      QVERIFY2(FieldReader(text.toStdString()).next_float() == general, text);
    };
    for (int i = 0; i < 20000; ++i) {
      const auto mantissa = static_cast<double>(random_() >> 8);
      const double middle = std::ldexp(2.0 * mantissa + 1.0, -static_cast<int>(random_() % 24));
      for (int decimals = 0; decimals < 16; ++decimals) check(-middle, decimals);
      for (const double side : {1.0, -1.0}) check(middle + side * std::ldexp(middle, -50), 9);
    }
  }
};

const int registered = register_test<TestTexts>();

#include "test_texts.moc"
