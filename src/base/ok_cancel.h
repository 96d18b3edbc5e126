// The row of buttons at the end of a dialog.
#pragma once

#include <QDialog>
#include <QHBoxLayout>

class QPushButton;

struct OkCancel {
  QPushButton* ok;  // the default button; the dialog connects it
  QPushButton* cancel;
  QHBoxLayout* row;
};

// Makes both buttons, with these object names, at the right end of a row. "Cancel" rejects the
// dialog. Alt+O and Alt+C press them.
OkCancel make_ok_cancel(QDialog& dialog, const char* ok_name = "Command1",
                        const char* cancel_name = "Command2");
