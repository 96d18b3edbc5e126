// The Recording as a sheet: one row per sample with its number, time and values. A text is made
// only when a view asks for it, so a full Recording costs nothing until it is seen.
#pragma once

#include <QAbstractTableModel>
#include <QItemSelection>

class Recording;

class SheetModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  // The Recording must outlive the model, which keeps the size that it has now.
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

// The selected cells as text: one line per row, tabs between columns, the headings in the first
// line if wanted. Cells that are not selected, but whose row and column are, stay empty; columns
// without a heading are left out.
QString selection_text(const QItemSelection& selection, Headings headings);
