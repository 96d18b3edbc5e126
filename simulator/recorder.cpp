#include "simulator/recorder.h"

#include <algorithm>
#include <cmath>

#include "simulator/frames.h"

namespace simulator {

namespace {

// Mode flags, the pattern's first byte. A request to start has both bits of `start_flags`. Answers
// never have them; they report in `running_flag` that the recorder runs.
constexpr int running_flag = 0x02;
constexpr int delayed_flag = 0x04;
constexpr int wrap_flag = 0x40;
constexpr int start_flags = 0x88;

constexpr int pattern_size = 14;
constexpr int title_size = 16;
constexpr int description_size = 48;

QByteArray utf16le(const QString& text, int size) {
  QByteArray bytes;
  for (const QChar unit : text) append_word(bytes, unit.unicode());
  return bytes.leftJustified(size, '\0', true);
}

QByteArray limit_bytes(const Limits& limits) {
  QByteArray bytes;
  append_word(bytes, static_cast<int>(std::lround(limits.down * 256)));
  append_word(bytes, static_cast<int>(std::lround(limits.up * 256)));
  return bytes;
}

// The mask bits of the channels that a recorder has; it cannot record others.
constexpr unsigned channel_bits(int channels) {
  return (1U << channels) - 1;
}

// The channels 0 .. count - 1 whose bits are set in the mask.
std::vector<int> channels_in(unsigned mask, int count) {
  std::vector<int> channels;
  for (int channel = 0; channel < count; ++channel) {
    if (mask & (1U << channel)) channels.push_back(channel);
  }
  return channels;
}

// The pattern's year is one byte, counted from 2000.
QDateTime earliest_start() {
  return {QDate(2000, 1, 1), QTime(0, 0), Qt::UTC};
}

QByteArray pattern_of(const Settings& settings, const QDateTime& start) {
  const int flags = (settings.delay_s ? delayed_flag : 0) | (settings.wrap ? wrap_flag : 0);
  QByteArray pattern;
  pattern += static_cast<char>(flags);
  pattern += static_cast<char>(settings.mask & channel_bits(settings.channels));
  for (const int part : {start.date().year() - 2000, start.date().month(), start.date().day(),
                         start.time().hour(), start.time().minute(), start.time().second()}) {
    pattern += static_cast<char>(part);
  }
  append_word(pattern, settings.delay_s.value_or(0));
  append_word(pattern, settings.interval_s - 1);
  append_word(pattern, settings.all_data);
  return pattern;
}

// Lead byte, data length (high byte first), data, check byte. The check leaves out the lead byte.
QByteArray answer_frame(char lead, const QByteArray& data, int padded_size) {
  QByteArray frame(1, lead);
  frame += static_cast<char>(data.size() >> 8);
  frame += static_cast<char>(data.size() & 0xFF);
  frame += data.leftJustified(padded_size, '\0');
  return frame += static_cast<char>(check_byte(frame, 1));
}

}  // namespace

Recorder::Recorder(const Settings& settings, const QDateTime& now)
    : channels_(settings.channels),
      battery_(static_cast<int>(std::lround(settings.battery_volts * 1024))),
      signal_(settings.signal),
      texts_(utf16le(settings.title, title_size) + utf16le(settings.description, description_size)),
      running_(settings.running),
      last_reading_(now.addSecs(-settings.elapsed_s)),
      memory_(channels_in(settings.mask, channels_), settings.readings),
      faults_(settings.faults) {
  const qint64 age_s = memory_.samples_taken() * settings.interval_s + settings.delay_s.value_or(0);
  const QDateTime fitting = std::max(last_reading_.addSecs(-age_s), earliest_start());
  pattern_ = pattern_of(settings, settings.start.value_or(fitting));
  next_reading_ = last_reading_.addSecs(settings.interval_s);
  // However old the newest reading is, none is added now: the memory holds the number asked for.
  if (next_reading_ <= now) next_reading_ = now.addSecs(settings.interval_s);
  std::transform(settings.limits.begin(), settings.limits.end(), limits_.begin(), limit_bytes);
}

std::vector<Answer> Recorder::receive(const QByteArray& bytes, const QDateTime& now) {
  std::vector<Answer> answers;
  for (const Request& request : reader_.read(bytes, now)) {
    Answer answer{request.bytes, {}, turnaround_ms, false, QStringLiteral("no request it knows")};
    if (request.valid) obey(answer, now);
    answers.push_back(answer);
  }
  return answers;
}

// With the fault "silent" the recorder does not hear the request, so it does not carry it out.
void Recorder::obey(Answer& answer, const QDateTime& now) {
  const std::optional<Fault> fault = faults_.next(answer.request);
  const bool heard = !fault || fault->kind != FaultKind::Silent;
  if (heard) {
    const auto data = answer_data(answer.request, now);
    if (!data) return;
    const char command = answer.request.front();
    answer.bytes = answer_frame(command, *data, command == 0x01 ? 256 : 0);
    answer.remark.clear();
  }
  if (fault) answer = spoil(answer, *fault);
}

std::optional<QByteArray> Recorder::answer_data(const QByteArray& request, const QDateTime& now) {
  measure_until(now);
  const QByteArray done(1, '\0');
  const int parameter = request.size() > 3 ? byte_at(request, 2) : 0;
  const bool has_channel = parameter >= 1 && parameter <= channels_;
  switch (byte_at(request, 0)) {
    case 0x00:
      return status(now);
    case 0x01:
      return reported_.value_or(memory_).block(parameter, signal_);
    case 0x02:
      return properties(now);
    case 0x05:
      write_properties(request.mid(2, pattern_size), now);
      return done;
    case 0x07:
      if (parameter > 1) return std::nullopt;
      if (parameter == 1 && !running_) start(now, 0);
      if (parameter == 0) running_ = false;
      return done;
    case 0x08:
      return texts_;
    case 0x09:
      texts_ = request.mid(2, title_size + description_size);
      return done;
    case 0x0A:
      if (!has_channel) return std::nullopt;
      return limits_[static_cast<std::size_t>(parameter - 1)];
    case 0x0B:
      if (!has_channel) return std::nullopt;
      limits_[static_cast<std::size_t>(parameter - 1)] = request.mid(4, 4);
      return done;
  }
  return std::nullopt;
}

QByteArray Recorder::status(const QDateTime& now) const {
  QByteArray data;
  append_word(data, battery_);
  for (int channel = 0; channel < channels_; ++channel) append_word(data, live(channel, now));
  return data;
}

QByteArray Recorder::properties(const QDateTime& now) {
  reported_ = memory_;
  QByteArray data = pattern_;
  const int flags = data[0] & ~(running_flag | start_flags);
  data[0] = static_cast<char>(flags | (running_ ? running_flag : 0));
  append_word(data, static_cast<int>(std::clamp<qint64>(last_reading_.secsTo(now), 0, 65535)));
  append_word(data, memory_.readings());
  return data;
}

void Recorder::write_properties(const QByteArray& pattern, const QDateTime& now) {
  pattern_ = pattern;
  const unsigned mask = byte_at(pattern, 1) & channel_bits(channels_);
  pattern_[1] = static_cast<char>(mask);
  memory_ = Memory(channels_in(mask, channels_), 0);
  reported_.reset();
  last_reading_ = now;
  running_ = false;
  if ((pattern_[0] & start_flags) != start_flags) return;
  start(now, pattern_[0] & delayed_flag ? word_at(pattern_, 8) : 0);
}

void Recorder::start(const QDateTime& now, int delay_s) {
  running_ = true;
  next_reading_ = now.addSecs(delay_s + interval_s());
}

void Recorder::measure_until(const QDateTime& now) {
  const bool wrap = pattern_[0] & wrap_flag;
  if (running_ && next_reading_ <= now) {
    const qint64 interval_ms = interval_s() * qint64{1000};
    qint64 samples = next_reading_.msecsTo(now) / interval_ms + 1;
    if (!wrap) samples = std::min(samples, memory_.room());
    memory_.add(samples);
    next_reading_ = next_reading_.addMSecs(samples * interval_ms);
    if (samples > 0) last_reading_ = next_reading_.addMSecs(-interval_ms);
  }
  if (!wrap && memory_.room() == 0) running_ = false;
}

bool Recorder::running(const QDateTime& now) {
  measure_until(now);
  return running_;
}

int Recorder::readings(const QDateTime& now) {
  measure_until(now);
  return memory_.readings();
}

std::uint16_t Recorder::live(int channel, const QDateTime& now) const {
  return signal_(now.toSecsSinceEpoch(), channel);
}

int Recorder::interval_s() const {
  return word_at(pattern_, 10) + 1;
}

}  // namespace simulator
