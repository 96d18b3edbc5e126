#include <charconv>
#include <cmath>
#include <random>

#include "app/errors.h"
#include "app/field_reader.h"
#include "support/runner.h"

namespace {

constexpr int longest = 64 * 1024;

// All texts up to the end or the first that is refused, with "|" between them.
QString texts(const QByteArray& bytes) {
  FieldReader reader({bytes.constData(), static_cast<std::size_t>(bytes.size())});
  QStringList result;
  while (stop_at_first_failure([&] { result << reader.next_text(); })) {
  }
  return result.join('|');
}

}  // namespace

class TestFieldReader : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void texts_are_taken_apart() {
    for (const char* bytes :
         {"\"a\"\r\n\"b\"\r\n\"c\"\r\n", "\"a\",\"b\",\"c\"", "\"a\"\n\"b\"\r\"c\"\n", "a, b \t,c",
          " \"a\" ,\t\"b\"\t\r\n \"c\" "}) {
      QCOMPARE(texts(bytes), "a|b|c");
    }
    QCOMPARE(texts("\" a \",\"a,b\r\nc\",d,5\" pipe"), " a |a,b\r\nc|d|5\" pipe");
    QCOMPARE(texts("\"a\"\"b\",\"\"\"\",\"\"\"c\"\"\",\"\""), "a\"b|\"|\"c\"|");
    QCOMPARE(texts(",\r\n\r\n\"\""), "|||");
    QCOMPARE(texts("\"23.5 °C\",\"冷\"\"库\",µ"), "23.5 °C|冷\"库|µ");
    const QByteArray text(longest - 2, 'x');
    QCOMPARE(texts('"' + text + "\"," + text), text + '|' + text);
    for (const QByteArray& bytes :
         {QByteArray("  \t"), QByteArray("\"a\r\nb\r\n"), QByteArray("\"a\"\""),
          QByteArray("\"a\"b,c"), QByteArray("\"a\" \"b\""), text + "xxx", '"' + text + "xxx\"",
          QByteArray(4 * longest + 2, '"'), QByteArray(10'000'000, '\0')}) {
      QCOMPARE(texts(bytes), "");
    }
  }

  // Each value stands once before a separator and once at the end of the input.
  void numbers() {
    using Case = std::pair<const char*, float>;
    for (const auto& [text, value] :
         {Case("-0.00390625", -0.00390625F), Case("  65.3\t", 65.3F), Case("+1", 1.0F),
          Case(".5", 0.5F), Case("5.", 5.0F), Case("1.5E+01", 15.0F), Case("1e-60", 0.0F),
          Case("00000000000000000000000001", 1.0F), Case("3.4028235e38", 3.4028235e38F)}) {
      QCOMPARE(FieldReader(text).next_float(), value);
      QCOMPARE(FieldReader(std::string(text) + "\r\n7").next_float(), value);
    }
    for (const char* text : {"", "x", "\"5\"", "1.2.3", "5 6", "0x10", "1e39", "inf", "--5", "-"}) {
      FieldReader line(text);
      QVERIFY_THROWS_EXCEPTION(RunTimeError, line.next_float());
    }
    FieldReader reader("x,\"5\"\r\ninf,1e39\r\n7");
    for (int i = 0; i < 4; ++i) QVERIFY_THROWS_EXCEPTION(ConversionError, reader.next_float());
    QCOMPARE(reader.next_int16(), std::int16_t{7});
    QVERIFY_THROWS_EXCEPTION(FileError, reader.next_float());
    QCOMPARE(FieldReader(" -32768 ").next_int16(), std::int16_t{-32768});
    QVERIFY_THROWS_EXCEPTION(ConversionError, FieldReader("32768").next_int16());
    QCOMPARE(FieldReader("2147483647").next_int32(), 2147483647);
    QVERIFY_THROWS_EXCEPTION(ConversionError, FieldReader("2147483648").next_int32());
  }

  // Decimals of any length, and those on and beside the middle between two floats, where rounding
  // twice would show.
  void the_quick_way_rounds_the_same() {
    std::mt19937 random(1);
    const auto check = [](double value, int decimals) {
      char text[64] = {};
      std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
      float general = 0;
      std::from_chars(text, text + sizeof text, general);
      QVERIFY2(FieldReader(text).next_float() == general, text);
    };
    for (int i = 0; i < 20000; ++i) {
      const auto mantissa = static_cast<double>(random() >> 8);
      const double middle = std::ldexp(2.0 * mantissa + 1.0, -static_cast<int>(random() % 24));
      for (int decimals = 0; decimals < 10; ++decimals) check(-middle, decimals);
      for (const double side : {1.0, -1.0}) check(middle + side * std::ldexp(middle, -50), 9);
    }
  }

  void memory_of_a_text_is_used_again() {
    FieldReader reader("\"2006-05-12 13:45:30\",\"short\",\"open");
    QString text;
    reader.next_text(text);
    const QString shared = text;
    reader.next_text(text);
    QCOMPARE(shared, "2006-05-12 13:45:30");  // a copy that a view holds is not written over
    QVERIFY_THROWS_EXCEPTION(FileError, reader.next_text(text));
    QCOMPARE(text, "short");
  }
};

const int registered = register_test<TestFieldReader>();

#include "test_field_reader.moc"
