// The live sheet and the alarm sheet as tables of texts made only for the rows that are seen.
#pragma once

#include <QAbstractTableModel>
#include <QStringList>

#include "monitor/alarms.h"
#include "monitor/live_buffer.h"
#include "monitor/live_channels.h"

// Columns "Number", "Time" and one a channel. Shows the newest readings of the buffer, oldest
// first: all since the sheet was cleared that the buffer still holds. A reading's number is its
// slot's, counted from 1, so the numbers of a full buffer move on with the readings.
class LiveSheet final : public QAbstractTableModel {
  Q_OBJECT

 public:
  // The buffer outlives the sheet.
  explicit LiveSheet(const LiveBuffer& buffer, QObject* parent = nullptr);

  void set_channels(const LiveChannels& channels);
  // Leaves the header alone and no row.
  void clear();
  // The buffer is about to get a reading; it has got it.
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
  bool drops_ = false;  // the reading to come drops the buffer's oldest one
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
