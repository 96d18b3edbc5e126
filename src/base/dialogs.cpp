#include "base/dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QTreeView>

namespace {

// Texts can carry what a recorder or a file supplied, so they are never read as markup.
QMessageBox::StandardButton run(QWidget* parent, const QString& text, const QString& caption,
                                QMessageBox::StandardButtons buttons) {
  QWidget* active = QApplication::activeModalWidget();
  QMessageBox box(QMessageBox::NoIcon, caption, text, buttons, active ? active : parent);
  box.setTextFormat(Qt::PlainText);
  box.exec();
  return box.standardButton(box.clickedButton());
}

// "description|pattern|..." as the name filters of a QFileDialog; the description of a pair is
// dropped where it says no more than the pattern.
QStringList name_filters(const QString& filter) {
  const QStringList parts = filter.split(u'|');
  QStringList result;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    result << (parts[i] == parts[i + 1] ? parts[i + 1]
                                        : QStringLiteral("%1 (%2)").arg(parts[i], parts[i + 1]));
  }
  return result;
}

}  // namespace

void WindowMessageBox::show(const QString& text, const QString& caption) {
  run(parent_, text, caption, QMessageBox::Ok);
}

bool WindowMessageBox::ask(const QString& text, const QString& caption) {
  return run(parent_, text, caption, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

namespace {

// Room for whole sizes and dates, and what is left for the names.
void lay_out(QFileDialog& dialog) {
  dialog.resize(760, 480);
  auto* list = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
  if (!list) return;
  list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
}

// What is typed counts. Folders on the way of a typed path get marked in the list, and one that
// stays marked would be taken in its place. Done after the dialog's own work on the text.
void let_typed_name_count(QFileDialog& dialog) {
  auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  auto* list = dialog.findChild<QListView*>(QStringLiteral("listView"));
  if (!name || !list) return;
  QObject::connect(name, &QLineEdit::textEdited, list, &QListView::clearSelection,
                   Qt::QueuedConnection);
}

}  // namespace

void WindowFileDialog::show(Purpose purpose) {
  // A remembered folder that is gone would be taken for the name of a file.
  QFileDialog dialog(parent_, title, QFileInfo(folder_).isDir() ? folder_ : QString());
  dialog.setAcceptMode(purpose == Purpose::open ? QFileDialog::AcceptOpen
                                                : QFileDialog::AcceptSave);
  // A missing file and an existing one are the command's business, not the dialog's. The desktops'
  // own dialogs do not all leave them to it.
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setOption(QFileDialog::DontConfirmOverwrite);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  const QStringList filters = name_filters(filter);
  dialog.setNameFilters(filters);
  dialog.selectNameFilter(filters.value(filter_index - 1));
  if (!file_name.isEmpty()) dialog.selectFile(file_name);
  lay_out(dialog);
  let_typed_name_count(dialog);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return;
  // Without "." and ".." on the way, whose dots would count when the name is cut at its first one.
  file_name = QDir::cleanPath(dialog.selectedFiles().constFirst());
  filter_index = static_cast<int>(filters.indexOf(dialog.selectedNameFilter())) + 1;
  folder_ = QFileInfo(file_name).absolutePath();
}
