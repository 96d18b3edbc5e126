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
  // Set to empty before showing; afterwards the chosen name as it was typed (made absolute), or
  // still empty when the user cancelled. No suffix is added, nothing is asked, and the name of a
  // file that does not exist comes through.
  QString file_name;
  // The chosen filter, counted from 1.
  int filter_index = 1;
  // The name of the file that the command uses when `file_name` and `filter_index` are chosen. The
  // dialog shows it where it differs from what stands in the name's field.
  std::function<QString(const QString& file_name, int filter_index)> used_name;

  enum class Purpose { open, save };
  // Shows the dialog; the purpose only names its accept button.
  virtual void show(Purpose purpose) = 0;
};
