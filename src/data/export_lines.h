// The lines that the exports share: the Recording's information and one line per sample
// (docs/export.md).
#pragma once

#include <QString>
#include <QStringList>

class Recording;

// The label of the minimum in a channel's line: ",Min.:", but ",Min:" in the word-processor
// document.
enum class MinimumLabel { with_stop, without_stop };

// Title, channels, length, start and end time, then a line per channel with its statistics, which
// are not recomputed. Throws BoundsError when SampleCount exceeds what a Recording can hold.
QStringList information_lines(const Recording& recording, MinimumLabel label);

// The line of channel slot `slot`.
QString channel_line(const Recording& recording, int slot, MinimumLabel label);

// "Temperature(C)": the head of a channel's column.
QString column_head(const Recording& recording, int slot);

// Everything above the samples: information, an empty line, the column heads.
QStringList lines_above_samples(const Recording& recording, MinimumLabel label);

// The line of sample n, counted from 0; the line itself counts from 1. The second form overwrites
// `line`, which saves memory allocations in a loop. Both throw BoundsError for an n too large.
QString sample_line(const Recording& recording, int n);
void sample_line(const Recording& recording, int n, QString& line);
