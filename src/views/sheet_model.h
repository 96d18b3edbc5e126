// The Recording as a sheet: a row a sample with its number, time and values. Texts are made when
// they are asked for, so a full Recording costs nothing until it is looked at.
#pragma once

#include <QAbstractTableModel>
#include <QItemSelection>

class Recording;

class SheetModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  // The Recording outlives the model, and its size is the one of this moment.
  explicit SheetModel(const Recording& recording, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  QString cell(int row, int column) const;

  const Recording& recording_;
  int samples_;
  int channels_;
};

enum class Headings { left_out, first };

// The selected cells as text: tabs between columns, a line a row, the headings in the first one
// where they are wanted. Cells of a selected row and column that are not selected themselves stay
// empty; columns without a heading are left out.
QString selection_text(const QItemSelection& selection, Headings headings);
