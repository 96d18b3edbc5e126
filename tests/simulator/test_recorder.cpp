#include <functional>
#include <numeric>

#include "simulator/recorder.h"
#include "simulator/request_reader.h"
#include "support/runner.h"

using simulator::Recorder;
using simulator::Settings;

namespace {

const QDateTime noon(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC);
constexpr int live = 0x7FFF;

// Sample n of channel c is n + 256 c; a live value, whose number is far beyond those, 0x7FFF + c.
std::uint16_t counted(std::int64_t n, int channel) {
  return static_cast<std::uint16_t>(n > 1'000'000 ? live + channel : n + 256 * channel);
}

// A recorder whose every byte is known.
const Settings known = {.mask = 0x05,
                        .readings = 200,
                        .interval_s = 300,
                        .start = QDateTime(QDate(2006, 5, 3), QTime(14, 5, 9), Qt::UTC),
                        .elapsed_s = 700,
                        .running = false,
                        .wrap = true,
                        .delay_s = 3600,
                        .title = QStringLiteral("AB"),
                        .description = QStringLiteral("温 cellar"),
                        .battery_volts = 2.5,
                        .limits = {{{}, {-10.5, 25.5}}},
                        .signal = counted};

char check(const QByteArray& bytes) {
  return std::accumulate(bytes.begin(), bytes.end(), '\0', std::bit_xor<char>());
}

// The one answer to a request, which is given without address, check byte and the zeros before
// that; empty when there is none.
QByteArray ask(Recorder& recorder, QByteArray request, const QDateTime& now = noon) {
  const int length = simulator::request_length(static_cast<unsigned char>(request.at(0)));
  request = request.leftJustified(length - 1, '\0');
  const auto answers = recorder.receive('\0' + request + check(request), now);
  return answers.size() == 1 ? answers.front().bytes : QByteArray();
}

}  // namespace

class TestRecorder : public QObject {
  Q_OBJECT

  struct Talk {
    const char* name;
    Settings settings;
    QStringList steps;  // seconds after noon > request > how the answer begins; empty: none
  };

 private Q_SLOTS:
  void talks_data() {
    Settings small_memory = {.mask = 0x07, .readings = 31995, .interval_s = 1, .signal = counted};
    Settings wrapping = small_memory;
    wrapping.wrap = true;
    add_rows<Talk>(
        {{"what it holds",
          known,
          {"0 > 0000 > 00000a 000a ff7f 0080 0180 0280",
           "0 > 0200 > 020012 44 05 060503 0e0509 100e 2b01 007d bc02 c800",
           "0 > 0800 > 080040 41004200 000000000000000000000000 296e2000 630065006c00 6c00",
           "0 > 0a0101 > 0a0004 00d8 0055", "0 > 0a0102 > 0a0004 80f5 8019",
           "0 > 010102 > 010000 0000", "0 > 0a0100 > ", "0 > 0a0105 > ", "0 > 070102 > ",
           "0 > 010205 > ", "0 > 0c020000 > "}},
         {"written is read back",
          known,
          {"0 > 0940c8c9ff > 090001 00", "0 > 0800 > 080040 c8c9ff00",
           "0 > 0b06 0400 01ff 7f80 > 0b0001 00", "0 > 0a0104 > 0a0004 01ff 7f80",
           "0 > 0a0103 > 0a0004 00d8 0055",
           "0 > 050f 40 0b 1a03010c0000 0201 ffff 1027 > 050001 00",
           "0 > 0200 > 020012 40 0b 1a03010c0000 0201 ffff 1027 0000 0000"}},
         // The start bits 0x88 start it; what tells that it runs is bit 0x02.
         {"a written pattern starts afresh",
          known,
          {"0 > 050f 88 0f 1a03010c0000 0000 0900 1027 > 050001 00",
           "0 > 0200 > 020012 02 0f 1a03010c0000 0000 0900 1027 0000 0000",
           "25 > 0200 > 020012 02 0f 1a03010c0000 0000 0900 1027 0500 0800",
           "30 > 050f cc 03 1a03010c0000 3c00 0900 1027 > 050001 00",
           "99 > 0200 > 020012 46 03 1a03010c0000 3c00 0900 1027 4500 0000",
           "100 > 0200 > 020012 46 03 1a03010c0000 3c00 0900 1027 0000 0200",
           "120 > 050f 00 0f 1a03010c0000 0000 0900 1027 > 050001 00", "130 > 070101 > 070001 00",
           "138 > 070101 > 070001 00", "145 > 070100 > 070001 00",
           "300 > 0200 > 020012 00 0f 1a03010c0000 0000 0900 1027 a000 0400"}},
         {"channels that it lacks leave the mask",
          {.channels = 2, .running = false},
          {"0 > 0200 > 020012 00 03", "0 > 0000 > 000006",
           "0 > 050f 88 0e 1a03010c0000 0000 0000 1027 > 050001 00",
           "5 > 0200 > 020012 02 02 1a03010c0000 0000 0000 1027 0000 0500"}},
         // A download under way sees the memory as it stood when it asked for the properties.
         {"memory grows while it runs",
          {.readings = 400, .elapsed_s = 80, .signal = counted},
          {"39 > 0200 > 020012 02 0f 1a03010a1228 0000 3b00 007d 7700 9001",
           "161 > 010100 > 010100 6300 6301 6302 6303 6200",
           "161 > 0200 > 020012 02 0f 1a03010a1228 0000 3b00 007d 2900 9801",
           "161 > 010100 > 010100 6500"}},
         // Of three channels 128 readings hold 42 samples, which stand at the block's end; the
         // oldest block is short.
         {"full memory stops",
          small_memory,
          {"10 > 0200 > 020012 00 07 1a030109020f 0000 0000 007d 0900 fe7c",
           "10 > 010100 > 010100 0000 0000 a929 a92a a92b a829",
           "10 > 010101 > 010100 0000 0000 7e29 7e2a 7e2b 7d29",
           "10 > 0101f9 > 0100fc 2900 2901 2902 2800"}},
         {"full memory wraps",
          wrapping,
          {"10 > 0200 > 020012 42 07 1a030109020f 0000 0000 007d 0000 007d",
           "10 > 010100 > 010100 0000 0000 b229 b22a"}},
         {"one channel, short oldest block",
          {.mask = 0x08, .readings = 130, .running = false, .signal = counted},
          {"0 > 010100 > 010100 8103 8003", "0 > 010101 > 010004 0103 0003 0000"}}});
  }
  void talks() {
    QFETCH(Talk, row);
    Recorder recorder(row.settings, noon);
    for (const QString& step : row.steps) {
      const QStringList parts = step.split('>');
      const QByteArray expected = hex(parts[2].toLatin1());
      const QByteArray got =
          ask(recorder, hex(parts[1].toLatin1()), noon.addSecs(parts[0].toInt()));
      QCOMPARE(got.left(expected.size()).toHex(' '), expected.toHex(' '));
      const bool block = got.startsWith('\x01');
      QCOMPARE(got.size(), expected.isEmpty() ? 0 : block ? 260 : 4 + got.at(2));
      QCOMPARE(check(got.mid(1)), '\0');
    }
  }

  // Byte by byte, in a row, with a wrong check byte, for another address, without one; and a
  // silence forgets half a request.
  void requests_in_any_shape() {
    Recorder recorder(known, noon);
    std::vector<qsizetype> sizes;
    QDateTime now = noon;
    const auto take = [&](const QByteArray& bytes) {
      for (const auto& answer : recorder.receive(bytes, now)) sizes.push_back(answer.bytes.size());
    };
    for (const char byte : hex("00 000000 ff 00 0a010209")) take(QByteArray(1, byte));
    take(hex("00 020002 00 000000 00 080008"));
    for (const char* bytes : {"00 020003", "01 020002", "020002", "00", "00 05", "00 09404100"}) {
      now = now.addSecs(1);
      take(hex(bytes));
      now = now.addMSecs(510);
      take(hex("00 000000"));
    }
    QCOMPARE(sizes, std::vector<qsizetype>({14, 8, 22, 14, 68, 0, 14, 14, 14, 14, 14, 14}));
  }
};

const int registered = register_test<TestRecorder>();

#include "test_recorder.moc"
