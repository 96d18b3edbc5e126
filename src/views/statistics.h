// What the Historical Data window says about the Recording: each channel's statistics and the
// information list.
#pragma once

#include <QString>

#include <vector>

class Recording;

// Fills ChannelStats. The order of rounding is part of the result (docs/views.md): the average is
// the sum of the values each divided by the count, in double precision.
void compute_statistics(Recording& recording);

struct InformationRow {
  QString label;
  QString value;
};

// The rows of the information list. What cannot be shown (an end beyond the arrays, a time that
// cannot be read) stays empty.
std::vector<InformationRow> information_rows(const Recording& recording);

// The time between two stamps as "HH-MM-SS", whole days left out. Throws ConversionError when one
// of them is no stamp.
QString interval_text(const QString& first, const QString& second);
