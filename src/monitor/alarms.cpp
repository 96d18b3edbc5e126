#include "monitor/alarms.h"

#include "base/errors.h"
#include "base/numbers.h"

AlarmLimits alarm_limits(QStringView up, QStringView down) {
  return {.up = float_of(up), .down = float_of(down)};
}

bool out_of_range(float value, const AlarmLimits& limits) {
  return (limits.up && value > *limits.up) || (limits.down && value < *limits.down);
}

OutOfRange out_of_range(const LiveReading& reading, const std::array<AlarmLimits, 4>& limits,
                        int count) {
  OutOfRange out{};
  for (std::size_t c = 0; static_cast<int>(c) < count; ++c) {
    out[c] = out_of_range(reading[c], limits[c]);
  }
  return out;
}

QString alarm_text(const OutOfRange& out, const LiveChannels& channels) {
  QString text;
  for (std::size_t c = 0; c < out.size(); ++c) {
    if (out[c]) text += channels.names[c] + QStringLiteral("Out Of Range    ");
  }
  return text;
}

void AlarmList::drop_oldest() {
  alarms_.pop_front();
  renumbered_ = count();
}

const AlarmList::Alarm& AlarmList::at(int row) const {
  if (row < 0 || row >= count()) throw BoundsError("no alarm in this row");
  return alarms_[row];
}

int AlarmList::number(int row) const {
  const Alarm& alarm = at(row);
  return row < renumbered_ ? row + 1 : alarm.number;
}
