// stats: computes the figures of a data file.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>

#include "base/errors.h"
#include "base/numbers.h"
#include "cli/arguments.h"
#include "cli/cold_chain.h"
#include "cli/csv.h"
#include "cli/files.h"
#include "cli/interrupts.h"
#include "cli/output.h"
#include "views/statistics.h"

namespace {

using Limits = std::array<AlarmLimits, Recording::max_channels>;

struct ChannelReport {
  QString number;
  QString name;
  QString unit;
  double maximum = 0;
  double minimum = 0;
  double average = 0;
  std::optional<double> kinetic;
  AlarmLimits limits;
  std::vector<Excursion> excursions;
  qint64 seconds_out = 0;
};

// Parses "CH:UP:DOWN". CH is the recorder's channel number; an empty limit is not checked.
void set_limits(const Arguments& arguments, const QString& text, const Recording& recording,
                Limits& limits) {
  const QStringList parts = text.split(u':');
  const auto refuse = [&](const QString& why) {
    arguments.refuse(QStringLiteral("--limit: \"%1\" %2").arg(text, why));
  };
  const auto usable = [](const QString& part) { return part.isEmpty() || is_number(part); };
  const bool form = parts.size() == 3 && usable(parts[1]) && usable(parts[2]) &&
                    !(parts[1].isEmpty() && parts[2].isEmpty());
  if (!form) refuse(QStringLiteral("is not of the form CHANNEL:UP:DOWN"));
  const AlarmLimits wanted = alarm_limits(parts[1], parts[2]);
  if (wanted.up && wanted.down && *wanted.up < *wanted.down) {
    refuse(QStringLiteral("has its up limit below its down limit"));
  }
  for (std::size_t slot = 0; static_cast<int>(slot) < recording.clamped_channel_count(); ++slot) {
    if (recording.channel(slot).number != parts[0]) continue;
    limits[slot] = wanted;
    return;
  }
  refuse(QStringLiteral("names a channel that the file does not have"));
}

ChannelReport report_of(const Recording& recording, int slot, const std::vector<Reading>& readings,
                        const AlarmLimits& limits, double activation_energy) {
  const auto c = static_cast<std::size_t>(slot);
  const auto [number, name, unit] = recording.channel(c);
  const auto& stats = recording.ChannelStats;
  ChannelReport report = {.number = number,
                          .name = name,
                          .unit = unit,
                          .maximum = stats[0][c],
                          .minimum = stats[1][c],
                          .average = stats[2][c],
                          .kinetic = {},
                          .limits = limits,
                          .excursions = excursions(readings, limits)};
  report.kinetic = mean_kinetic_temperature(readings, report.unit, activation_energy);
  for (const Excursion& excursion : report.excursions) report.seconds_out += excursion.seconds;
  return report;
}

// Hours, minutes and seconds; a day counts as 24 hours.
QString duration_text(qint64 seconds) {
  return QStringLiteral("%1:%2:%3")
      .arg(seconds / 3600)
      .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
      .arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

QString limit_text(const AlarmLimits& limits) {
  if (!limits.up) return QStringLiteral("from %1").arg(fixed2(*limits.down));
  if (!limits.down) return QStringLiteral("up to %1").arg(fixed2(*limits.up));
  return QStringLiteral("%1 to %2").arg(fixed2(*limits.down), fixed2(*limits.up));
}

QString time_text(const QDateTime& time) {
  return time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString line(const QString& label, const QString& value) {
  return QStringLiteral("  %1 %2\n").arg(label, -25).arg(value);
}

QString text_of(const ChannelReport& report, int count) {
  const auto value = [&](double x) { return fixed2(x) + u' ' + report.unit; };
  QString text = QStringLiteral("\nChannel %1, %2\n").arg(report.number, report.name);
  text += line(QStringLiteral("Count"), QString::number(count));
  text += line(QStringLiteral("Maximum"), value(report.maximum));
  text += line(QStringLiteral("Minimum"), value(report.minimum));
  text += line(QStringLiteral("Average"), value(report.average));
  if (report.kinetic)
    text += line(QStringLiteral("Mean kinetic temperature"), value(*report.kinetic));
  if (!report.limits.up && !report.limits.down) return text;
  text += line(QStringLiteral("Limits"), limit_text(report.limits) + u' ' + report.unit);
  text += line(QStringLiteral("Time out of range"), duration_text(report.seconds_out));
  text += line(QStringLiteral("Excursions"), QString::number(report.excursions.size()));
  for (const Excursion& one : report.excursions) {
    text += QStringLiteral("    %1 to %2, %3, %4 %5\n")
                .arg(time_text(one.start), time_text(one.end), duration_text(one.seconds),
                     one.above ? QStringLiteral("highest") : QStringLiteral("lowest"),
                     value(double{one.extreme}));
  }
  return text;
}

// The shortest decimals that read back as the float.
QJsonValue json_of(std::optional<float> value) {
  return value ? QJsonValue(csv_number(*value).toDouble()) : QJsonValue();
}

QJsonObject json_of(const ChannelReport& report, int count) {
  QJsonArray list;
  for (const Excursion& one : report.excursions) {
    list.append(QJsonObject{{"start", one.start.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss"))},
                            {"end", one.end.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss"))},
                            {"seconds", one.seconds},
                            {"side", one.above ? "above" : "below"},
                            {"extreme", json_of(one.extreme)}});
  }
  return {{"channel", report.number},
          {"name", report.name},
          {"unit", report.unit},
          {"count", count},
          {"maximum", json_of(static_cast<float>(report.maximum))},
          {"minimum", json_of(static_cast<float>(report.minimum))},
          {"average", report.average},
          {"mean_kinetic_temperature", report.kinetic ? QJsonValue(*report.kinetic) : QJsonValue()},
          {"up_limit", json_of(report.limits.up)},
          {"down_limit", json_of(report.limits.down)},
          {"seconds_out_of_range", report.seconds_out},
          {"excursions", list}};
}

QString text_of(const Recording& recording, const std::vector<ChannelReport>& reports,
                double activation_energy) {
  QString text;
  for (const InformationRow& row : information_rows(recording)) {
    if (row.label == u"Channel No.") break;
    text += QStringLiteral("%1 %2\n").arg(row.label, -27).arg(row.value);
  }
  for (const ChannelReport& report : reports) text += text_of(report, recording.SampleCount);
  return text + QStringLiteral("\nHeat of activation: %1 kJ/mol\n").arg(activation_energy);
}

QString json_of(const Recording& recording, const std::vector<ChannelReport>& reports,
                double activation_energy) {
  QJsonArray channels;
  for (const ChannelReport& report : reports) channels << json_of(report, recording.SampleCount);
  const QJsonObject all = {{"title", recording.Title},
                           {"recorder", recording.RecorderName},
                           {"count", recording.SampleCount},
                           {"start", iso_time(recording.SampleTimes(0))},
                           {"end", iso_time(recording.SampleTimes(recording.SampleCount - 1))},
                           {"activation_energy_kj_per_mol", activation_energy},
                           {"channels", channels}};
  return QString::fromUtf8(QJsonDocument(all).toJson());
}

void tell_of_step_back(const QString& file, const std::vector<Reading>& readings) {
  const int number = first_step_back(readings);
  if (number == 0) return;
  complain(QStringLiteral("%1: the times run backwards at reading %2; a reading before such a step "
                          "counts no time")
               .arg(file)
               .arg(number));
}

int run(const Arguments& arguments, Interrupts& interrupts) {
  const double energy =
      arguments.decimal("activation-energy", 1, 1000).value_or(usual_activation_energy);
  Recording recording = load_recording(arguments.file());
  drop_empty_samples(recording);
  if (recording.SampleCount == 0 || recording.ChannelCount == 0) {
    throw Failure(exit_status::file, arguments.file() + QStringLiteral(" has no readings"));
  }
  compute_statistics(recording);
  Limits limits;
  for (const QString& text : arguments.texts("limit"))
    set_limits(arguments, text, recording, limits);
  std::vector<ChannelReport> reports;
  bool out = false;
  try {
    for (int slot = 0; slot < recording.clamped_channel_count(); ++slot) {
      const std::vector<Reading> readings = channel_readings(recording, slot);
      if (slot == 0) tell_of_step_back(arguments.file(), readings);
      const AlarmLimits& guarded = limits[static_cast<std::size_t>(slot)];
      reports.push_back(report_of(recording, slot, readings, guarded, energy));
      out = out || !reports.back().excursions.empty();
    }
  } catch (const ConversionError& error) {
    throw Failure(exit_status::file, QStringLiteral("%1: %2").arg(arguments.file(), error.what()));
  }
  interrupts.throw_if_interrupted();
  print(arguments.is_set("json") ? json_of(recording, reports, energy)
                                 : text_of(recording, reports, energy));
  return out ? exit_status::out_of_range : exit_status::fine;
}

}  // namespace

Command stats_command() {
  return {"stats",
          "FILE.qlx [--limit CH:UP:DOWN]... [OPTION]...",
          "Prints the figures of a data file and its excursions.",
          "Prints for each channel of a data file the number of readings, maximum, minimum and\n"
          "average, for temperatures the mean kinetic temperature, and for channels with a limit\n"
          "the time out of range and every excursion: start, end, duration, extreme. A reading\n"
          "lasts until the next one; a value equal to a limit is in range.\n"
          "Ends with status 4 when there was an excursion.",
          {{"limit", "CH:UP:DOWN",
            "Limits of the recorder's channel CH, such as 1:8:2; one may be empty."},
           {"activation-energy", "KJ", "Heat of activation in kJ/mol (default 83.144)."},
           {"json", nullptr, "Prints JSON."}},
          1,
          run};
}
