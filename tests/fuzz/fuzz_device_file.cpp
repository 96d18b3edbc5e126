// The device file: with any contents the table can be read, and a channel count is 1 to 4.
#include "device/device_table.h"
#include "fuzz/fuzz.h"
#include "monitor/live_channels.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const DeviceTable table = read_device_table({reinterpret_cast<const char*>(data), size});
  require(table.rows() >= 0 && table.rows() <= DeviceTable::max_rows);
  for (int row = 0; row < table.rows(); ++row) {
    int count = 1;
    holds([&] { count = table.channel_count(row); });
    require(count >= 1 && count <= 4);
    require(live_channels(table, row).count <= 4);
  }
  return 0;
}
