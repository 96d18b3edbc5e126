// Benchmarks of opening and saving the largest Recording.
#include "data/data_file.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "app/recording.h"
#include "data/file_handle.h"
#include "data_file_peers.h"
#include "largest_recording.h"
#include "pandas.h"
#include "suite.h"

namespace {

constexpr int samples = Recording::max_samples;
constexpr int channels = Recording::max_channels;

PlainRecording plain(const Recording& recording) {
  PlainRecording result;
  result.channels = channels;
  result.texts = {recording.Title.toStdString(), recording.RecorderName.toStdString()};
  for (std::size_t c = 0; c < channels; ++c) {
    for (std::size_t row = 0; row < 3; ++row) {
      result.texts.push_back(recording.ChannelInfo[row][c].toStdString());
    }
  }
  for (int n = 0; n < samples; ++n) {
    result.times.push_back(recording.SampleTimes(n).toStdString());
    for (int c = 0; c < channels; ++c) result.values.push_back(recording.SampleValues(n, c));
  }
  return result;
}

void save(const Recording& recording, const QString& path) {
  FileHandle file;
  file.open_for_writing(path);
  write_recording(recording, file);
  file.close();
}

void open(Recording& recording, const QString& path) {
  FileHandle file;
  file.open_for_reading(path);
  read_recording(file, recording);
  file.close();
}

void write_csv(const PlainRecording& recording, const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) std::abort();
  file.write("time,a,b,c,d\n");
  const float* value = recording.values.data();
  for (const std::string& time : recording.times) {
    QByteArray line = QByteArray::fromStdString(time);
    for (int c = 0; c < channels; ++c) line += ',' + QByteArray::number(*value++, 'g', 7);
    file.write(line + '\n');
  }
}

QByteArray contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Both sides must do the same work: a difference in their results ends the program.
void check_same_work(const Recording& recording, const QString& ours, const QString& peers) {
  const PlainRecording wanted = plain(recording);
  save(recording, ours);
  write_with_to_chars(peers, wanted);
  Recording opened;
  open(opened, ours);
  PlainRecording scanned;
  read_with_from_chars(ours, scanned);
  PlainRecording extracted;
  read_with_ifstream(ours, extracted);
  if (contents(ours) == contents(peers) && plain(opened).values == wanted.values &&
      plain(opened).times == wanted.times && scanned.values == wanted.values &&
      extracted.values == wanted.values) {
    return;
  }
  std::puts("the peers of the data file do other work than the program");
  std::exit(2);
}

}  // namespace

void data_file_benchmarks(Suite& suite) {
  const QTemporaryDir folder(memory_folder());
  const QString ours = folder.filePath(QStringLiteral("ours.qlx"));
  const QString peers = folder.filePath(QStringLiteral("peers.qlx"));
  const QString live = folder.filePath(QStringLiteral("live.qlx"));
  const QString csv = folder.filePath(QStringLiteral("same.csv"));
  // Live readings have up to 9 digits, downloaded ones two decimals.
  const Recording live_recording = largest_recording(256);
  const Recording recording = largest_recording(100);
  const PlainRecording plain_live = plain(live_recording);
  const PlainRecording plain_recording = plain(recording);
  check_same_work(live_recording, live, peers);
  check_same_work(recording, ours, peers);
  write_csv(plain_recording, csv);

  // A new Recording has no memory yet for its 30001 time stamps.
  const auto open_first = [](const QString& path) -> Side {
    return [path] {
      Recording fresh;
      return milliseconds([&] { open(fresh, path); });
    };
  };
  Recording used;
  const Side open_again = [&] { return milliseconds([&] { open(used, ours); }); };
  const auto peer_opening = [](auto read, const QString& path) -> Side {
    return [read, path] {
      PlainRecording fresh;
      return milliseconds([&] { read(path, fresh); });
    };
  };
  const std::string from_chars = "from_chars, mapped, time stamps skipped";
  suite.compare("data file: open", open_first(ours), from_chars,
                peer_opening(read_with_from_chars, ours), 2.0);
  suite.compare("data file: open again", open_again, from_chars,
                peer_opening(read_with_from_chars, ours), 2.0);
  suite.compare("data file: open live readings", open_first(live), from_chars,
                peer_opening(read_with_from_chars, live), 2.0);
  suite.compare("data file: open", open_first(ours), "ifstream >>, time stamps by getline",
                peer_opening(read_with_ifstream, ours), 1.0);
  Pandas pandas(QStringLiteral("pandas_read.py"), {csv, QString::number(samples)});
  suite.compare(
      "data file: open", open_first(ours), "pandas.read_csv, dates parsed",
      [&] { return pandas.run(); }, 0.2);

  const auto saving = [&](const Recording& from) -> Side {
    return [&] { return milliseconds([&] { save(from, ours); }); };
  };
  const auto peer_saving = [&](const PlainRecording& from) -> Side {
    return [&] { return milliseconds([&] { write_with_to_chars(peers, from); }); };
  };
  suite.compare("data file: save", saving(recording), "to_chars, one write",
                peer_saving(plain_recording), 1.0);
  suite.compare("data file: save live readings", saving(live_recording), "to_chars, one write",
                peer_saving(plain_live), 1.25);
}
