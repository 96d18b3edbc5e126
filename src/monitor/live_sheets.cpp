#include "monitor/live_sheets.h"

#include "base/numbers.h"

namespace {

enum Column { number_column, time_column, first_free_column };

const QStringList fixed_headers = {QStringLiteral("Number"), QStringLiteral("Time")};

// Aligns numbers to the right, so that their digits line up.
QVariant alignment(int column, bool number) {
  if (column == time_column || !number) return {Qt::AlignLeft | Qt::AlignVCenter};
  return {Qt::AlignRight | Qt::AlignVCenter};
}

}  // namespace

LiveSheet::LiveSheet(const LiveBuffer& buffer, QObject* parent)
    : QAbstractTableModel(parent), buffer_(buffer), headers_(fixed_headers) {}

void LiveSheet::set_channels(const LiveChannels& channels) {
  QStringList headers = fixed_headers;
  for (std::size_t c = 0; static_cast<int>(c) < channels.count; ++c) {
    headers << channels.names[c] + u' ';
  }
  if (headers == headers_) return;
  beginResetModel();
  headers_ = headers;
  endResetModel();
}

void LiveSheet::clear() {
  beginResetModel();
  rows_ = 0;
  endResetModel();
}

void LiveSheet::begin_push() {
  drops_ = buffer_.LiveCount() == LiveBuffer::capacity;
  if (drops_ && rows_ == LiveBuffer::capacity) {
    beginRemoveRows({}, 0, 0);
    --rows_;
    endRemoveRows();
  }
  beginInsertRows({}, rows_, rows_);
}

void LiveSheet::end_push() {
  ++rows_;
  endInsertRows();
  if (drops_) Q_EMIT dataChanged(index(0, number_column), index(rows_ - 1, number_column));
}

int LiveSheet::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int LiveSheet::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(headers_.size());
}

QString LiveSheet::text(int slot, int column) const {
  if (column == number_column) return QString::number(slot + 1);
  if (column == time_column) return buffer_.LiveTimes(slot);
  return general_number(buffer_.LiveValues(slot, column - first_free_column));
}

QVariant LiveSheet::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  if (role == Qt::DisplayRole) return text(slot_of(index.row()), index.column());
  if (role == Qt::TextAlignmentRole) return alignment(index.column(), true);
  return {};
}

QVariant LiveSheet::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::DisplayRole) return headers_.value(section);
  if (role == Qt::TextAlignmentRole) return alignment(section, true);
  return {};
}

void AlarmSheet::push(const AlarmList::Alarm& alarm) {
  const bool drops = alarms_.full();
  if (drops) {
    beginRemoveRows({}, 0, 0);
    alarms_.drop_oldest();
    endRemoveRows();
  }
  beginInsertRows({}, alarms_.count(), alarms_.count());
  alarms_.push(alarm);
  endInsertRows();
  if (drops) Q_EMIT dataChanged(index(0, number_column), index(rowCount() - 1, number_column));
}

int AlarmSheet::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : alarms_.count();
}

int AlarmSheet::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : 3;
}

QVariant AlarmSheet::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  if (role == Qt::TextAlignmentRole) return alignment(index.column(), index.column() == 0);
  if (role != Qt::DisplayRole) return {};
  if (index.column() == number_column) return QString::number(alarms_.number(index.row()));
  const AlarmList::Alarm& alarm = alarms_.at(index.row());
  return index.column() == time_column ? alarm.time : alarm.text;
}

QVariant AlarmSheet::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  const QStringList headers = fixed_headers + QStringList{QStringLiteral("Warn")};
  if (role == Qt::DisplayRole) return headers.value(section);
  if (role == Qt::TextAlignmentRole) return alignment(section, section == 0);
  return {};
}
