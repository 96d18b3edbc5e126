#include "app/user.h"

namespace User {

Recording recording;

::DeviceTable DeviceTable;
std::int16_t RecorderType = 0;
std::int16_t PortChoice = -1;

std::array<float, 9> DisplayLimit{};
std::array<std::int16_t, 5> DisplayLimitAuto{};

void reset_display_limits() {
  for (std::size_t channel = 0; channel < 4; ++channel) {
    DisplayLimit[2 * channel] = 120.0F;
    DisplayLimit[2 * channel + 1] = -40.0F;
    DisplayLimitAuto[channel] = 1;
  }
}

std::int16_t SegmentCount = 0;
std::array<std::array<QString, 2>, 251> SegmentTimes;
std::int16_t FirstSegment = 0;
std::int16_t LastSegment = 0;

std::array<std::uint8_t, 15> PatternBytes{};
std::array<std::uint8_t, 65> DescriptionBytes{};
std::array<std::uint8_t, 16> TitleBytes{};

bool OnlineRefresh = true;
bool OnlineRecord = true;
QTime OnlineInterval(0, 0, 5);

std::array<float, 5> AxisHigh{};
std::array<float, 5> AxisLow{};

std::int16_t PrintPages = 0;
bool PrintGraph = false;
std::array<std::int16_t, 5> PrintChannels{};

}  // namespace User
