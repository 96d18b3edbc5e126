// A sheet that grows at its end. While it is scrolled to its end, it follows the newest row.
// Scrolled anywhere else, it keeps the visible rows in place.
#pragma once

#include <QTableView>

class FollowingTable final : public QTableView {
  Q_OBJECT

 public:
  FollowingTable(QAbstractItemModel& model, QWidget* parent);

 protected:
  void rowsInserted(const QModelIndex& parent, int start, int end) override;
  void showEvent(QShowEvent* event) override;

 private:
  void build();
  void follow();

  bool follows_ = true;
};
