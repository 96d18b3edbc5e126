#include <QRandomGenerator>
#include <QTest>

#include "simulator/recorder.h"
#include "support/runner.h"

using simulator::Answer;
using simulator::Recorder;
using simulator::Settings;

namespace {

const QDateTime noon(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC);

// A stopped recorder whose every byte is known.
Settings known_settings() {
  Settings settings;
  settings.readings = 200;
  settings.mask = 0x05;
  settings.interval_s = 300;
  settings.start = QDateTime(QDate(2006, 5, 3), QTime(14, 5, 9), Qt::UTC);
  settings.elapsed_s = 700;
  settings.running = false;
  settings.wrap = true;
  settings.delay_s = 3600;
  settings.title = QStringLiteral("AB");
  settings.description = QStringLiteral("温 cellar");
  settings.battery_volts = 2.5;
  settings.limits[1] = {-10.5, 25.5};
  settings.signal = [](std::int64_t n, int channel) {
    return static_cast<std::uint16_t>(n == noon.toSecsSinceEpoch() ? 0x7FFF + channel
                                                                   : n + 0x100L * channel);
  };
  return settings;
}

// The one answer to a request given without its address byte; empty when there is none.
QByteArray ask(Recorder& recorder, const QByteArray& request, const QDateTime& now = noon) {
  const auto answers = recorder.receive('\0' + request, now);
  return answers.size() == 1 ? answers.front().bytes : QByteArray();
}

QByteArray hex(const char* text) {
  return QByteArray::fromHex(text);
}

int word(const QByteArray& bytes, qsizetype index) {
  return static_cast<unsigned char>(bytes.at(index)) +
         256 * static_cast<unsigned char>(bytes.at(index + 1));
}

QByteArray with_check(const QByteArray& request) {
  char check = 0;
  for (const char byte : request) check = static_cast<char>(check ^ byte);
  return request + check;
}

QByteArray block(Recorder& recorder, int number, const QDateTime& now = noon) {
  return ask(recorder, with_check(QByteArray("\x01\x01") + static_cast<char>(number)), now);
}

QByteArray write_pattern(int flags, int mask, int delay_s, int interval_code) {
  QByteArray request = hex("050f");
  for (const int byte : {flags, mask, 26, 3, 1, 12, 0, 0, delay_s % 256, delay_s / 256,
                         interval_code % 256, interval_code / 256, 0x10, 0x27}) {
    request += static_cast<char>(byte);
  }
  return with_check(request);
}

}  // namespace

class TestRecorder : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void answers_data();
  void answers();
  void silence_for_what_is_no_request_data();
  void silence_for_what_is_no_request();
  void blocks_data();
  void blocks();
  void written_is_read_back();
  void written_pattern_starts_afresh();
  void channels_it_lacks_leave_the_mask();
  void memory_grows_while_running();
  void full_memory_stops_or_wraps();
  void requests_in_pieces_and_in_a_row();
  void a_silence_forgets_half_requests();
  void random_bytes();
};

void TestRecorder::answers_data() {
  QTest::addColumn<QByteArray>("request");
  QTest::addColumn<QByteArray>("answer");
  QTest::newRow("status") << hex("000000") << hex("00000a 000a ff7f 0080 0180 0280") + '\x8b';
  QTest::newRow("properties") << hex("020002")
                              << hex("020012 44 05 060503 0e0509 100e 2b01 007d bc02 c800 00");
  QTest::newRow("description") << hex("080008")
                               << hex("080040 41004200") + QByteArray(12, '\0') +
                                      hex("296e 2000 6300 6500 6c00 6c00 6100 7200") +
                                      QByteArray(32, '\0') + '\x00';
  QTest::newRow("limits") << hex("0a010209") << hex("0a0004 80f5 8019 e8");
  QTest::newRow("limits, whole degrees") << hex("0a010108") << hex("0a0004 00d8 0055 89");
  QTest::newRow("start") << hex("07010107") << hex("070001 00 01");
  QTest::newRow("stop") << hex("07010006") << hex("070001 00 01");
  QTest::newRow("write limits") << hex("0b06020080f58019e3") << hex("0b0001 00 01");
  QTest::newRow("block beyond the memory")
      << hex("01010200") << hex("010000") + QByteArray(257, '\0');
}

void TestRecorder::answers() {
  QFETCH(QByteArray, request);
  QFETCH(QByteArray, answer);
  Recorder recorder(known_settings(), noon);
  const QByteArray got = ask(recorder, with_check(request.chopped(1)));
  char check = 0;
  for (qsizetype i = 1; i < got.size(); ++i) check = static_cast<char>(check ^ got.at(i));
  QCOMPARE(check, '\0');
  QCOMPARE(got.chopped(1).toHex(' '), answer.chopped(1).toHex(' '));
}

void TestRecorder::silence_for_what_is_no_request_data() {
  QTest::addColumn<QByteArray>("bytes");
  QTest::newRow("wrong check byte") << hex("00 02 00 03");
  QTest::newRow("other address") << hex("01 02 00 02");
  QTest::newRow("no address") << hex("02 00 02");
  QTest::newRow("unknown command") << hex("00 03 00 03");
  QTest::newRow("unknown command with parameters") << hex("00 0c 02 00 00 0e");
  QTest::newRow("wrong second byte") << hex("00 01 02 05 06");
  QTest::newRow("limits of no channel") << hex("00 0a 01 00 0b");
  QTest::newRow("limits of channel 5") << hex("00 0a 01 05 0e");
  QTest::newRow("neither start nor stop") << hex("00 07 01 02 04");
}

// And the next request is understood at once.
void TestRecorder::silence_for_what_is_no_request() {
  QFETCH(QByteArray, bytes);
  Recorder recorder(known_settings(), noon);
  for (const Answer& answer : recorder.receive(bytes, noon)) {
    QCOMPARE(answer.bytes, QByteArray());
    QVERIFY(!answer.remark.isEmpty());
  }
  QCOMPARE(ask(recorder, hex("020002"), noon.addSecs(1)).size(), 22);
}

void TestRecorder::blocks_data() {
  QTest::addColumn<int>("mask");
  QTest::addColumn<int>("readings");
  for (const int mask : {0x01, 0x08, 0x05, 0x0E, 0x0F}) {
    for (const int readings : {1, 12, 127, 128, 129, 200, 384, 3000, 31998, 32000}) {
      QTest::addRow("mask %d, %d readings", mask, readings) << mask << readings;
    }
  }
}

// Reads every block the way a download does, counting back from the end of the data, and finds each
// whole sample of the memory once, in its place, but for those that a block's border cuts.
void TestRecorder::blocks() {
  QFETCH(int, mask);
  QFETCH(int, readings);
  Settings settings;
  settings.mask = static_cast<unsigned>(mask);
  settings.readings = readings;
  settings.running = false;
  Recorder recorder(settings, noon);
  QCOMPARE(word(ask(recorder, hex("020002")), 19), readings);

  std::vector<int> slots;
  for (int channel = 0; channel < 4; ++channel) {
    if (mask & (1 << channel)) slots.push_back(channel);
  }
  const int channels = static_cast<int>(slots.size());
  const int taken = (readings + channels - 1) / channels;
  const int segments = (readings + 127) / 128;
  for (int number = 0; number < segments; ++number) {
    const QByteArray answer = block(recorder, number);
    QCOMPARE(answer.size(), 260);
    const bool full = answer.at(1) != 0;
    QCOMPARE(full, (number + 1) * 128 <= readings);
    const int length = full ? 256 : static_cast<unsigned char>(answer.at(2));
    // The samples that lie wholly in the block, counted back from the newest.
    const int newest = (number * 128 + channels - 1) / channels;
    const int beyond = std::min(number * 128 + 128, readings) / channels;
    QCOMPARE(length / (2 * channels), full ? 128 / channels : std::max(0, beyond - newest));
    for (int j = 0; j < length / (2 * channels); ++j) {
      const std::int64_t n = taken - beyond + j;
      for (int c = 0; c < channels; ++c) {
        const qsizetype at = length + 3 + 2 * c - 2 * channels * (j + 1);
        QCOMPARE(word(answer, at), simulator::demo_signal(n, slots[static_cast<std::size_t>(c)]));
      }
    }
  }
  QCOMPARE(block(recorder, segments).mid(1, 2), hex("0000"));
}

void TestRecorder::written_is_read_back() {
  Settings settings = known_settings();
  settings.faults = {*simulator::fault_from_text("silent:request=1")};
  Recorder recorder(settings, noon);
  QCOMPARE(ask(recorder, with_check(hex("0b06 03 00 1122 3344"))).size(), 0);
  QByteArray texts;
  for (int i = 0; i < 64; ++i) texts += static_cast<char>(200 + i);
  QCOMPARE(ask(recorder, with_check(hex("0940") + texts)).size(), 5);
  QCOMPARE(ask(recorder, hex("080008")).mid(3, 64), texts);

  QCOMPARE(ask(recorder, with_check(hex("0b06 04 00 01ff 7f80"))).size(), 5);
  QCOMPARE(ask(recorder, hex("0a01040f")).mid(3, 4), hex("01ff7f80"));
  QCOMPARE(ask(recorder, hex("0a010308")).mid(3, 4), hex("00d80055"));

  const QByteArray pattern = write_pattern(0x40, 0x0B, 258, 65535);
  QCOMPARE(ask(recorder, pattern).size(), 5);
  QCOMPARE(ask(recorder, hex("020002")).mid(3, 14).toHex(' '), pattern.mid(2, 14).toHex(' '));
}

// The start bits 0x88 start it; what tells that it runs is bit 0x02.
void TestRecorder::written_pattern_starts_afresh() {
  Recorder recorder(known_settings(), noon);
  const auto flags = [&](const QDateTime& now) {
    return static_cast<int>(ask(recorder, hex("020002"), now).at(3));
  };
  ask(recorder, write_pattern(0x88, 0x0F, 0, 9));
  QCOMPARE(flags(noon), 0x02);
  QCOMPARE(recorder.readings(noon), 0);
  QCOMPARE(recorder.readings(noon.addSecs(25)), 8);

  ask(recorder, write_pattern(0xCC, 0x03, 60, 9), noon.addSecs(30));
  QCOMPARE(flags(noon.addSecs(30)), 0x46);
  QCOMPARE(recorder.readings(noon.addSecs(99)), 0);
  QCOMPARE(recorder.readings(noon.addSecs(100)), 2);

  ask(recorder, write_pattern(0x00, 0x0F, 0, 9), noon.addSecs(120));
  QCOMPARE(flags(noon.addSecs(120)), 0x00);
  ask(recorder, hex("07010107"), noon.addSecs(130));
  QCOMPARE(flags(noon.addSecs(130)), 0x02);
  ask(recorder, hex("07010107"), noon.addSecs(138));
  ask(recorder, hex("07010006"), noon.addSecs(145));
  QCOMPARE(flags(noon.addSecs(300)), 0x00);
  QCOMPARE(recorder.readings(noon.addSecs(300)), 4);
}

void TestRecorder::channels_it_lacks_leave_the_mask() {
  Settings settings = known_settings();
  settings.channels = 2;
  settings.mask = 0x0F;
  Recorder recorder(settings, noon);
  QCOMPARE(ask(recorder, hex("020002")).at(4), '\x03');
  QCOMPARE(ask(recorder, hex("000000")).size(), 10);
  ask(recorder, write_pattern(0x88, 0x0E, 0, 0));
  QCOMPARE(ask(recorder, hex("020002")).at(4), '\x02');
  QCOMPARE(recorder.readings(noon.addSecs(5)), 5);
  ask(recorder, write_pattern(0x88, 0x0C, 0, 0));
  QCOMPARE(recorder.readings(noon.addSecs(5)), 0);
}

// A download under way sees the memory as it stood when it asked for the properties.
void TestRecorder::memory_grows_while_running() {
  Settings settings;
  settings.readings = 400;
  settings.elapsed_s = 80;
  Recorder recorder(settings, noon);
  const QByteArray before = ask(recorder, hex("020002"), noon.addSecs(39));
  QCOMPARE(word(before, 19), 400);
  QCOMPARE(word(before, 17), 119);
  // 100 samples a minute apart, the last 80 s before noon: started at 10:18:40.
  QCOMPARE(before.mid(5, 6), hex("1a03010a1228"));
  const QDateTime later = noon.addSecs(161);
  QCOMPARE(word(block(recorder, 0, later), 3), simulator::demo_signal(99, 0));
  const QByteArray after = ask(recorder, hex("020002"), later);
  QCOMPARE(word(after, 19), 408);
  QCOMPARE(word(after, 17), 41);
  QCOMPARE(word(block(recorder, 0, later), 3), simulator::demo_signal(101, 0));
}

void TestRecorder::full_memory_stops_or_wraps() {
  Settings settings;
  settings.mask = 0x07;
  settings.readings = 31995;
  settings.interval_s = 1;
  for (const bool wrap : {false, true}) {
    settings.wrap = wrap;
    Recorder recorder(settings, noon);
    QVERIFY(recorder.running(noon));
    const QDateTime later = noon.addSecs(10);
    QCOMPARE(recorder.readings(later), wrap ? 32000 : 31998);
    QCOMPARE(recorder.running(later), wrap);
    QCOMPARE(word(ask(recorder, hex("020002"), later), 17), wrap ? 0 : 9);
    QCOMPARE(word(block(recorder, 0, later), 7), simulator::demo_signal(wrap ? 10674 : 10665, 0));
  }
}

void TestRecorder::requests_in_pieces_and_in_a_row() {
  Recorder recorder(known_settings(), noon);
  QDateTime now = noon;
  std::vector<Answer> answers;
  for (const char byte : hex("00 00 00 00 ff 00 0a 01 02 09")) {
    now = now.addMSecs(20);
    for (const Answer& answer : recorder.receive(QByteArray(1, byte), now)) {
      answers.push_back(answer);
    }
  }
  QCOMPARE(answers.size(), 2U);
  QCOMPARE(answers[0].bytes.size(), 14);
  QCOMPARE(answers[1].bytes.size(), 8);
  answers = recorder.receive(hex("00 02 00 02 00 00 00 00 00 08 00 08"), now);
  QCOMPARE(answers.size(), 3U);
  QCOMPARE(answers[2].bytes.size(), 68);
  QCOMPARE(answers[2].request, hex("080008"));
}

void TestRecorder::a_silence_forgets_half_requests() {
  Recorder recorder(known_settings(), noon);
  for (const char* half : {"00", "00 05", "00 09 40 41 00", "00 0c"}) {
    recorder.receive(hex(half), noon);
    QCOMPARE(ask(recorder, hex("000000"), noon.addMSecs(1010)).size(), 14);
  }
}

// A fixed seed: what fails once fails again.
void TestRecorder::random_bytes() {
  QRandomGenerator random(20260301);
  Settings settings;
  settings.readings = 1000;
  Recorder recorder(settings, noon);
  QDateTime now = noon;
  const QByteArray requests[] = {hex("000000"), hex("01010000"), hex("020002"),
                                 hex("080008"), hex("0a010209"), write_pattern(0x88, 0x0F, 0, 0)};
  int answered = 0;
  for (int i = 0; i < 20000; ++i) {
    QByteArray bytes = '\0' + requests[random.bounded(6)];
    for (int n = random.bounded(4); n > 0; --n) {
      bytes[random.bounded(static_cast<int>(bytes.size()))] = static_cast<char>(random.generate());
    }
    bytes.truncate(random.bounded(1, 4 * static_cast<int>(bytes.size())));
    now = now.addMSecs(random.bounded(1200));
    for (const Answer& answer : recorder.receive(bytes, now)) answered += !answer.bytes.isEmpty();
  }
  QVERIFY(answered > 1000);
  now = now.addSecs(1);
  QCOMPARE(ask(recorder, hex("020002"), now).size(), 22);
  QCOMPARE(block(recorder, 0, now).size(), 260);
}

namespace {
const int registered = register_test<TestRecorder>();
}

#include "test_recorder.moc"
