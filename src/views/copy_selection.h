// Copies what a window shows to the clipboard.
#pragma once

#include <QList>

class QAbstractItemView;
class QWidget;

// Makes the copy key put the selected cells on the clipboard as tab-separated text. The context
// menu offers the same, and also with the column headings.
void copy_selection_on_request(QAbstractItemView& view);

// Puts a picture of those of these widgets that are visible on the clipboard, arranged as in their
// common parent. `parts` is not empty.
void copy_picture(const QList<QWidget*>& parts);
