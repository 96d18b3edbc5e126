// The lines that the exports have in common: what the Recording is, and one line a sample
// (docs/export.md).
#pragma once

#include <QString>
#include <QStringList>

class Recording;

// How the minimum is labelled in the channels' lines: ",Min.:" or, in the word-processor document
// alone, ",Min:".
enum class MinimumLabel { with_stop, without_stop };

// Title, channels, length, start and end time, then a line for each channel with its statistics as
// they stand. Throws BoundsError when the count goes beyond what a Recording holds.
QStringList information_lines(const Recording& recording, MinimumLabel label);

// The line of channel slot `slot`.
QString channel_line(const Recording& recording, int slot, MinimumLabel label);

// "Temperature(C)": the head of a channel's column.
QString column_head(const Recording& recording, int slot);

// Everything that stands above the samples: information, an empty line, the column heads.
QStringList lines_above_samples(const Recording& recording, MinimumLabel label);

// The line of sample n (0-based; the line counts from 1); the second form writes it over what
// `line` holds, for loops over many. Throw BoundsError beyond what a Recording holds.
QString sample_line(const Recording& recording, int n);
void sample_line(const Recording& recording, int n, QString& line);
