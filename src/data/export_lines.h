// The lines that the exports have in common: what the Recording is, and one line a sample
// (docs/export.md).
#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

class Recording;

// How the minimum is labelled in the channels' lines: ",Min.:" or, in the word-processor document
// alone, ",Min:".
enum class MinimumLabel { with_stop, without_stop };

// Title, channels, length, start and end time, then a line for each channel with its statistics as
// they stand. Throws BoundsError when the count goes beyond what a Recording holds.
QStringList information_lines(const Recording& recording, MinimumLabel label);

// "Temperature(C)": the head of a channel's column.
QString column_head(const Recording& recording, int slot);

// The line of column heads.
QString head_line(const Recording& recording);

// Everything that stands above the samples: information, an empty line, the column heads.
QStringList lines_above_samples(const Recording& recording, MinimumLabel label);

// The lines of the samples, one after the other out of one buffer.
class SampleLines {
 public:
  // The Recording must outlive this object.
  explicit SampleLines(const Recording& recording) : recording_(recording) {}

  // The line of sample n (0-based; the line counts from 1), valid until the next one is asked for.
  // Throws BoundsError beyond what a Recording holds.
  QStringView line(int n);

 private:
  const Recording& recording_;
  QString buffer_;
};
