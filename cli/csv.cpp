#include "cli/csv.h"

#include "app/recording.h"
#include "base/numbers.h"
#include "base/times.h"
#include "data/export_lines.h"

namespace {

QString csv_field(const QString& text) {
  const bool plain = !text.contains(u',') && !text.contains(u'"') && !text.contains(u'\r') &&
                     !text.contains(u'\n');
  if (plain) return text;
  return u'"' + QString(text).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

}  // namespace

QString csv_record(const QStringList& fields) {
  QStringList quoted;
  for (const QString& field : fields) quoted << csv_field(field);
  return quoted.join(u',') + QStringLiteral("\r\n");
}

QString iso_time(const QString& stamp) {
  const QDateTime time = date_time_of(stamp);
  return time.isValid() ? stamp_text(time).replace(10, 1, u'T') : stamp;
}

QString csv_number(float value) {
  char text[shortest_float_size];
  return QString::fromLatin1(text, write_shortest_float(text, value) - text);
}

QString csv_of(const Recording& recording) {
  QStringList head = {QStringLiteral("Time")};
  const int channels = recording.clamped_channel_count();
  for (int slot = 0; slot < channels; ++slot) head << column_head(recording, slot);
  QString csv = csv_record(head);
  for (int n = 0; n < recording.SampleCount; ++n) {
    const QString& stamp = recording.SampleTimes(n);
    QStringList fields = {iso_time(stamp)};
    for (int slot = 0; slot < channels; ++slot) {
      // A sample that the download did not fill has no time, and its value is not a reading.
      fields << (stamp.isEmpty() ? QString() : csv_number(recording.SampleValues(n, slot)));
    }
    csv += csv_record(fields);
  }
  return csv;
}
