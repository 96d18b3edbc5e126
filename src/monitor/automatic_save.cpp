#include "monitor/automatic_save.h"

#include "base/times.h"
#include "data/field_writer.h"
#include "data/whole_file.h"
#include "monitor/live_buffer.h"

QString automatic_save_name(const QDateTime& now) {
  return stamp_text(now).replace(u':', u'-') + QStringLiteral(".qlx");
}

void save_live_buffer(const QString& path, const AutomaticSaveHeader& header,
                      const LiveBuffer& buffer) {
  constexpr int usual_line = 60;
  FieldWriter out(usual_line * buffer.LiveCount() + 4096);
  out.text(header.title).end_line();
  out.text(header.recorder_name).end_line();
  out.integer(header.channels.count).end_line();
  for (std::size_t c = 0; static_cast<int>(c) < header.channels.count; ++c) {
    out.text(QString::number(c + 1)).text(header.channels.names[c]).text(header.channels.units[c]);
    out.end_line();
  }
  out.integer(buffer.LiveCount()).end_line();
  for (int slot = 0; slot < buffer.LiveCount(); ++slot) {
    out.text(buffer.LiveTimes(slot));
    for (int c = 0; c < header.channels.count; ++c) out.real(buffer.LiveValues(slot, c));
    out.end_line();
  }
  write_whole_file(path, out.bytes());
}
