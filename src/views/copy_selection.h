// Copying from a list or a sheet.
#pragma once

class QAbstractItemView;

// The copy key puts the selected cells on the clipboard as tab-separated text.
void copy_selection_on_request(QAbstractItemView& view);
