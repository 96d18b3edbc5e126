// download: writes the recorder's stored readings to a data file.
#include <QFile>

#include <algorithm>

#include "acquire/download_engine.h"
#include "acquire/kept_blocks.h"
#include "base/errors.h"
#include "base/times.h"
#include "cli/connection.h"
#include "cli/files.h"
#include "cli/output.h"
#include "data/data_file.h"
#include "data/field_writer.h"
#include "data/whole_file.h"
#include "device/request.h"
#include "device/texts.h"

namespace {

struct Span {
  std::optional<QDateTime> from;
  std::optional<QDateTime> to;
};

class Download {
 public:
  Download(const Arguments& arguments, Interrupts& interrupts);
  int run();

 private:
  void read_properties();
  void choose_segments(const MemoryMap& memory);
  void fetch(KeptBlocks& kept);
  [[noreturn]] void break_off() const;
  void cut(Recording& recording) const;
  void write(const Recording& recording) const;

  QString path_;
  Span span_;
  Connection recorder_;
  DownloadEngine engine_;
  RecorderProperties properties_;
  RecorderTexts texts_{};
  RecordingHeader header_;
  int kept_before_ = 0;  // blocks that are already in the .part file
};

QString required_path(const Arguments& arguments) {
  QString path = arguments.text("output");
  if (path.isEmpty()) arguments.refuse(QStringLiteral("the file to write is missing (-o)"));
  require_writable(path);
  return path;
}

Span span_from(const Arguments& arguments) {
  Span span = {arguments.time("from", false), arguments.time("to", true)};
  if (span.from && span.to && *span.from > *span.to) {
    arguments.refuse(QStringLiteral("--from is later than --to"));
  }
  return span;
}

Download::Download(const Arguments& arguments, Interrupts& interrupts)
    : path_(required_path(arguments)),
      span_(span_from(arguments)),
      recorder_(arguments, interrupts),
      engine_(recorder_.link(), [this] { return recorder_.interrupted(); }) {}

void Download::read_properties() {
  texts_ = decode_texts(recorder_.ask(texts_request()));
  header_.title = text_of_units(texts_.title.data(), static_cast<int>(texts_.title.size()));
  header_.recorder_type = recorder_.type().row;
  properties_ = decode_properties(recorder_.ask(properties_request()));
  for (int c = 0; c < static_cast<int>(properties_.channels.size()); ++c) {
    if (properties_.channels[static_cast<std::size_t>(c)]) header_.channels.push_back(c);
  }
  if (properties_.readings_held == 0 || header_.channels.empty()) {
    throw Failure(exit_status::no_recorder,
                  QStringLiteral("the recorder on %1 holds no readings").arg(recorder_.where()));
  }
}

[[noreturn]] void fail_without_readings(const MemoryMap& memory) {
  throw Failure(exit_status::no_recorder,
                QStringLiteral("the recorder holds no readings of that time, but from %1 to %2")
                    .arg(stamp_text(whole_second(memory.segments.front().first)),
                         stamp_text(whole_second(memory.segments.back().last))));
}

void Download::choose_segments(const MemoryMap& memory) {
  const auto& segments = memory.segments;
  const auto first = std::find_if(segments.begin(), segments.end(), [this](const Segment& one) {
    return !span_.from || whole_second(one.last) >= *span_.from;
  });
  const auto behind = std::find_if(first, segments.end(), [this](const Segment& one) {
    return span_.to && whole_second(one.first) > *span_.to;
  });
  if (first == behind) fail_without_readings(memory);
  engine_.choose(static_cast<int>(first - segments.begin()),
                 static_cast<int>(behind - segments.begin()) - 1);
}

void Download::break_off() const {
  throw Failure(
      exit_status::no_recorder,
      QStringLiteral("%1; %2 of %3 blocks are kept, and the same command fetches the rest")
          .arg(recorder_.interrupted() ? QStringLiteral("interrupted")
                                       : recorder_.where() + QStringLiteral(" stopped answering"))
          .arg(engine_.blocks_kept())
          .arg(engine_.blocks()));
}

void Download::fetch(KeptBlocks& kept) {
  ProgressBar bar;
  try {
    kept.begin();
    engine_.keep_in(kept);
    const bool complete = engine_.read_blocks([&](int position) {
      if (position == 0) kept_before_ = engine_.blocks_kept();
      bar.show(position, engine_.blocks());
    });
    if (!complete) break_off();
  } catch (const FileError& error) {
    throw Failure(exit_status::file, QStringLiteral("%1.part cannot be written: %2")
                                         .arg(path_, QString::fromLocal8Bit(error.what())));
  }
}

// Cuts the segments to the span. Samples without a time, which no block has filled, are outside it.
void Download::cut(Recording& recording) const {
  const auto within = [&](int n) {
    const QDateTime time = stamp_time(recording.SampleTimes(n));
    return time.isValid() && (!span_.from || time >= *span_.from) &&
           (!span_.to || time <= *span_.to);
  };
  if (!span_.from && !span_.to) return;
  int first = 0;
  int behind = recording.SampleCount;
  while (first < behind && !within(first)) ++first;
  while (behind > first && !within(behind - 1)) --behind;
  for (int n = first; n < behind; ++n) {
    recording.SampleTimes(n - first) = recording.SampleTimes(n);
    for (int slot = 0; slot < Recording::channel_slots; ++slot) {
      recording.SampleValues(n - first, slot) = recording.SampleValues(n, slot);
    }
  }
  recording.SampleCount = behind - first;
}

void Download::write(const Recording& recording) const {
  write_file(path_, [&] {
    FieldWriter bytes;
    format_recording(recording, bytes);
    write_whole_file(path_, bytes.bytes());
  });
}

// Renames the file, because its blocks may be all that is left of that recording.
void put_aside(const QString& part) {
  QString old = part + QStringLiteral(".old");
  for (int n = 2; QFile::exists(old); ++n) old = QStringLiteral("%1.old%2").arg(part).arg(n);
  if (!QFile::rename(part, old)) {
    throw Failure(exit_status::file, QStringLiteral("%1 is of another recording and cannot be "
                                                    "renamed")
                                         .arg(part));
  }
  complain(QStringLiteral("%1 is of another recording and is now called %2").arg(part, old));
}

int Download::run() {
  read_properties();
  const MemoryMap& memory = engine_.map(properties_, static_cast<int>(header_.channels.size()));
  const QDateTime now = QDateTime::currentDateTimeUtc();
  choose_segments(memory);
  const QString part = path_ + QStringLiteral(".part");
  KeptBlocks kept(part, recording_identity(properties_, texts_));
  if (kept.of_another_recording()) put_aside(part);
  kept.align(properties_, memory, now);
  fetch(kept);
  Recording recording;
  engine_.store(header_, recorder_.type().table, recording);
  cut(recording);
  if (recording.SampleCount == 0) fail_without_readings(memory);
  write(recording);
  kept.remove();
  const int count = recording.SampleCount;
  print(QStringLiteral("%1 is complete: %2 samples of %3 channel%4, %5 to %6; %7 of %8 blocks had "
                       "been kept\n")
            .arg(path_)
            .arg(count)
            .arg(recording.ChannelCount)
            .arg(recording.ChannelCount == 1 ? QString() : QStringLiteral("s"),
                 recording.SampleTimes(0), recording.SampleTimes(count - 1))
            .arg(kept_before_)
            .arg(engine_.blocks()));
  return exit_status::fine;
}

int run(const Arguments& arguments, Interrupts& interrupts) {
  return Download(arguments, interrupts).run();
}

}  // namespace

Command download_command() {
  return {
      "download",
      "-o FILE.qlx [OPTION]...",
      "Reads the stored readings into a data file.",
      "Reads the readings that the recorder has stored and writes them into a data file, the\n"
      "same as the desktop program's Read Data and Save do. A download that is broken off keeps\n"
      "the blocks that came in FILE.qlx.part; the same command then fetches only the missing\n"
      "ones, if the recorder still holds the same recording. FILE.qlx itself appears, or is\n"
      "replaced, only when it is complete. A FILE.qlx.part of another recording is renamed.",
      {{"o|output", "FILE", "The data file to write; one that exists is replaced."},
       {"from", "TIME", "Only readings from YYYY-MM-DD[THH:MM[:SS]] on."},
       {"to", "TIME", "Only readings up to YYYY-MM-DD[THH:MM[:SS]]; a day counts whole."},
       port_option,
       type_option},
      0,
      run};
}
