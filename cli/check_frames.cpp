#include "cli/check_frames.h"

#include <QStringList>

#include "base/numbers.h"
#include "base/times.h"
#include "device/limits.h"
#include "device/properties.h"
#include "device/status.h"
#include "device/stored_block.h"
#include "device/texts.h"

namespace {

constexpr int most_channels = 4;

QString status_meaning(const QByteArray& answer) {
  const RecorderStatus status = decode_status(answer);
  QStringList values;
  const qsizetype channels = (answer.size() - status_request(0).answer_length) / 2;
  for (std::size_t c = 0; static_cast<qsizetype>(c) < channels; ++c) {
    values << fixed2(double{status.readings[c]});
  }
  return QStringLiteral("battery %1 V; values %2")
      .arg(fixed2(status.battery_volts), values.join(QStringLiteral(", ")));
}

QString properties_meaning(const QByteArray& answer) {
  const RecorderProperties properties = decode_properties(answer);
  QStringList channels;
  for (std::size_t c = 0; c < properties.channels.size(); ++c) {
    if (properties.channels[c]) channels << QString::number(c + 1);
  }
  return QStringLiteral(
             "%1, %2; channels %3; start %4, delay %5 s, interval %6 s; %7 readings held")
      .arg(properties.recording ? QStringLiteral("recording") : QStringLiteral("stopped"),
           properties.wrap ? QStringLiteral("wraps") : QStringLiteral("stops when full"),
           channels.isEmpty() ? QStringLiteral("none") : channels.join(u','),
           stamp_text(properties.start))
      .arg(properties.startup_delay)
      .arg(properties.record_interval)
      .arg(properties.readings_held);
}

QString texts_meaning(const QByteArray& answer) {
  const RecorderTexts texts = decode_texts(answer);
  return QStringLiteral("title \"%1\", description \"%2\"")
      .arg(text_of_units(texts.title.data(), static_cast<int>(texts.title.size())),
           text_of_units(texts.description.data(), static_cast<int>(texts.description.size())));
}

QString limits_meaning(const QByteArray& answer) {
  const ChannelLimits limits = decode_limits(answer);
  return QStringLiteral("down limit %1, up limit %2").arg(fixed2(limits.down), fixed2(limits.up));
}

QString block_meaning(const QByteArray& answer) {
  const StoredBlock block(answer, 1);
  return QStringLiteral("%1 block of %2 readings")
      .arg(block.full() ? QStringLiteral("a full") : QStringLiteral("a short"))
      .arg(block.samples());
}

// Whether the check byte is right over bytes 1 .. length - 1.
bool check_holds(const QByteArray& bytes, int length) {
  return length > 1 && check_byte(bytes.mid(1, length - 1), length - 2) == 0;
}

}  // namespace

std::vector<Probe> probes_for(int channels) {
  std::vector<Probe> probes = {
      {QStringLiteral("status request"), status_request(channels), status_meaning},
      {QStringLiteral("properties request"), properties_request(), properties_meaning},
      {QStringLiteral("title and description request"), texts_request(), texts_meaning}};
  for (int n = 1; n <= channels; ++n) {
    probes.push_back({QStringLiteral("request for the limits of channel %1").arg(n),
                      limits_request(n), limits_meaning});
  }
  probes.push_back({QStringLiteral("request for stored block 0"), block_request(0), block_meaning});
  return probes;
}

Outcome outcome_of(const Request& request, const QByteArray& bytes) {
  const int length = request.answer_length;
  if (bytes.isEmpty()) return Outcome::silent;
  if (bytes.endsWith(request.bytes) && bytes.size() <= request.bytes.size() + 1)
    return Outcome::echo;
  if (bytes.size() < length) return Outcome::short_answer;
  if (check_holds(bytes, length)) return Outcome::right;
  if (bytes.size() == length + 1 && check_holds(bytes.mid(1), length)) return Outcome::extra_byte;
  return bytes.size() == length ? Outcome::wrong_check : Outcome::noise;
}

int channels_of_status(const QByteArray& bytes) {
  for (int channels = 1; channels <= most_channels; ++channels) {
    if (status_request(channels).answer_length == bytes.size() &&
        check_holds(bytes, static_cast<int>(bytes.size()))) {
      return channels;
    }
  }
  return 0;
}

QString meaning_of(const Probe& probe, Outcome outcome, const QByteArray& bytes) {
  const int length = probe.request.answer_length;
  const QString count = QStringLiteral("%1 of %2 bytes").arg(bytes.size()).arg(length);
  switch (outcome) {
    case Outcome::right:
      return count + QStringLiteral(", check byte right: ") + probe.meaning(bytes.left(length));
    case Outcome::extra_byte:
      return count + QStringLiteral(", one too many in front, check byte right: ") +
             probe.meaning(bytes.mid(1, length));
    case Outcome::silent:
      return QStringLiteral("no answer");
    case Outcome::short_answer:
      return count + QStringLiteral(": too few");
    case Outcome::wrong_check:
      return count + QStringLiteral(", check byte wrong");
    case Outcome::noise:
      return count + QStringLiteral(": too many, check byte wrong");
    case Outcome::echo:
      return QStringLiteral("the request itself came back");
  }
  return {};
}
