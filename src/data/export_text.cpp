#include "data/export_text.h"

#include <QString>

#include "app/recording.h"
#include "data/export_lines.h"
#include "data/field_writer.h"
#include "data/file_handle.h"

namespace {

// Bytes for the lines above the samples, and for a usual line of four channels.
constexpr qsizetype usual_head_size = 1024;
constexpr qsizetype usual_line_size = 100;

}  // namespace

void write_text_export(const Recording& recording, FileHandle& file) {
  FieldWriter writer(usual_head_size + usual_line_size * recording.clamped_sample_count());
  for (const QString& line : lines_above_samples(recording, MinimumLabel::with_stop)) {
    writer.text(line).end_line();
  }
  QString line;
  for (int n = 0; n < recording.SampleCount; ++n) {
    sample_line(recording, n, line);
    writer.text(line).end_line();
  }
  file.write(writer.bytes());
}
