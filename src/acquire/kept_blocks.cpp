#include "acquire/kept_blocks.h"

#include <QStringList>

#include <cmath>
#include <set>
#include <utility>

#include "base/errors.h"
#include "base/numbers.h"
#include "data/whole_file.h"
#include "device/stored_block.h"

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

const QByteArray first_line = "Corvane: blocks of a download that was broken off, version 2";
constexpr qint64 largest_file = 1024 * 1024;
// The recorder rounds the age of its newest reading down to the second, and its answer takes time.
constexpr double end_tolerance_s = 1.4;
constexpr int least_certain_interval_s = 3;
constexpr int largest_age_s = 65535;

// Adds a check to a line: one that a power failure has cut off does not end in its right check.
QByteArray checked_line(const QByteArray& text) {
  return text + ' ' + QByteArray::number(qChecksum(text), 16) + '\n';
}

std::optional<QByteArray> unchecked(const QByteArray& line) {
  const QByteArray text = line.left(line.lastIndexOf(' '));
  if (checked_line(text) != line) return std::nullopt;
  return text;
}

bool sync(QFile& file) {
#ifdef Q_OS_WIN
  return file.flush() && _commit(file.handle()) == 0;
#else
  return file.flush() && fsync(file.handle()) == 0;
#endif
}

[[noreturn]] void fail_for_system() {
  throw FileError(qt_error_string().toStdString());
}

}  // namespace

QByteArray recording_identity(const RecorderProperties& properties, const RecorderTexts& texts) {
  QString channels;
  for (const bool records : properties.channels) channels += records ? u'1' : u'0';
  const auto hex = [](const auto& bytes) {
    return QString::fromLatin1(
        QByteArray(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size())).toHex());
  };
  return QStringList{properties.start_text,
                     QString::number(properties.delayed ? properties.startup_delay : -1),
                     QString::number(properties.record_interval),
                     channels,
                     QString::number(properties.all_data),
                     properties.wrap ? QStringLiteral("wraps") : QStringLiteral("stops"),
                     hex(texts.title),
                     hex(texts.description)}
      .join(u'|')
      .toLatin1();
}

KeptBlocks::KeptBlocks(QString path, QByteArray identity)
    : path_(std::move(path)), identity_(std::move(identity)) {
  load();
}

void KeptBlocks::load() {
  QFile file(path_);
  if (!file.open(QIODevice::ReadOnly)) return;
  of_another_ = unchecked(file.readLine(largest_file)) != first_line ||
                unchecked(file.readLine(largest_file)) != "recording " + identity_;
  if (of_another_) return;
  while (!file.atEnd() && file.pos() < largest_file && parse_line(file.readLine(largest_file))) {
  }
}

bool KeptBlocks::parse_line(const QByteArray& line) {
  const auto text = unchecked(line);
  if (!text) return false;
  const QList<QByteArray> words = text->split(' ');
  if (words.front() == "state" && words.size() == 5) {
    state_ = {.newest = words[1].toInt(),
              .held = words[2].toInt(),
              .recording = words[3] == "1",
              .end = QDateTime::fromMSecsSinceEpoch(words[4].toLongLong(), Qt::UTC)};
    return true;
  }
  const QByteArray answer = QByteArray::fromHex(words.back());
  if (words.front() != "block" || words.size() != 3 || answer.size() != block_answer_size)
    return false;
  blocks_[words[1].toInt()] = answer;
  return true;
}

std::optional<int> KeptBlocks::readings_since(const RecorderProperties& properties,
                                              const MemoryMap& memory, const QDateTime& end) {
  const int more = properties.readings_held - state_->held;
  const bool may_have_dropped =
      properties.wrap && properties.readings_held > nearly_full - about_to_go;
  placed_by_time_ = may_have_dropped && (state_->recording || properties.recording);
  if (!placed_by_time_) {
    if (more < 0 || (more > 0 && !state_->recording)) return std::nullopt;
    return more;
  }
  const bool age_known = properties.idle_seconds < largest_age_s && state_->recording;
  if (!age_known || memory.interval < least_certain_interval_s) return std::nullopt;
  const double seconds = static_cast<double>(state_->end.msecsTo(end)) / 1000.0;
  const double samples = round_half_even(seconds / memory.interval);
  const double off = std::abs(seconds - samples * memory.interval);
  if (samples < 0 || samples > 1e6 || off > end_tolerance_s) return std::nullopt;
  return static_cast<int>(samples) * memory.channels;
}

void KeptBlocks::align(const RecorderProperties& properties, const MemoryMap& memory,
                       const QDateTime& now) {
  channels_ = memory.channels;
  const QDateTime end = now.addSecs(-properties.idle_seconds);
  const auto more = state_ ? readings_since(properties, memory, end) : std::nullopt;
  if (!more) blocks_.clear();
  state_ = {.newest = more ? state_->newest + *more : properties.readings_held,
            .held = properties.readings_held,
            .recording = properties.recording,
            .end = end};
  // A wrapping recorder has dropped these.
  std::erase_if(blocks_, [oldest = state_->newest - state_->held](const auto& block) {
    return block.first <= oldest;
  });
}

QByteArray KeptBlocks::state_line() const {
  return "state " + QByteArray::number(state_->newest) + ' ' + QByteArray::number(state_->held) +
         (state_->recording ? " 1 " : " 0 ") + QByteArray::number(state_->end.toMSecsSinceEpoch());
}

void KeptBlocks::begin() {
  QByteArray text = checked_line(first_line) + checked_line("recording " + identity_) +
                    checked_line(state_line());
  for (const auto& [end, answer] : blocks_) {
    text += checked_line("block " + QByteArray::number(end) + ' ' + answer.toHex());
  }
  write_whole_file(path_, text.toStdString());
  file_.setFileName(path_);
  if (!file_.open(QIODevice::WriteOnly | QIODevice::Append)) fail_for_system();
}

void KeptBlocks::start_over() {
  blocks_.clear();
  file_.close();
  begin();
}

void KeptBlocks::keep(int block, const QByteArray& answer) {
  const int end = state_->newest - block * readings_per_block;
  blocks_[end] = answer;
  const QByteArray line = checked_line("block " + QByteArray::number(end) + ' ' + answer.toHex());
  if (file_.write(line) != line.size() || !sync(file_)) fail_for_system();
}

std::optional<QByteArray> KeptBlocks::find(int block) const {
  if (!state_) return std::nullopt;
  const int end = state_->newest - block * readings_per_block;
  const int oldest = state_->newest - state_->held;
  if (end - readings_per_block < oldest) {
    // The short block at the end of the memory counts only unchanged.
    const auto kept = blocks_.find(end);
    if (kept == blocks_.end() || StoredBlock(kept->second, channels_).full()) return std::nullopt;
    return kept->second;
  }
  // The newest readings come first. One block's readings may be spread over several kept blocks.
  // With three channels a block is no whole number of samples, so it counts only if it is unmoved.
  QByteArray data;
  for (int at = end; at > end - readings_per_block;) {
    const auto kept = blocks_.lower_bound(at);
    if (kept == blocks_.end() || kept->first - readings_per_block >= at) return std::nullopt;
    const StoredBlock block_there(kept->second, channels_);
    if (!block_there.full()) return std::nullopt;
    if (readings_per_block % channels_ != 0 && kept->first != end) return std::nullopt;
    data += block_there.data().mid(reading_size * (kept->first - at));
    at = kept->first - readings_per_block;
  }
  return with_data(blocks_.lower_bound(end)->second, data.left(reading_size * readings_per_block));
}

int KeptBlocks::different_samples(int block) const {
  const auto answer = find(block);
  if (!answer) return 0;
  // The whole samples are at the end of the data.
  std::set<QByteArray> samples;
  const int size = reading_size * channels_;
  const QByteArray data = StoredBlock(*answer, channels_).data();
  for (auto at = data.size() - size; at >= 0; at -= size) samples.insert(data.mid(at, size));
  return static_cast<int>(samples.size());
}

bool KeptBlocks::same_readings(const QByteArray& one, const QByteArray& other) const {
  const StoredBlock kept(one, channels_);
  const StoredBlock come(other, channels_);
  return kept.full() == come.full() && kept.data() == come.data();
}

void KeptBlocks::remove() {
  file_.close();
  QFile::remove(path_);
}
