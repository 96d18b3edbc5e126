#include "monitor/following_table.h"

#include <QHeaderView>
#include <QScrollBar>

FollowingTable::FollowingTable(QAbstractItemModel& model, QWidget* parent) : QTableView(parent) {
  build();
  setModel(&model);
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int value) {
    if (isVisible()) follows_ = value == verticalScrollBar()->maximum();
  });
  connect(&model, &QAbstractItemModel::rowsRemoved, this,
          [this](const QModelIndex&, int first, int last) {
            if (follows_ || first > 0) return;
            QScrollBar* bar = verticalScrollBar();
            bar->setValue(bar->value() - (last - first + 1));
          });
}

// Gives all rows one fixed height, so that the view measures none, however many there are.
void FollowingTable::build() {
  setEditTriggers(NoEditTriggers);
  setSelectionBehavior(SelectRows);
  setVerticalScrollMode(ScrollPerItem);
  setAlternatingRowColors(true);
  setWordWrap(false);
  setTabKeyNavigation(false);
  setCornerButtonEnabled(false);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
  horizontalHeader()->setHighlightSections(false);
}

void FollowingTable::rowsInserted(const QModelIndex& parent, int start, int end) {
  QTableView::rowsInserted(parent, start, end);
  follow();
}

void FollowingTable::showEvent(QShowEvent* event) {
  QTableView::showEvent(event);
  follow();
}

void FollowingTable::follow() {
  if (follows_ && isVisible()) scrollToBottom();
}
