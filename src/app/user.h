// Module User: the state that the whole program shares, alive from start to exit. Only windows and
// command handlers touch it; logic takes what it needs as arguments.
#pragma once

#include <QDateTime>
#include <QString>

#include <array>
#include <cstdint>

#include "app/recording.h"
#include "device/device_table.h"

namespace User {

extern Recording recording;

// Recorder types from the device file; the row in use; the chosen port (-1 none, 0..3 COM1..COM4,
// 4 automatic search; while and after searching the index 0..7 of the port tried).
extern ::DeviceTable DeviceTable;
extern std::int16_t RecorderType;
extern std::int16_t PortChoice;

// Display limits of the graphs: element 2c the upper and 2c+1 the lower one of channel c+1 in the
// channel's unit; 1 in DisplayLimitAuto lets the graph choose. The last elements are not used.
extern std::array<float, 9> DisplayLimit;
extern std::array<std::int16_t, 5> DisplayLimitAuto;
void reset_display_limits();

// Historical download: the segments offered and the ones chosen, counted from the oldest.
extern std::int16_t SegmentCount;
extern std::array<std::array<QString, 2>, 251> SegmentTimes;
extern std::int16_t FirstSegment;
extern std::int16_t LastSegment;

// Recorder pattern and texts as they travel on the wire (docs/protocol.md).
extern std::array<std::uint8_t, 15> PatternBytes;
extern std::array<std::uint8_t, 65> DescriptionBytes;
extern std::array<std::uint8_t, 16> TitleBytes;

// Online record: whether and how often the Real-time Data window polls.
extern bool OnlineRefresh;
extern bool OnlineRecord;
extern QTime OnlineInterval;

// Values at the top and the bottom edge of the historical graph, by channel slot, as the last
// redraw set them.
extern std::array<float, 5> AxisHigh;
extern std::array<float, 5> AxisLow;

// Print Set: pages or copies (0 when it was cancelled), graph or sheet, and the check boxes, 0 or
// 1: first that all curves share one graph, then channels 1..4.
extern std::int16_t PrintPages;
extern bool PrintGraph;
extern std::array<std::int16_t, 5> PrintChannels;

}  // namespace User
