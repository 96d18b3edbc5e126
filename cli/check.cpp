// check: diagnoses a serial line.
#include "base/errors.h"
#include "cli/check_frames.h"
#include "cli/check_verdict.h"
#include "cli/connection.h"
#include "cli/files.h"
#include "cli/output.h"
#include "cli/port_state.h"
#include "cli/traced_port.h"
#include "data/whole_file.h"

namespace {

constexpr int requests = 20;
// The check ends after this many requests if none was answered in time.
constexpr int enough_silence = 3;
constexpr int late_ms = 1500;
constexpr int bytes_a_line = 32;

QString hex_of(const QByteArray& bytes) {
  QStringList lines;
  for (qsizetype at = 0; at < bytes.size(); at += bytes_a_line) {
    lines << QString::fromLatin1(bytes.mid(at, bytes_a_line).toHex(' '));
  }
  return lines.join(QStringLiteral("\n               "));
}

QString frame_text(const TracedBytes& frame, const QString& meaning) {
  return QStringLiteral("%1 %2 %3\n               %4\n")
      .arg(frame.time.toString(QStringLiteral("HH:mm:ss.zzz")), frame.sent ? u">" : u"<",
           hex_of(frame.bytes), meaning);
}

class Check {
 public:
  Check(const Arguments& arguments, Interrupts& interrupts);
  int run();

 private:
  bool open();
  void probe_line();
  void exchange(const Probe& probe);
  void collect();
  void await_late(qsizetype bytes);
  void take_late(const TracedBytes& frame, const QString& meaning);
  // Prints what was sent, removes it from the trace, and returns the rest: the answer.
  QByteArray tell_sent(const Probe& probe, std::vector<TracedBytes>& trace);
  void tell(const QString& text);
  int conclude(const QString& sentence, const QString& advice, bool good);

  Interrupts& interrupts_;
  RecorderType type_;
  int number_;
  QString log_path_;
  QString log_;
  QtSerialPort line_;
  TracedPort port_;
  RecorderLink link_;
  Findings findings_;
  Request asked_;      // the last request
  QByteArray answer_;  // all bytes received for it
};

int fixed_port(const Arguments& arguments) {
  const auto number = arguments.port();
  if (!number) arguments.refuse(QStringLiteral("--port must be given, from 1 to 8"));
  return *number;
}

Check::Check(const Arguments& arguments, Interrupts& interrupts)
    : interrupts_(interrupts),
      type_(arguments),
      number_(fixed_port(arguments)),
      log_path_(arguments.text("log")),
      port_(line_, interrupts.clock),
      link_(port_, interrupts.clock) {
  if (!log_path_.isEmpty()) require_writable(log_path_);
}

void Check::tell(const QString& text) {
  log_ += text;
  print(text);
}

int Check::conclude(const QString& sentence, const QString& advice, bool good) {
  tell(QStringLiteral("\nVerdict: %1\n").arg(sentence));
  if (!advice.isEmpty()) tell(QStringLiteral("Try next: %1\n").arg(advice));
  if (!log_path_.isEmpty()) {
    write_file(log_path_, [this] { write_whole_file(log_path_, log_.toStdString()); });
  }
  return good ? exit_status::fine : exit_status::no_recorder;
}

bool Check::open() {
  return stop_at_first_failure([this] {
    port_.set_port_number(number_);
    port_.open();
  });
}

// Reads all bytes received since the request, even those that the link does not take as an answer.
void Check::collect() {
  skip_on_error([this] {
    if (port_.bytes_waiting() > 0) port_.read_all();
  });
}

// Waits for the missing bytes of an answer, so that they are not taken for the next answer.
void Check::await_late(qsizetype bytes) {
  const qint64 began = interrupts_.clock.steady_ms();
  skip_on_error([&] {
    while (!interrupts_.clock.stopped() && port_.bytes_waiting() < bytes) {
      const qint64 left = late_ms - (interrupts_.clock.steady_ms() - began);
      if (left <= 0) break;
      interrupts_.clock.wait(static_cast<int>(left));
    }
  });
  collect();
  for (const TracedBytes& frame : port_.take_trace()) {
    take_late(frame, QStringLiteral("%1 bytes, too late"));
  }
}

// Counts the answer as late if these bytes complete it; otherwise they are noise.
void Check::take_late(const TracedBytes& frame, const QString& meaning) {
  tell(frame_text(frame, meaning.arg(frame.bytes.size())));
  if (findings_.requests == 0) return;
  const Outcome before = outcome_of(asked_, answer_);
  answer_ += frame.bytes;
  const Outcome now = outcome_of(asked_, answer_);
  if (now != Outcome::right) {
    --findings_.outcomes[before];
    ++findings_.outcomes[now];
  } else if (before != Outcome::right) {
    ++findings_.late;
  }
}

// Bytes received before the request was sent belong to an earlier request.
QByteArray Check::tell_sent(const Probe& probe, std::vector<TracedBytes>& trace) {
  int sent = 0;
  std::size_t told = 0;
  for (; told < trace.size() && sent < 2; ++told) {
    const TracedBytes& frame = trace[told];
    if (frame.sent) {
      ++sent;
      tell(frame_text(frame, sent == 1 ? QStringLiteral("address, sent with mark parity")
                                       : probe.name + QStringLiteral(", sent with space parity")));
    } else {
      take_late(frame, QStringLiteral("%1 bytes left over from before"));
    }
  }
  trace.erase(trace.begin(), trace.begin() + static_cast<std::ptrdiff_t>(told));
  QByteArray answer;
  for (const TracedBytes& frame : trace) answer += frame.bytes;
  return answer;
}

void Check::exchange(const Probe& probe) {
  link_.exchange(probe.request);
  collect();
  std::vector<TracedBytes> trace = port_.take_trace();
  const QByteArray answer = tell_sent(probe, trace);
  asked_ = probe.request;
  answer_ = answer;
  const Outcome outcome = outcome_of(asked_, answer);
  const QDateTime time = trace.empty() ? interrupts_.clock.now() : trace.front().time;
  tell(frame_text({false, time, answer}, meaning_of(probe, outcome, answer)));
  ++findings_.requests;
  ++findings_.outcomes[outcome];
  const qsizetype missing = probe.request.answer_length - answer.size();
  if (missing > 0) await_late(missing);
  const bool status = probe.request.bytes == status_request(type_.channels).bytes;
  if (status && channels_of_status(answer) > 0) {
    findings_.answering_channels = channels_of_status(answer);
  }
}

void Check::probe_line() {
  const std::vector<Probe> probes = probes_for(type_.channels);
  findings_.channels = type_.channels;
  for (std::size_t n = 0; static_cast<int>(n) < requests && !interrupts_.clock.stopped(); ++n) {
    exchange(probes[n % probes.size()]);
    findings_.refused_settings = port_.refused_settings();
    findings_.lost = findings_.lost || !stop_at_first_failure([this] { port_.bytes_waiting(); });
    if (findings_.lost || !findings_.refused_settings.isEmpty()) return;
    const bool silent = findings_.count(Outcome::silent) == findings_.requests;
    if (silent && findings_.requests >= enough_silence) return;
  }
}

int Check::run() {
  tell(QStringLiteral("%1, %2, 9600 baud, 8 data bits, 1 stop bit\n")
           .arg(port_words(number_), type_.words()));
  const PortState state = look_at_port(number_);
  tell(QStringLiteral("The port %1%2\n")
           .arg(state.words,
                state.parity.isEmpty() ? QString() : QStringLiteral("; ") + state.parity));
  if (state.kind != PortState::Kind::free) {
    return conclude(QStringLiteral("COM%1 %2.").arg(number_).arg(state.words), state.advice, false);
  }
  if (!open()) {
    return conclude(QStringLiteral("COM%1 cannot be opened, though it is free.").arg(number_),
                    QStringLiteral("Run the check again."), false);
  }
  tell(QStringLiteral("\n"));
  probe_line();
  port_.close();
  if (interrupts_.clock.stopped()) {
    conclude(QStringLiteral("Interrupted after %1 requests.").arg(findings_.requests), {}, false);
    throw Failure(exit_status::no_recorder, QStringLiteral("interrupted"));
  }
  const Verdict verdict = verdict_on(findings_, type_.name());
  return conclude(verdict.sentence, verdict.advice, verdict.good);
}

int run(const Arguments& arguments, Interrupts& interrupts) {
  return Check(arguments, interrupts).run();
}

}  // namespace

Command check_command() {
  return {
      "check",
      "--port N [OPTION]...",
      "Probes a line and says what is the matter.",
      "Sends up to 20 requests to the recorder, none of which changes it, and prints each frame\n"
      "sent and received with its time, as hexadecimal bytes and as what they mean; then the\n"
      "verdict in a sentence, and what to try next.\n"
      "Ends with status 0 when every answer was right, else with 2.",
      {{"port", "N", "Port COM1 to COM8 as 1 to 8."},
       type_option,
       {"log", "FILE", "Writes all that into a file too; one that exists is replaced."}},
      0,
      run};
}
