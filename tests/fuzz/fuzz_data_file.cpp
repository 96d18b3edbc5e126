// The data file: a readable file is shown without a crash, and reads the same after it is written.
#include <unistd.h>

#include "app/recording.h"
#include "data/data_file.h"
#include "data/file_handle.h"
#include "fuzz/fuzz.h"
#include "views/graph_picture.h"
#include "views/graph_view.h"
#include "views/statistics.h"

namespace {

void show(Recording& recording) {
  holds([&] { compute_statistics(recording); });
  information_rows(recording);
  const PictureSize size = picture_size({64, 48}, {64, 48}, 1);
  GraphPicture picture;
  GraphCurves& curves = picture.curves_to_fill();
  curves.span = recording.clamped_sample_count();
  curves.channels.resize(static_cast<std::size_t>(recording.clamped_channel_count()));
  if (curves.channels.empty() || curves.span == 0) return;
  holds([&] {
    curves.copy_view(recording, 0, recording.clamped_sample_count());
    for (GraphCurves::Channel& channel : curves.channels) {
      const ChannelScale scale = channel_scale(channel.values, {});
      channel = {channel.values, scale.high, scale.low};
    }
  });
  QImage image(size.pixels, QImage::Format_RGB32);
  picture.draw(image, size, {0xFFFFFFFF, 0xFF000000});
}

// The process number keeps apart fuzzers that run at the same time.
const QString scratch_file = QStringLiteral("/dev/shm/corvane-fuzz-%1").arg(getpid());

QByteArray written(const Recording& recording) {
  FileHandle file;
  file.open_for_writing(scratch_file);
  write_recording(recording, file);
  file.close();
  file.open_for_reading(scratch_file);
  return file.read(1 << 30);
}

void write_and_read_again(const Recording& recording) {
  const QByteArray bytes = written(recording);
  static Recording again;
  read_recording(bytes.toStdString(), again);
  require(again.Title == recording.Title && again.SampleCount == recording.SampleCount);
  require(written(again) == bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Recording recording;
  recording.SampleCount = 0;
  recording.ChannelCount = 0;
  const bool whole = holds([&] {
    read_recording({reinterpret_cast<const char*>(data), size}, recording);
  });
  show(recording);
  if (whole && recording.SampleCount >= 0) write_and_read_again(recording);
  return 0;
}
