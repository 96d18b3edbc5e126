// The one common file dialog of the main window, used by open, save and export.
#pragma once

#include <QString>

#include <functional>

class FileDialog {
 public:
  FileDialog() = default;
  FileDialog(const FileDialog&) = delete;
  FileDialog& operator=(const FileDialog&) = delete;
  virtual ~FileDialog() = default;

  // Pairs "description|pattern" joined by "|", such as "*.txt|*.txt|*.doc|*.doc".
  QString filter;
  QString title;
  // The caller clears it before show(). Afterwards it is the chosen name as typed (made absolute),
  // or still empty if the user cancelled. The dialog adds no extension, asks nothing, and accepts
  // the name of a file that does not exist.
  QString file_name;
  // The chosen filter, counted from 1.
  int filter_index = 1;
  // The name of the file that the command uses when `file_name` and `filter_index` are chosen. The
  // dialog shows it if it differs from the name in the field.
  std::function<QString(const QString& file_name, int filter_index)> used_name;

  enum class Purpose { open, save };
  // Shows the dialog. The purpose only sets its wording, such as that of the accept button.
  virtual void show(Purpose purpose) = 0;
};
