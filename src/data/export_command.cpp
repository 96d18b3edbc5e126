#include "data/export_command.h"

#include <QDir>
#include <QScopedValueRollback>
#include <QString>

#include <memory>

#include "app/shell.h"
#include "app/user.h"
#include "base/errors.h"
#include "base/file_dialog.h"
#include "data/export_document.h"
#include "data/export_text.h"
#include "data/export_workbook.h"
#include "data/export_worker.h"
#include "data/file_handle.h"
#include "data/file_names.h"

namespace {

enum Form { text_form = 1, document_form = 2, workbook_form = 3 };

bool exporting = false;

void export_as_text(Shell& shell, const QString& name) {
  shell.set_panel(1, QStringLiteral("Save As .TXT"));
  FileHandle& file = file_handle_2();
  file.open_for_writing(with_extension(name, QStringLiteral(".txt")));
  try {
    write_text_export(User::recording, file);
  } catch (const RunTimeError&) {
    // The next export shall find the handle free.
    skip_on_error([&] { file.close(); });
    throw;
  }
  file.close();
  shell.set_panel(1, {});
}

// Other commands can change the Recording while the office program works, so it gets a copy.
template <class Export>
void export_beside_the_windows(Shell& shell, Automation& office, const QString& path,
                               Export export_recording) {
  const auto recording = std::make_shared<const Recording>(User::recording);
  const auto work = [&office, path, export_recording, recording](ExportProgress& progress) {
    export_recording(office, *recording, QDir::toNativeSeparators(path), progress);
  };
  if (!run_beside_the_windows(shell, work) || shell.shutting_down()) return;
  shell.set_progress(0, {});
  shell.set_panel(1, {});
}

void export_recording(Shell& shell, Automation& office) {
  const QString name = choose_file_to_save(
      shell, QStringLiteral("*.txt|*.txt|*.doc|*.doc|*.xls|*.xls"), QStringLiteral("Save As..."));
  if (name.isEmpty()) return;
  switch (shell.CommonDialog1().filter_index) {
    case text_form:
      export_as_text(shell, name);
      break;
    case document_form:
      shell.set_panel(1, QStringLiteral("Save As .Word"));
      export_beside_the_windows(shell, office, with_extension(name, QStringLiteral(".doc")),
                                export_document);
      break;
    case workbook_form:
      shell.set_panel(1, QStringLiteral("Save As .EXCEL"));
      export_beside_the_windows(shell, office, with_extension(name, QStringLiteral(".xls")),
                                export_workbook);
      break;
    default:
      break;
  }
}

}  // namespace

void ExportRecording(Shell& shell, Automation& office) {
  if (exporting) return;
  const QScopedValueRollback running(exporting, true);
  stop_at_first_failure([&] { export_recording(shell, office); });
}
