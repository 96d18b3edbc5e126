#include "data/data_file.h"

#include <QScopeGuard>

#include <algorithm>

#include "app/recording.h"
#include "base/errors.h"
#include "base/field_reader.h"
#include "data/field_writer.h"
#include "data/file_handle.h"

namespace {

constexpr qint64 largest_read = 32 * 1024 * 1024;
// Bytes of a usual time stamp and of a usual value, with quotes and line end.
constexpr int usual_text = 24;
constexpr int usual_value = 10;

}  // namespace

void format_recording(const Recording& recording, FieldWriter& out) {
  out.text(recording.Title).end_line();
  out.text(recording.RecorderName).end_line();
  out.integer(recording.ChannelCount).end_line();
  const int channels = recording.ChannelCount;
  for (std::size_t slot = 0; static_cast<int>(slot) < channels; ++slot) {
    const auto [number, name, unit] = recording.channel(slot);
    out.text(number).end_line().text(name).end_line().text(unit).end_line();
  }
  out.integer(recording.SampleCount).end_line();
  for (std::int32_t n = 0; n < recording.SampleCount; ++n) {
    out.text(recording.SampleTimes(n)).end_line();
    for (int slot = 0; slot < channels; ++slot) {
      out.real(recording.SampleValues(n, slot)).end_line();
    }
  }
}

void read_recording(std::string_view bytes, Recording& recording) {
  FieldReader reader(bytes);
  recording.Title = reader.next_text();
  recording.RecorderName = reader.next_text();
  recording.ChannelCount = reader.next_int16();
  if (recording.ChannelCount > Recording::max_channels) throw FileError("more than four channels");
  const int channels = recording.clamped_channel_count();
  for (std::size_t slot = 0; static_cast<int>(slot) < channels; ++slot) {
    const auto [number, name, unit] = recording.channel(slot);
    for (QString* text : {&number, &name, &unit}) *text = reader.next_text();
  }
  recording.SampleCount = reader.next_int32();
  for (std::int32_t n = 0; n < recording.SampleCount; ++n) {
    recording.SampleTimes(n) = reader.next_text();
    for (int slot = 0; slot < channels; ++slot) {
      recording.SampleValues(n, slot) = reader.next_float();
    }
  }
}

void read_recording(FileHandle& file, Recording& recording) {
  const QByteArray bytes = file.read(largest_read);
  read_recording({bytes.constData(), static_cast<std::size_t>(bytes.size())}, recording);
}

void write_recording(const Recording& recording, FileHandle& file) {
  FieldWriter out(recording.clamped_sample_count() *
                      (usual_text + usual_value * std::max(1, recording.clamped_channel_count())) +
                  4096);
  // The fragment may be all that is left of a Recording.
  auto leave_fragment = qScopeGuard([&] { file.write_fragment(out.bytes()); });
  format_recording(recording, out);
  file.write(out.bytes());
  leave_fragment.dismiss();
}
