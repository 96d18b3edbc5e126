#include "data/file_names.h"

#include <QFileInfo>

#include "app/shell.h"
#include "base/file_dialog.h"
#include "base/message_box.h"

namespace {

QString choose(Shell& shell, const QString& filter, const QString& title,
               FileDialog::Purpose purpose) {
  FileDialog& dialog = shell.CommonDialog1();
  dialog.filter = filter;
  dialog.title = title;
  dialog.file_name.clear();
  dialog.used_name = [filter](const QString& name, int index) {
    const QString pattern = filter.split(u'|').value(2 * index - 1);
    return with_extension(name, pattern.mid(1));
  };
  dialog.show(purpose);
  return shell.shutting_down() ? QString() : dialog.file_name;
}

}  // namespace

bool file_exists(const QString& name) {
  const QFileInfo info(name);
  return info.exists() && !info.isDir();
}

QString with_extension(const QString& chosen, const QString& extension) {
  const qsizetype dot = chosen.indexOf(u'.');
  return (dot < 0 ? chosen : chosen.left(dot)) + extension;
}

QString choose_file_to_open(Shell& shell, const QString& filter, const QString& title) {
  return choose(shell, filter, title, FileDialog::Purpose::open);
}

QString choose_file_to_save(Shell& shell, const QString& filter, const QString& title) {
  for (;;) {
    QString name = choose(shell, filter, title, FileDialog::Purpose::save);
    if (name.isEmpty() || !file_exists(name) ||
        shell.messages().ask(QStringLiteral("File Exists ，Overwrite?"))) {
      return name;
    }
  }
}
