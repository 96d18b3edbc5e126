// Figures that judge a cold chain: mean kinetic temperature, time out of range, excursions.
// docs/cli.md has their definitions and sources.
#pragma once

#include <QDateTime>
#include <QString>

#include <optional>
#include <vector>

#include "app/recording.h"
#include "monitor/alarms.h"

// A reading of one channel and its duration in seconds. It lasts until the next reading, or no time
// if the next one is older. The last reading lasts as long as the one before it.
struct Reading {
  QDateTime time;
  float value = 0;
  qint64 seconds = 0;
};

// Throws ConversionError for a time stamp that is not a time.
std::vector<Reading> channel_readings(const Recording& recording, int slot);

// The number, counted from 1, of the first reading that is older than the one before it; 0 if there
// is none.
int first_step_back(const std::vector<Reading>& readings);

// Removes the samples without a time, which no block of the download has filled.
void drop_empty_samples(Recording& recording);

// Heat of activation in kJ/mol, from the pharmacopoeia.
inline constexpr double usual_activation_energy = 83.144;

// The result is in the channel's unit, a unit of temperature ("C", "°C", "F", "K" and the like).
// Empty for other units, for no readings, and for a reading at or below absolute zero.
std::optional<double> mean_kinetic_temperature(const std::vector<Reading>& readings,
                                               const QString& unit, double activation_energy);

// Readings in a row above the upper limit, or in a row below the lower one.
struct Excursion {
  QDateTime start;  // the time of its first reading
  QDateTime end;    // when its last reading ends
  qint64 seconds = 0;
  bool above = false;
  float extreme = 0;
};
std::vector<Excursion> excursions(const std::vector<Reading>& readings, const AlarmLimits& limits);
