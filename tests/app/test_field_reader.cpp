#include <QTest>

#include <charconv>
#include <cmath>
#include <cstring>
#include <random>
#include <string>

#include "app/errors.h"
#include "app/field_reader.h"
#include "support/runner.h"

class TestFieldReader : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void texts_data();
  void texts();
  void refused_texts_data();
  void refused_texts();
  void numbers_data();
  void numbers();
  void the_quick_way_rounds_the_same();
  void whole_numbers_data();
  void whole_numbers();
  void a_refused_value_is_passed_over();
  void memory_of_a_text_is_used_again();
};

namespace {

constexpr int longest = 64 * 1024;

QStringList all_texts(const QByteArray& bytes) {
  FieldReader reader({bytes.constData(), static_cast<std::size_t>(bytes.size())});
  QStringList texts;
  while (stop_at_first_failure([&] { texts << reader.next_text(); })) {
  }
  return texts;
}

}  // namespace

void TestFieldReader::texts_data() {
  QTest::addColumn<QByteArray>("bytes");
  QTest::addColumn<QStringList>("texts");
  const QStringList abc = {"a", "b", "c"};
  QTest::newRow("lines") << QByteArray("\"a\"\r\n\"b\"\r\n\"c\"\r\n") << abc;
  QTest::newRow("commas") << QByteArray("\"a\",\"b\",\"c\"") << abc;
  QTest::newRow("line ends of other systems") << QByteArray("\"a\"\n\"b\"\r\"c\"\n") << abc;
  QTest::newRow("without quotes") << QByteArray("a, b \t,c") << abc;
  QTest::newRow("blanks around quotes") << QByteArray(" \"a\" ,\t\"b\"\t\r\n \"c\" ") << abc;
  QTest::newRow("blanks inside quotes") << QByteArray("\" a \"") << QStringList{" a "};
  QTest::newRow("separators inside quotes")
      << QByteArray("\"a,b\r\nc\",d") << QStringList{"a,b\r\nc", "d"};
  QTest::newRow("doubled quotes") << QByteArray("\"a\"\"b\",\"\"\"\",\"\"\"c\"\"\",\"\"")
                                  << QStringList{"a\"b", "\"", "\"c\"", ""};
  QTest::newRow("quote inside an unquoted text")
      << QByteArray("5\" pipe,b") << QStringList{"5\" pipe", "b"};
  QTest::newRow("empty fields") << QByteArray(",\r\n\r\n\"\"") << QStringList{"", "", "", ""};
  QTest::newRow("not ASCII") << QByteArray("\"23.5 °C\",\"冷\"\"库\",µ")
                             << QStringList{"23.5 °C", "冷\"库", "µ"};
  QTest::newRow("nothing") << QByteArray() << QStringList{};
  QTest::newRow("only blanks") << QByteArray("  \t") << QStringList{};
  const QString long_text(longest - 2, u'x');
  QTest::newRow("long") << u'"' + long_text.toLatin1() + "\"," + long_text.toLatin1()
                        << QStringList{long_text, long_text};
}

void TestFieldReader::texts() {
  QFETCH(QByteArray, bytes);
  QTEST(all_texts(bytes), "texts");
}

void TestFieldReader::refused_texts_data() {
  QTest::addColumn<QByteArray>("bytes");
  QTest::newRow("no partner") << QByteArray("\"a\r\nb\r\n");
  QTest::newRow("only a quote") << QByteArray("\"");
  QTest::newRow("doubled quote at the end") << QByteArray("\"a\"\"");
  QTest::newRow("text behind the quote") << QByteArray("\"a\"b,c");
  QTest::newRow("quote behind the quote") << QByteArray("\"a\" \"b\"");
  QTest::newRow("long without quotes") << QByteArray(longest + 1, 'x');
  QTest::newRow("long with quotes") << QByteArray('"' + QByteArray(longest + 1, 'x') + '"');
  QTest::newRow("long by doubled quotes") << QByteArray(4 * longest + 2, '"');
  QTest::newRow("zeros") << QByteArray(10'000'000, '\0');
}

void TestFieldReader::refused_texts() {
  QFETCH(QByteArray, bytes);
  QCOMPARE(all_texts(bytes), QStringList());
}

void TestFieldReader::numbers_data() {
  QTest::addColumn<QByteArray>("bytes");
  QTest::addColumn<bool>("taken");
  QTest::addColumn<float>("value");
  const auto taken = [](const char* text, float value) {
    QTest::newRow(text) << QByteArray(text) << true << value;
  };
  taken("23.5", 23.5F);
  taken("-5", -5.0F);
  taken("-0.00390625", -0.00390625F);
  taken("  65.3\t", 65.3F);
  taken("+1", 1.0F);
  taken(".5", 0.5F);
  taken("5.", 5.0F);
  taken("1.5E+01", 15.0F);
  taken("1e-60", 0.0F);
  taken("0000000000000000000000000000000000000000000000001", 1.0F);
  taken("3.4028235e38", 3.4028235e38F);
  taken("1,5x", 1.0F);
  for (const char* text : {"", "x", "\"5\"", "1.2.3", "5 6", "0x10", "1e39", "1e999", "inf", "nan",
                           "infinity", "--5", "-", "1;5"}) {
    QTest::newRow(*text ? text : "empty") << QByteArray(text) << false << 0.0F;
  }
}

// Each value stands once before a separator and once at the end of the input.
void TestFieldReader::numbers() {
  QFETCH(QByteArray, bytes);
  QFETCH(bool, taken);
  QFETCH(float, value);
  for (const char* end : {"", "\r\n7"}) {
    const std::string input = bytes.toStdString() + end;
    FieldReader reader(input);
    if (!taken) {
      QVERIFY_THROWS_EXCEPTION(RunTimeError, reader.next_float());
    } else {
      QCOMPARE(reader.next_float(), value);
    }
  }
}

// Decimals of any length, and those on and beside the middle between two floats, where rounding
// twice would show.
void TestFieldReader::the_quick_way_rounds_the_same() {
  std::mt19937 random(1);
  const auto check = [](double value, int decimals) {
    char text[64];
    const char* end =
        std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals).ptr;
    float general = 0;
    std::from_chars(text, end, general);
    const std::string_view field(text, static_cast<std::size_t>(end - text));
    const float quick = FieldReader(field).next_float();
    QVERIFY2(memcmp(&quick, &general, sizeof quick) == 0, std::string(field).c_str());
  };
  for (int i = 0; i < 20000; ++i) {
    const auto mantissa = static_cast<double>(random() >> 8);
    const double middle = std::ldexp(2.0 * mantissa + 1.0, -static_cast<int>(random() % 24));
    for (int decimals = 0; decimals < 10; ++decimals) check(-middle, decimals);
    check(middle + std::ldexp(middle, -50), 9);
    check(middle - std::ldexp(middle, -50), 9);
  }
}

void TestFieldReader::whole_numbers_data() {
  QTest::addColumn<QByteArray>("bytes");
  QTest::addColumn<bool>("short_one");  // fits 16 bits
  QTest::addColumn<bool>("long_one");   // fits 32 bits
  QTest::addColumn<int>("value");
  QTest::newRow("4") << QByteArray("4") << true << true << 4;
  QTest::newRow("-32768") << QByteArray(" -32768 ") << true << true << -32768;
  QTest::newRow("32768") << QByteArray("32768") << false << true << 32768;
  QTest::newRow("2147483647") << QByteArray("2147483647") << false << true << 2147483647;
  QTest::newRow("2147483648") << QByteArray("2147483648") << false << false << 0;
  QTest::newRow("quoted") << QByteArray("\"4\"") << false << false << 0;
  QTest::newRow("letters") << QByteArray("four") << false << false << 0;
  QTest::newRow("empty") << QByteArray(",4") << false << false << 0;
}

void TestFieldReader::whole_numbers() {
  QFETCH(QByteArray, bytes);
  QFETCH(bool, short_one);
  QFETCH(bool, long_one);
  QFETCH(int, value);
  const std::string input = bytes.toStdString();
  std::int32_t read = 0;
  QCOMPARE(stop_at_first_failure([&] { read = FieldReader(input).next_int16(); }), short_one);
  QCOMPARE(read, short_one ? value : 0);
  read = 0;
  QCOMPARE(stop_at_first_failure([&] { read = FieldReader(input).next_int32(); }), long_one);
  QCOMPARE(read, long_one ? value : 0);
}

void TestFieldReader::a_refused_value_is_passed_over() {
  FieldReader reader("x,\"5\"\r\ninf,1e39\r\n7");
  for (int i = 0; i < 4; ++i) QVERIFY_THROWS_EXCEPTION(ConversionError, reader.next_float());
  QCOMPARE(reader.next_int16(), std::int16_t{7});
  QVERIFY_THROWS_EXCEPTION(FileError, reader.next_float());
  QVERIFY_THROWS_EXCEPTION(FileError, reader.next_int32());
  QVERIFY_THROWS_EXCEPTION(FileError, reader.next_text());
}

void TestFieldReader::memory_of_a_text_is_used_again() {
  const std::string input = "\"2006-05-12 13:45:30\",\"short\",\"open";
  FieldReader reader(input);
  QString text;
  reader.next_text(text);
  const QString shared = text;
  const QChar* const memory = shared.constData();
  reader.next_text(text);
  QCOMPARE(shared, "2006-05-12 13:45:30");  // a copy that a view holds is not written over
  QCOMPARE(text, "short");
  QVERIFY(text.constData() != memory);
  QVERIFY_THROWS_EXCEPTION(FileError, reader.next_text(text));
  QCOMPARE(text, "short");
}

namespace {
const int registered = register_test<TestFieldReader>();
}

#include "test_field_reader.moc"
