#include "device/device_table.h"

#include <QFile>

#include <algorithm>

#include "base/errors.h"
#include "base/field_reader.h"
#include "base/numbers.h"

namespace {

// Bytes. This is enough for 101 rows of 11 long names; the rest of a longer file is not read.
constexpr qint64 largest_device_file = 1024 * 1024;
constexpr int fields_in_file = 11;

}  // namespace

const QString& DeviceTable::text(int field, int row) const {
  static const QString empty;
  if (field < 0 || field >= fields || row < 0 || row >= max_rows) return empty;
  return texts_[static_cast<std::size_t>(row)][static_cast<std::size_t>(field)];
}

void DeviceTable::set_text(int field, int row, const QString& text) {
  if (field < 0 || field >= fields || row < 0 || row >= max_rows) return;
  texts_[static_cast<std::size_t>(row)][static_cast<std::size_t>(field)] = text;
}

int DeviceTable::rows() const {
  return std::clamp(static_cast<int>(DeviceCount), 0, max_rows);
}

int DeviceTable::channel_count(int row) const {
  const int count = channel_count_or_none(row);
  if (count == 0) throw ConversionError("channel count outside 1..4");
  return count;
}

int DeviceTable::channel_count_or_none(int row) const {
  const double count = round_half_even(number_of(text(channel_count_field, row)).value_or(0));
  return count >= 1 && count <= 4 ? static_cast<int>(count) : 0;
}

DeviceTable read_device_table(std::string_view bytes) {
  DeviceTable table;
  FieldReader reader(bytes);
  skip_on_error([&] { table.DeviceCount = reader.next_int16(); });
  for (int row = 0; row < table.rows(); ++row) {
    for (int field = 0; field < fields_in_file; ++field) {
      skip_on_error([&] { table.set_text(field, row, reader.next_text()); });
    }
  }
  return table;
}

DeviceTable read_device_file(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  const QByteArray bytes = file.read(largest_device_file);
  return read_device_table({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}
