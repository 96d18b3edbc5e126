#include "data/export_command.h"

#include <QDir>
#include <QScopeGuard>
#include <QString>

#include <deque>
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

struct OfficeExport {
  Form form;
  QString path;
  // A copy: other commands can change the Recording while the office program works.
  std::shared_ptr<const Recording> recording;
};

const QString text_panel = QStringLiteral("Save As .TXT");

// Whether the last text export failed. An office export that ends later must not hide that.
bool text_failed = false;

// The office export in progress, which stays in front until it ends, then those that wait.
std::deque<OfficeExport> office_exports;

// The text of panel 1 for the office export in progress; empty when there is none.
QString office_panel() {
  if (office_exports.empty()) return {};
  return office_exports.front().form == document_form ? QStringLiteral("Save As .Word")
                                                      : QStringLiteral("Save As .EXCEL");
}

void export_as_text(Shell& shell, const QString& name) {
  text_failed = true;
  shell.set_panel(1, text_panel);
  FileHandle& file = file_handle_2();
  file.open_for_writing(with_extension(name, QStringLiteral(".txt")));
  // Frees the handle for the next export.
  auto close = qScopeGuard([&] { skip_on_error([&] { file.close(); }); });
  write_text_export(User::recording, file);
  close.dismiss();
  file.close();
  text_failed = false;
  shell.set_panel(1, office_panel());
}

bool run(Shell& shell, Automation& office, const OfficeExport& one) {
  const auto work = [&office, one](ExportProgress& progress) {
    const auto write = one.form == document_form ? export_document : export_workbook;
    write(office, *one.recording, QDir::toNativeSeparators(one.path), progress);
  };
  shell.set_panel(1, office_panel());
  return run_beside_the_windows(shell, office, work);
}

// Runs office exports one at a time: a call during an export only adds its own to the queue.
void export_by_office(Shell& shell, Automation& office, Form form, const QString& path) {
  office_exports.push_back({form, path, std::make_shared<const Recording>(User::recording)});
  if (office_exports.size() > 1) return;
  text_failed = false;
  while (!office_exports.empty()) {
    const bool exported = run(shell, office, office_exports.front());
    office_exports.pop_front();
    if (shell.shutting_down()) {
      office_exports.clear();
    } else if (exported) {
      shell.set_progress(0, {});
      shell.set_panel(1, text_failed ? text_panel : QString());
    }
  }
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
      export_by_office(shell, office, document_form, with_extension(name, QStringLiteral(".doc")));
      break;
    case workbook_form:
      export_by_office(shell, office, workbook_form, with_extension(name, QStringLiteral(".xls")));
      break;
    default:
      break;
  }
}

}  // namespace

void ExportRecording(Shell& shell, Automation& office) {
  stop_at_first_failure([&] { export_recording(shell, office); });
}
