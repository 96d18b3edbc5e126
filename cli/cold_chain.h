// The figures by which goods in a cold chain are judged: mean kinetic temperature, time out of
// range, excursions. docs/cli.md has their definitions and sources.
#pragma once

#include <QDateTime>
#include <QString>

#include <optional>
#include <vector>

#include "app/recording.h"
#include "monitor/alarms.h"

// A reading of one channel, and how long it lasts: until the next one, the last as long
// as the one before it; no time where the next one is older.
struct Reading {
  QDateTime time;
  float value = 0;
  qint64 seconds = 0;
};

// Throws ConversionError for a time stamp that is none.
std::vector<Reading> channel_readings(const Recording& recording, int slot);

// The number, counted from 1, of the first reading that is older than the one before it; 0 for
// none.
int first_step_back(const std::vector<Reading>& readings);

// Drops the samples that no block of the download has filled: they have no time.
void drop_empty_samples(Recording& recording);

// Heat of activation in kJ/mol, as the pharmacopoeia has it.
inline constexpr double usual_activation_energy = 83.144;

// In the channel's unit, if that is one of temperature ("C", "°C", "F", "K" and the like); nothing
// for other units, for no readings, and below absolute zero.
std::optional<double> mean_kinetic_temperature(const std::vector<Reading>& readings,
                                               const QString& unit, double activation_energy);

// Readings in a row above the upper limit, or in a row below the lower one.
struct Excursion {
  QDateTime start;  // of its first reading
  QDateTime end;    // when its last reading ends
  qint64 seconds = 0;
  bool above = false;
  float extreme = 0;
};
std::vector<Excursion> excursions(const std::vector<Reading>& readings, const AlarmLimits& limits);
