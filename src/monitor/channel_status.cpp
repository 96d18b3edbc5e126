#include "monitor/channel_status.h"

#include <algorithm>

#include "base/numbers.h"

void ChannelStatus::add(float value, bool out_of_range, const QString& time) {
  maximum_ = seen_ ? std::max(maximum_, value) : value;
  minimum_ = seen_ ? std::min(minimum_, value) : value;
  value_ = value;
  seen_ = true;
  alarmed_ = out_of_range;
  if (out_of_range) last_alarm_ = time;
}

QString ChannelStatus::value() const {
  return seen_ ? fixed2(value_) : QString();
}

QString ChannelStatus::maximum() const {
  return seen_ ? fixed2(maximum_) : QString();
}

QString ChannelStatus::minimum() const {
  return seen_ ? fixed2(minimum_) : QString();
}

const ChannelLabels& channel_captions() {
  static const ChannelLabels captions = {
      QStringLiteral("No."),     QStringLiteral("Name"),     QStringLiteral("Unit"),
      QStringLiteral("Value"),   QStringLiteral("Up Limit"), QStringLiteral("Down Limit"),
      QStringLiteral("Maximum"), QStringLiteral("Minimum"),  QStringLiteral("Last Alarm")};
  return captions;
}

ChannelLabels channel_labels(int channel, const LiveChannels& channels, const ChannelStatus& status,
                             const QString& up_limit, const QString& down_limit) {
  const auto c = static_cast<std::size_t>(channel);
  return {QString::number(channel + 1),
          channels.names[c],
          channels.units[c],
          status.value(),
          up_limit,
          down_limit,
          status.maximum(),
          status.minimum(),
          status.last_alarm()};
}
