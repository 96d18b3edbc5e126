// watch: prints one line per reading.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "base/times.h"
#include "cli/connection.h"
#include "cli/csv.h"
#include "cli/output.h"
#include "device/limits.h"
#include "monitor/alarms.h"
#include "monitor/live_channels.h"

namespace {

enum class Form { text, csv, json };

constexpr Retries polling = {.pause_ms = 10};
constexpr double usual_interval_s = 5;
// The longest time between two searches for a lost recorder.
constexpr double longest_search_s = 5;

class Watch {
 public:
  Watch(const Arguments& arguments, Interrupts& interrupts);
  int run();

 private:
  void read_limits();
  bool poll();
  bool find_again();
  void tell(const LiveReading& reading);
  QString text_of(const QString& stamp, const LiveReading& reading, const OutOfRange& out) const;
  QString csv_of(const QString& stamp, const LiveReading& reading, const OutOfRange& out) const;
  QString json_of(const QString& stamp, const LiveReading& reading, const OutOfRange& out) const;
  QStringList names_out(const OutOfRange& out) const;
  void wait_until(qint64 moment);

  Interrupts& interrupts_;
  Form form_;
  double interval_s_;
  int count_;
  Connection recorder_;
  LiveChannels channels_;
  std::array<AlarmLimits, 4> limits_{};
  bool lost_ = false;
  bool alarmed_ = false;
};

Form form_from(const Arguments& arguments) {
  if (arguments.is_set("csv") && arguments.is_set("json")) {
    arguments.refuse(QStringLiteral("--csv and --json exclude each other"));
  }
  if (arguments.is_set("csv")) return Form::csv;
  return arguments.is_set("json") ? Form::json : Form::text;
}

Watch::Watch(const Arguments& arguments, Interrupts& interrupts)
    : interrupts_(interrupts),
      form_(form_from(arguments)),
      interval_s_(arguments.decimal("interval", 0.1, 86400).value_or(usual_interval_s)),
      count_(arguments.integer("count", 1, 1'000'000'000).value_or(0)),
      recorder_(arguments, interrupts),
      channels_(live_channels(recorder_.type().table, recorder_.type().row)) {}

void Watch::read_limits() {
  for (std::size_t c = 0; static_cast<int>(c) < channels_.count; ++c) {
    const ChannelLimits read =
        decode_limits(recorder_.ask(limits_request(static_cast<int>(c + 1))));
    // Rounded to two decimals, as in the desktop program.
    limits_[c] = alarm_limits(fixed2(read.up), fixed2(read.down));
  }
}

// Reads and prints one reading. Returns false when there is none.
bool Watch::poll() {
  const auto answer = recorder_.link().ask([this] { return status_request(channels_.count); },
                                           polling, [this] { return recorder_.interrupted(); });
  if (!answer || recorder_.interrupted()) return false;
  tell(decode_status(*answer).readings);
  return true;
}

// Reads the limits again, because they may have been changed meanwhile.
bool Watch::find_again() {
  if (!recorder_.reconnect()) return false;
  try {
    read_limits();
  } catch (const Failure&) {
    recorder_.close();
    return false;  // lost again
  }
  complain(recorder_.where() + QStringLiteral(" answers again"));
  lost_ = false;
  return true;
}

QStringList Watch::names_out(const OutOfRange& out) const {
  QStringList names;
  for (std::size_t c = 0; static_cast<int>(c) < channels_.count; ++c) {
    if (out[c]) names << channels_.names[c];
  }
  return names;
}

QString Watch::text_of(const QString& stamp, const LiveReading& reading,
                       const OutOfRange& out) const {
  return stamp + QStringLiteral("  ") +
         reading_text(reading, channels_).replace(u'\n', QStringLiteral("  ")) +
         (names_out(out).isEmpty() ? QString()
                                   : QStringLiteral("  ") + alarm_text(out, channels_).trimmed()) +
         u'\n';
}

QString Watch::csv_of(const QString& stamp, const LiveReading& reading,
                      const OutOfRange& out) const {
  QStringList fields = {iso_time(stamp)};
  for (std::size_t c = 0; static_cast<int>(c) < channels_.count; ++c) {
    fields << csv_number(reading[c]);
  }
  return csv_record(fields << names_out(out).join(u';'));
}

QString Watch::json_of(const QString& stamp, const LiveReading& reading,
                       const OutOfRange& out) const {
  QJsonArray channels;
  for (std::size_t c = 0; static_cast<int>(c) < channels_.count; ++c) {
    channels.append(QJsonObject{{"channel", static_cast<int>(c + 1)},
                                {"name", channels_.names[c]},
                                {"unit", channels_.units[c]},
                                {"value", double{reading[c]}},
                                {"alarm", out[c]}});
  }
  const QJsonObject all = {{"time", iso_time(stamp)}, {"channels", channels}};
  return QString::fromUtf8(QJsonDocument(all).toJson(QJsonDocument::Compact)) + u'\n';
}

void Watch::tell(const LiveReading& reading) {
  const OutOfRange out = out_of_range(reading, limits_, channels_.count);
  alarmed_ = alarmed_ || !names_out(out).isEmpty();
  const QString stamp = stamp_text(interrupts_.clock.now());
  switch (form_) {
    case Form::text:
      return print(text_of(stamp, reading, out));
    case Form::csv:
      return print(csv_of(stamp, reading, out));
    case Form::json:
      return print(json_of(stamp, reading, out));
  }
}

// Waits in a loop, because bytes from the port also end a wait of the clock.
void Watch::wait_until(qint64 moment) {
  while (!recorder_.interrupted()) {
    const qint64 left = moment - interrupts_.clock.steady_ms();
    if (left <= 0) return;
    constexpr qint64 longest = 3'600'000;
    interrupts_.clock.wait(static_cast<int>(std::min(left, longest)));
  }
}

int Watch::run() {
  read_limits();
  if (form_ == Form::csv) {
    QStringList head = {QStringLiteral("Time")};
    for (std::size_t c = 0; static_cast<int>(c) < channels_.count; ++c) {
      head << QStringLiteral("%1(%2)").arg(channels_.names[c], channels_.units[c]);
    }
    print(csv_record(head << QStringLiteral("Out Of Range")));
  }
  const auto interval = static_cast<qint64>(interval_s_ * 1000);
  const auto search = static_cast<qint64>(std::min(interval_s_, longest_search_s) * 1000);
  qint64 next = interrupts_.clock.steady_ms();
  for (int told = 0;
       !recorder_.interrupted() && output_has_reader() && (count_ == 0 || told < count_);) {
    if ((!lost_ || find_again()) && poll()) {
      ++told;
    } else if (!lost_ && !recorder_.interrupted()) {
      complain(QStringLiteral("%1: %2 gives no readings; trying again")
                   .arg(stamp_text(interrupts_.clock.now()), recorder_.where()));
      lost_ = true;
      recorder_.close();
    }
    // Skips missed readings instead of making up for them.
    const qint64 now = interrupts_.clock.steady_ms();
    while (next <= now) next += interval;
    if (count_ == 0 || told < count_) wait_until(lost_ ? std::min(next, now + search) : next);
  }
  return alarmed_ ? exit_status::out_of_range : exit_status::fine;
}

int run(const Arguments& arguments, Interrupts& interrupts) {
  return Watch(arguments, interrupts).run();
}

}  // namespace

Command watch_command() {
  return {
      "watch",
      "[OPTION]...",
      "Prints each reading as it comes, on a line of its own.",
      "Asks the recorder for its readings again and again and prints a line for each, with the\n"
      "channels that are out of the recorder's alarm limits. Runs until Ctrl+C. When the recorder\n"
      "stops answering, standard error says so, and watch waits until it is back, also after its\n"
      "adapter was unplugged; with --port auto it searches all ports again. Ends with status 4\n"
      "when a reading was out of range.",
      {{"interval", "S", "Seconds between readings (default 5)."},
       {"count", "N", "Ends after N readings."},
       {"csv", nullptr, "Prints CSV, with a header line."},
       {"json", nullptr, "Prints each reading as a JSON object on a line."},
       port_option,
       type_option},
      0,
      run};
}
