// Module User: the state that the whole program shares from start to exit. Only windows and
// command handlers use it; logic takes what it needs as arguments.
#pragma once

#include <QDateTime>
#include <QString>

#include <array>
#include <cstdint>

#include "app/recording.h"
#include "device/device_table.h"

namespace User {

extern Recording recording;

// The recorder types from the device file; the row in use; the chosen port: -1 none, 0..3
// COM1..COM4, 4 automatic search. During and after a search it is the index 0..7 of the port tried.
extern ::DeviceTable DeviceTable;
extern std::int16_t RecorderType;
extern std::int16_t PortChoice;

// Display limits of the graphs: element 2c is the upper and 2c+1 the lower limit of channel c+1, in
// its unit. 1 in DisplayLimitAuto lets the graph choose them. The last elements are not used.
extern std::array<float, 9> DisplayLimit;
extern std::array<std::int16_t, 5> DisplayLimitAuto;
void reset_display_limits();

// Historical download: the segments offered, oldest first, and the first and last index chosen.
extern std::int16_t SegmentCount;
extern std::array<std::array<QString, 2>, 251> SegmentTimes;
extern std::int16_t FirstSegment;
extern std::int16_t LastSegment;

// Recorder pattern and texts as bytes on the wire (docs/protocol.md).
extern std::array<std::uint8_t, 15> PatternBytes;
extern std::array<std::uint8_t, 65> DescriptionBytes;
extern std::array<std::uint8_t, 16> TitleBytes;

// Online Record: whether and how often the Real-time Data window polls.
extern bool OnlineRefresh;
extern bool OnlineRecord;
extern QTime OnlineInterval;

// The values at the top and bottom edges of the historical graph, by channel slot. Each redraw sets
// them.
extern std::array<float, 5> AxisHigh;
extern std::array<float, 5> AxisLow;

// Print Set: the number of pages or copies (0 after Cancel), graph or sheet, and the check boxes, 0
// or 1: element 0 makes all curves share one graph, 1..4 are the channels.
extern std::int16_t PrintPages;
extern bool PrintGraph;
extern std::array<std::int16_t, 5> PrintChannels;

}  // namespace User
