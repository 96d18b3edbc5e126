// What the Historical Data window shows of the Recording: each channel's statistics and the
// information list.
#pragma once

#include <QString>

#include <vector>

class Recording;

// Fills ChannelStats. The order of rounding is part of the result (docs/views.md): the average
// divides each value by the count and adds the results, in double precision.
void compute_statistics(Recording& recording);

struct InformationRow {
  QString label;
  QString value;
};

// The rows of the information list. A value that cannot be shown (a sample beyond the arrays, a
// stamp that is not a time) stays empty.
std::vector<InformationRow> information_rows(const Recording& recording);

// The time between two stamps as "HH-MM-SS", without whole days. Throws ConversionError if one of
// them is not a time stamp.
QString interval_text(const QString& first, const QString& second);
