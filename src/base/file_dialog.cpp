#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMimeDatabase>
#include <QTreeView>

#include "base/dialogs.h"

namespace {

// "description|pattern|..." as the name filters of a QFileDialog. A description that equals its
// pattern is dropped.
QStringList name_filters(const QString& filter) {
  const QStringList parts = filter.split(u'|');
  QStringList result;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    result << (parts[i] == parts[i + 1] ? parts[i + 1]
                                        : QStringLiteral("%1 (%2)").arg(parts[i], parts[i + 1]));
  }
  return result;
}

// Tells a file's kind by its name alone. Qt's own provider reads the beginning of every file in the
// folder, which is slow on a network and can block on a device.
class KindByName final : public QFileIconProvider {
 public:
  QIcon icon(IconType type) const override { return QFileIconProvider::icon(type); }
  QIcon icon(const QFileInfo& info) const override {
    return info.isDir() ? QFileIconProvider::icon(Folder)
                        : QIcon::fromTheme(kind(info).iconName(), QFileIconProvider::icon(File));
  }
  QString type(const QFileInfo& info) const override { return kind(info).comment(); }

 private:
  static QMimeType kind(const QFileInfo& info) {
    const QMimeDatabase kinds;
    return info.isDir() ? kinds.mimeTypeForName(QStringLiteral("inode/directory"))
                        : kinds.mimeTypeForFile(info, QMimeDatabase::MatchExtension);
  }
};

// The chosen filter of the dialog, counted from 1.
int filter_number(const QFileDialog& dialog) {
  return static_cast<int>(dialog.nameFilters().indexOf(dialog.selectedNameFilter())) + 1;
}

// Chooses the filter of the typed extension, if there is one.
void choose_filter_by_name(QFileDialog& dialog, const QString& name) {
  const QString extension = QFileInfo(name).suffix();
  if (extension.isEmpty()) return;
  const QStringList filters = dialog.nameFilters();
  for (const QString& one : filters) {
    const bool same = one.compare(QStringLiteral("*.") + extension, Qt::CaseInsensitive) == 0;
    if (same && one != dialog.selectedNameFilter()) return dialog.selectNameFilter(one);
  }
}

// Says which file the command will use, unless it is the one named in the field: the command cuts a
// name at its first dot, gives it another extension, and replaces that file without a question.
QString used_name_note(const QFileDialog& dialog, const FileDialog& request, const QString& name) {
  if (name.isEmpty() || !request.used_name) return {};
  const QString chosen = QDir::cleanPath(dialog.directory().absoluteFilePath(name));
  if (QFileInfo(chosen).isDir()) return {};
  const QString used = request.used_name(chosen, filter_number(dialog));
  if (used == chosen) return {};
  const QFileInfo there(used);
  const bool same_folder = there.absolutePath() == QFileInfo(chosen).absolutePath();
  const QString shown = same_folder ? there.fileName() : QDir::toNativeSeparators(used);
  if (dialog.acceptMode() == QFileDialog::AcceptOpen) {
    return QStringLiteral("%1 will be read from %2").arg(name, shown);
  }
  return QStringLiteral("%1 will be written as %2%3")
      .arg(name, shown,
           there.exists() ? QStringLiteral(", in place of the file of that name") : QString());
}

// Gives sizes and dates the width that they need, and the rest to the names.
void lay_out(QFileDialog& dialog) {
  dialog.resize(760, 500);
  auto* list = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
  if (!list) return;
  list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
}

// Makes the typed name count. As the user types a path, the dialog selects its folders in the list,
// and would take one that stays selected. Queued, so that it runs after the dialog's own handler.
void let_typed_name_count(QFileDialog& dialog) {
  auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  auto* list = dialog.findChild<QListView*>(QStringLiteral("listView"));
  if (!name || !list) return;
  QObject::connect(name, &QLineEdit::textEdited, list, &QListView::clearSelection,
                   Qt::QueuedConnection);
}

// Adds a line below the dialog's fields that says which file will be used.
void show_used_name(QFileDialog& dialog, const FileDialog& request) {
  auto* grid = qobject_cast<QGridLayout*>(dialog.layout());
  auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  if (!grid || !name) return;
  auto* note = new QLabel(&dialog);
  note->setObjectName(QStringLiteral("used_name"));
  note->setTextFormat(Qt::PlainText);
  note->setWordWrap(true);
  note->setMinimumHeight(note->fontMetrics().height());
  grid->addWidget(note, grid->rowCount(), 0, 1, grid->columnCount());
  const auto tell = [&dialog, &request, name, note] {
    note->setText(used_name_note(dialog, request, name->text()));
    name->setAccessibleDescription(note->text());
  };
  QObject::connect(name, &QLineEdit::textChanged, note, tell);
  QObject::connect(&dialog, &QFileDialog::filterSelected, note, tell);
  QObject::connect(&dialog, &QFileDialog::directoryEntered, note, tell);
  QObject::connect(name, &QLineEdit::textEdited, note, [&dialog, tell](const QString& text) {
    choose_filter_by_name(dialog, text);
    tell();
  });
}

}  // namespace

void WindowFileDialog::show(Purpose purpose) {
  KindByName kinds;
  // The dialog would take a remembered folder that no longer exists for a file name.
  QFileDialog dialog(parent_, title, QFileInfo(folder_).isDir() ? folder_ : QString());
  dialog.setAcceptMode(purpose == Purpose::open ? QFileDialog::AcceptOpen
                                                : QFileDialog::AcceptSave);
  // The command itself deals with missing and existing files. Not all of the desktops' own dialogs
  // leave that to it.
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setOption(QFileDialog::DontConfirmOverwrite);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  const QStringList filters = name_filters(filter);
  dialog.setNameFilters(filters);
  dialog.selectNameFilter(filters.value(filter_index - 1));
  if (!file_name.isEmpty()) dialog.selectFile(file_name);
  dialog.setIconProvider(&kinds);
  lay_out(dialog);
  show_used_name(dialog, *this);
  let_typed_name_count(dialog);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return;
  // Removes "." and "..", whose dots would count when the name is cut at its first dot.
  file_name = QDir::cleanPath(dialog.selectedFiles().constFirst());
  filter_index = filter_number(dialog);
  folder_ = QFileInfo(file_name).absolutePath();
}
