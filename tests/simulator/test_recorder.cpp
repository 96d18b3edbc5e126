#include <numeric>

#include "simulator/line.h"
#include "simulator/recorder.h"
#include "support/runner.h"

namespace {

const QDateTime noon(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC);

// Sample n of channel c is n + 256 c.
std::uint16_t counted(std::int64_t n, int channel) {
  return static_cast<std::uint16_t>(n + 256 * channel);
}

// The one answer to a request; empty if there is none. The request is passed without its address,
// its check byte and the zeros before that.
QByteArray ask(simulator::Recorder& recorder, QByteArray request, const QDateTime& now) {
  const int length = simulator::request_length(static_cast<unsigned char>(request.at(0)));
  request = request.leftJustified(length - 1, '\0');
  const char check = std::accumulate(request.begin(), request.end(), '\0', std::bit_xor<char>());
  const auto answers = recorder.receive('\0' + request + check, now);
  return answers.size() == 1 ? answers.front().bytes : QByteArray();
}

}  // namespace

class TestRecorder : public QObject {
  Q_OBJECT

  struct Talk {
    const char* name;
    simulator::Settings settings;
    QStringList steps;  // seconds after noon > request > how the answer begins; empty: none
  };

 private Q_SLOTS:
  void talks_data() {
    const simulator::Settings full = {
        .mask = 0x07, .readings = 31995, .interval_s = 1, .signal = counted};
    simulator::Settings wrapping = full;
    wrapping.wrap = true;
    add_rows<Talk>(
        {{"what it lacks",
          {.channels = 2, .running = false},
          {"0 > 0a0100 > ", "0 > 0a0103 > ", "0 > 070102 > ", "0 > 0c020000 > ",
           "0 > 050f 88 0e 1a03010c0000 0000 0000 1027 > 050001 00",
           "5 > 0200 > 020012 02 02 1a03010c0000 0000 0000 1027 0000 0500"}},
         // The bits 0x88 start it; bit 0x02 reports that it runs.
         {"a written pattern starts afresh",
          full,
          {"20 > 0200 > 020012", "30 > 050f cc 03 1a03010c0000 3c00 0900 1027 > 050001 00",
           "31 > 010100 > 010000 0000",
           "99 > 0200 > 020012 46 03 1a03010c0000 3c00 0900 1027 4500 0000",
           "100 > 0200 > 020012 46 03 1a03010c0000 3c00 0900 1027 0000 0200",
           "102 > 050f 88 03 1a03010c0000 3c00 0900 1027 > 050001 00",
           "115 > 0200 > 020012 02 03 1a03010c0000 3c00 0900 1027 0300 0200",
           "120 > 050f 00 0f 1a03010c0000 0000 0900 1027 > 050001 00", "130 > 070101 > 070001 00",
           "145 > 070100 > 070001 00",
           "300 > 0200 > 020012 00 0f 1a03010c0000 0000 0900 1027 a000 0400"}},
         {"it does not obey what it does not hear",
          {.readings = 7, .faults = {*simulator::fault_from_text("silent:command=05")}},
          {"0 > 050f 00 0f 1a03010c0000 0000 0000 1027 > ", "0 > 0200 > 020012 02 0f"}},
         // A download under way sees the memory as it was when it asked for the properties.
         {"memory grows while it runs",
          {.readings = 400, .elapsed_s = 80, .signal = counted},
          {"39 > 0200 > 020012 02 0f 1a03010a1228 0000 3b00 007d 7700 9001",
           "161 > 010100 > 010100 6300 6301 6302 6303 6200",
           "161 > 0200 > 020012 02 0f 1a03010a1228 0000 3b00 007d 2900 9801",
           "161 > 010100 > 010100 6500"}},
         // With three channels a block's 42 samples are at its end; the oldest block is short.
         {"full memory stops",
          full,
          {"10 > 0200 > 020012 00 07 1a030109020f 0000 0000 007d 0900 fe7c",
           "10 > 010100 > 010100 0000 0000 a929 a92a a92b a829",
           "10 > 010101 > 010100 0000 0000 7e29 7e2a 7e2b 7d29",
           "10 > 0101f9 > 0100fc 2900 2901 2902 2800", "10 > 0101fa > 010000 0000"}},
         {"full memory wraps",
          wrapping,
          {"10 > 0200 > 020012 42 07 1a030109020f 0000 0000 007d 0000 007d",
           "10 > 010100 > 010100 0000 0000 b229 b22a"}}});
  }
  void talks() {
    QFETCH(Talk, row);
    simulator::Recorder recorder(row.settings, noon);
    for (const QString& step : row.steps) {
      const QStringList parts = step.split('>');
      const QByteArray expected = hex(parts[2].toLatin1());
      const QByteArray got =
          ask(recorder, hex(parts[1].toLatin1()), noon.addSecs(parts[0].toInt()));
      QCOMPARE(got.left(expected.size()).toHex(' '), expected.toHex(' '));
      QCOMPARE(got.isEmpty(), expected.isEmpty());
    }
  }

  // A request with a wrong check byte, one with a wrong second byte, and two that pause half way:
  // the first for as long as the reader waits, the second for longer.
  void broken_requests() {
    for (const auto& [first, silence_ms, rest, answered] : {std::tuple("000200", 0, "03", false),
                                                            {"000201", 0, "03", false},
                                                            {"0002", 500, "0002", true},
                                                            {"0002", 501, "0002", false}}) {
      simulator::Recorder recorder({}, noon);
      recorder.receive(hex(first), noon);
      const auto answers = recorder.receive(hex(rest), noon.addMSecs(silence_ms));
      QCOMPARE(!answers.empty() && !answers.front().bytes.isEmpty(), answered);
    }
  }

  void answers_keep_the_beat() {
    // 260 bytes of 11 bits take 297.9 ms at 9600 baud, after the request's 4 bytes and the delay.
    simulator::Line paced;
    paced.send({QByteArray(4, 'r'), QByteArray(260, 'x'), 5, false, {}}, 1'000'000);
    const qint64 begin = 1'000'000 + 4583 + 5000;
    QCOMPARE(paced.next_due(), begin + 1145);
    QCOMPARE(paced.take(begin + 297'915).bytes.size(), 259);
    QCOMPARE(paced.take(begin + 297'916).bytes.size(), 1);
    QVERIFY(!paced.next_due());
  }
};

const int registered = register_test<TestRecorder>();

#include "test_recorder.moc"
