#include "views/sheet_model.h"

#include <set>

#include "app/recording.h"
#include "base/numbers.h"

namespace {

constexpr int number_column = 0;
constexpr int time_column = 1;
constexpr int first_value_column = 2;

}  // namespace

SheetModel::SheetModel(const Recording& recording, QObject* parent)
    : QAbstractTableModel(parent),
      recording_(recording),
      samples_(recording.clamped_sample_count()),
      channels_(recording.clamped_channel_count()) {}

int SheetModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : samples_;
}

int SheetModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : first_value_column + channels_;
}

QVariant SheetModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (role == Qt::DisplayRole) return cell(index.row(), index.column());
  if (role == Qt::TextAlignmentRole) {
    const Qt::Alignment side = index.column() == time_column ? Qt::AlignHCenter : Qt::AlignRight;
    return QVariant::fromValue(side | Qt::AlignVCenter);
  }
  return {};
}

QString SheetModel::cell(int row, int column) const {
  if (column == number_column) return QString::number(row + 1);
  if (column == time_column) return recording_.SampleTimes(row);
  return fixed2(recording_.SampleValues(row, column - first_value_column));
}

QVariant SheetModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  if (section == number_column) return QStringLiteral("Number");
  if (section == time_column) return QStringLiteral("Time");
  return recording_.channel(static_cast<std::size_t>(section - first_value_column)).heading();
}

QString selection_text(const QItemSelection& selection, Headings headings) {
  std::set<int> rows;
  std::set<int> columns;
  const QAbstractItemModel* model = nullptr;
  for (const QItemSelectionRange& range : selection) {
    model = range.model();
    for (int row = range.top(); row <= range.bottom(); ++row) rows.insert(rows.end(), row);
    for (int column = range.left(); column <= range.right(); ++column) columns.insert(column);
  }
  if (!model) return {};
  const auto heading = [model](int column) {
    return model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
  };
  std::erase_if(columns, [&](int column) { return heading(column).isEmpty(); });
  QString text;
  const auto add_line = [&](const auto& cell) {
    QString separator;
    for (const int column : columns) {
      text += separator + cell(column);
      separator = QStringLiteral("\t");
    }
    text += u'\n';
  };
  if (headings == Headings::first) add_line(heading);
  for (const int row : rows) {
    add_line([&](int column) {
      const QModelIndex index = model->index(row, column);
      return selection.contains(index) ? index.data(Qt::DisplayRole).toString() : QString();
    });
  }
  text.chop(1);
  return text;
}
