#include "cli/cold_chain.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

#include "base/errors.h"
#include "base/times.h"

namespace {

constexpr double gas_constant = 8.3144;  // J/(mol K)
constexpr double zero_celsius = 273.15;

struct Scale {
  double per_kelvin = 1;
  double absolute_zero = 0;
};

std::optional<Scale> temperature_scale(const QString& unit) {
  QString letters = unit.trimmed().toUpper();
  letters.remove(u'°').remove(u'º').remove(u' ');
  if (letters.startsWith(QStringLiteral("DEG"))) letters.remove(0, 3);
  static const QStringList celsius = {"C", "CELSIUS", "℃"};
  static const QStringList fahrenheit = {"F", "FAHRENHEIT", "℉"};
  static const QStringList kelvin = {"K", "KELVIN"};
  if (celsius.contains(letters)) return Scale{1, -zero_celsius};
  if (fahrenheit.contains(letters)) return Scale{1.8, -459.67};
  if (kelvin.contains(letters)) return Scale{1, 0};
  return std::nullopt;
}

// 1 above the limits, -1 below, 0 within.
int side(float value, const AlarmLimits& limits) {
  if (!out_of_range(value, limits)) return 0;
  return limits.up && value > *limits.up ? 1 : -1;
}

}  // namespace

void drop_empty_samples(Recording& recording) {
  int kept = 0;
  for (int n = 0; n < recording.SampleCount; ++n) {
    if (recording.SampleTimes(n).isEmpty()) continue;
    recording.SampleTimes(kept) = recording.SampleTimes(n);
    for (int slot = 0; slot < Recording::channel_slots; ++slot) {
      recording.SampleValues(kept, slot) = recording.SampleValues(n, slot);
    }
    ++kept;
  }
  recording.SampleCount = recording.ViewCount = kept;
}

std::vector<Reading> channel_readings(const Recording& recording, int slot) {
  std::vector<Reading> readings;
  for (int n = 0; n < recording.SampleCount; ++n) {
    const QDateTime time = date_time_of(recording.SampleTimes(n));
    if (!time.isValid()) {
      throw ConversionError("reading " + std::to_string(n + 1) + " has no time stamp");
    }
    if (n > 0) {
      Reading& before = readings.back();
      before.seconds = std::max<qint64>(0, before.time.secsTo(time));
    }
    readings.push_back({time, recording.SampleValues(n, slot), 0});
  }
  const std::size_t count = readings.size();
  if (count > 1) readings[count - 1].seconds = readings[count - 2].seconds;
  return readings;
}

int first_step_back(const std::vector<Reading>& readings) {
  const auto before =
      std::adjacent_find(readings.begin(), readings.end(),
                         [](const Reading& a, const Reading& b) { return b.time < a.time; });
  return before == readings.end() ? 0 : static_cast<int>(before - readings.begin()) + 2;
}

// Divides by the greatest term, so that no exponential leaves the range of a double.
std::optional<double> mean_kinetic_temperature(const std::vector<Reading>& readings,
                                               const QString& unit, double activation_energy) {
  const auto scale = temperature_scale(unit);
  if (!scale || readings.empty()) return std::nullopt;
  const double energy_in_kelvin = activation_energy * 1000 / gas_constant;
  std::vector<double> exponents;
  for (const Reading& reading : readings) {
    const double kelvin = (double{reading.value} - scale->absolute_zero) / scale->per_kelvin;
    if (kelvin <= 0) return std::nullopt;
    exponents.push_back(-energy_in_kelvin / kelvin);
  }
  const double greatest = *std::max_element(exponents.begin(), exponents.end());
  double sum = 0;
  for (const double exponent : exponents) sum += std::exp(exponent - greatest);
  const double mean = greatest + std::log(sum / static_cast<double>(exponents.size()));
  return -energy_in_kelvin / mean * scale->per_kelvin + scale->absolute_zero;
}

std::vector<Excursion> excursions(const std::vector<Reading>& readings, const AlarmLimits& limits) {
  std::vector<Excursion> found;
  int before = 0;
  for (const Reading& reading : readings) {
    const int now = side(reading.value, limits);
    if (now != 0) {
      if (now != before) found.push_back({reading.time, {}, 0, now > 0, reading.value});
      Excursion& excursion = found.back();
      excursion.extreme = now > 0 ? std::max(excursion.extreme, reading.value)
                                  : std::min(excursion.extreme, reading.value);
      excursion.seconds += reading.seconds;
      excursion.end = reading.time.addSecs(reading.seconds);
    }
    before = now;
  }
  return found;
}
