// The recorder types that the program knows, read once at start from the device file.
#pragma once

#include <QString>

#include <array>
#include <cstdint>
#include <string_view>

class DeviceTable {
 public:
  static constexpr int max_rows = 101;
  static constexpr int fields = 12;

  // The number of types that the file announces, which can be more than it holds.
  std::int16_t DeviceCount = 0;

  // The name of the type in row `row`, and name and unit of its channel 0..3. Empty text outside
  // the table: a damaged device file must not crash the program.
  const QString& type_name(int row) const { return text(type_field, row); }
  const QString& channel_name(int row, int channel) const {
    return text(first_channel_field + 2 * channel, row);
  }
  const QString& channel_unit(int row, int channel) const {
    return text(first_channel_field + 2 * channel + 1, row);
  }

  // A field as it is in the file. The unit of a channel follows its name.
  static constexpr int type_field = 0;
  static constexpr int channel_count_field = 2;
  static constexpr int first_channel_field = 3;
  const QString& text(int field, int row) const;
  void set_text(int field, int row, const QString& text);

  // The number of rows to offer: DeviceCount, limited to 0..max_rows.
  int rows() const;

  // The channel count of a type, 1..4. Throws ConversionError for any other text, such as an empty
  // or non-numeric one.
  int channel_count(int row) const;
  // The same, but 0 instead of an exception.
  int channel_count_or_none(int row) const;

 private:
  std::array<std::array<QString, fields>, max_rows> texts_;
};

// Reads the table: one whole number N, then N rows of 11 values in free format. Values that cannot
// be read are skipped one by one: a short file leaves fields empty, rows beyond 101 are dropped,
// an N that is not a number leaves the table empty.
DeviceTable read_device_table(std::string_view bytes);

// Reads the device file `path`; gives an empty table if there is none. Never throws.
DeviceTable read_device_file(const QString& path);
