// The live sheet and the alarm sheet as table models, which make texts only for visible rows.
#pragma once

#include <QAbstractTableModel>
#include <QStringList>

#include "monitor/alarms.h"
#include "monitor/live_buffer.h"
#include "monitor/live_channels.h"

// Columns "Number", "Time" and one for each channel. Shows the readings added since the sheet was
// last cleared, as far as the buffer still holds them, oldest first. A reading's number is its slot
// counted from 1, so in a full buffer it decreases with every new reading.
class LiveSheet final : public QAbstractTableModel {
  Q_OBJECT

 public:
  // The buffer must outlive the sheet.
  explicit LiveSheet(const LiveBuffer& buffer, QObject* parent = nullptr);

  void set_channels(const LiveChannels& channels);
  // Removes all rows; the header stays.
  void clear();
  // To be called just before and just after a reading is pushed into the buffer.
  void begin_push();
  void end_push();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation,
                      int role = Qt::DisplayRole) const override;

 private:
  int slot_of(int row) const { return buffer_.LiveCount() - rows_ + row; }
  QString text(int slot, int column) const;

  const LiveBuffer& buffer_;
  QStringList headers_;
  int rows_ = 0;
  bool drops_ = false;  // the reading being pushed drops the buffer's oldest one
};

// Columns "Number", "Time", "Warn".
class AlarmSheet final : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  void push(const AlarmList::Alarm& alarm);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation,
                      int role = Qt::DisplayRole) const override;

 private:
  AlarmList alarms_;
};
