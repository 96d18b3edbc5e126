#include "data/export_text.h"

#include <QString>

#include "app/recording.h"
#include "data/export_lines.h"
#include "data/field_writer.h"
#include "data/file_handle.h"

namespace {

// Room for what stands above the samples, and for a usual line of four channels.
constexpr qsizetype usual_head_size = 1024;
constexpr qsizetype usual_line_size = 100;

bool is_plain(const QString& text) {
  bool plain = true;
  for (const QChar c : text) plain &= c.unicode() < 0x80 && c != u'"';
  return plain;
}

// Nearly every time stamp is plain, and lines of such are written without a detour.
void write_sample(FieldWriter& writer, const Recording& recording, int n) {
  const QString& time = recording.SampleTimes(n);
  if (is_plain(time)) {
    writer.plain_text(sample_line_room(recording, time.size()),
                      [&](char* out) { return write_plain_sample_line(recording, n, out); });
  } else {
    writer.text(sample_line(recording, n));
  }
  writer.end_line();
}

}  // namespace

void write_text_export(const Recording& recording, FileHandle& file) {
  FieldWriter writer(usual_head_size + usual_line_size * recording.held_samples());
  for (const QString& line : lines_above_samples(recording, MinimumLabel::with_stop)) {
    writer.text(line).end_line();
  }
  for (int n = 0; n < recording.SampleCount; ++n) write_sample(writer, recording, n);
  file.write(writer.bytes());
}
