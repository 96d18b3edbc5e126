// Copying what a window shows to the clipboard.
#pragma once

#include <QList>

class QAbstractItemView;
class QWidget;

// The copy key puts the selected cells on the clipboard as tab-separated text. The context menu
// offers the same, and with the columns' headings above it.
void copy_selection_on_request(QAbstractItemView& view);

// Puts a picture of these widgets on the clipboard, those that are visible, as they stand in their
// common parent. There is at least one.
void copy_picture(const QList<QWidget*>& parts);
