#include "data/data_commands.h"

#include <QString>

#include "app/shell.h"
#include "app/user.h"
#include "base/errors.h"
#include "base/message_box.h"
#include "data/data_file.h"
#include "data/file_handle.h"
#include "data/file_names.h"

namespace {

const QString filter = QStringLiteral("*.qlx|*.qlx");
const QString extension = QStringLiteral(".qlx");

void open_recording(Shell& shell, const QString& path) {
  shell.set_panel(1, QStringLiteral("Open File"));
  file_handle_1().open_for_reading(path);
  read_recording(file_handle_1(), User::recording);
  file_handle_1().close();
  User::recording.ViewCount = User::recording.SampleCount;
  shell.unload_display();
  shell.show_display();
  shell.enable_data_commands(true);
  shell.set_recording_file(path);
  shell.set_panel(1, {});
}

void open_if_there(Shell& shell, const QString& name, const QString& path) {
  if (!file_exists(name)) return shell.messages().show(QStringLiteral("File Lose"));
  open_recording(shell, path);
}

void open_data_file(Shell& shell) {
  const QString name = choose_file_to_open(shell, filter, QStringLiteral("Open File"));
  if (name.isEmpty()) return;
  open_if_there(shell, name, with_extension(name, extension));
}

void save_data_file(Shell& shell) {
  const QString name = choose_file_to_save(shell, filter, QStringLiteral("Save File"));
  if (name.isEmpty()) return;
  shell.set_panel(1, QStringLiteral("Save File"));
  const QString path = with_extension(name, extension);
  file_handle_1().open_for_writing(path);
  write_recording(User::recording, file_handle_1());
  file_handle_1().close();
  if (User::recording.SampleCount != 0) shell.set_recording_file(path);
  shell.set_panel(1, {});
}

// Leaves file handle 1 open and keeps the fields read so far, on purpose.
void tell_read_error(Shell& shell) {
  shell.unload_display();
  shell.enable_data_commands(false);
  shell.set_panel(1, {});
  shell.messages().show(QStringLiteral("File Read Error"));
}

void tell_save_error(Shell& shell) {
  shell.messages().show(QStringLiteral("Save File Error"));
}

}  // namespace

void OpenDataFile(Shell& shell) {
  or_error_path([&] { open_data_file(shell); }, [&] { tell_read_error(shell); });
}

void OpenDroppedFile(Shell& shell, const QString& path) {
  or_error_path([&] { open_if_there(shell, path, path); }, [&] { tell_read_error(shell); });
}

void SaveDataFile(Shell& shell) {
  or_error_path([&] { save_data_file(shell); }, [&] { tell_save_error(shell); });
}

void CloseDataFile(Shell& shell) {
  shell.unload_display();
  User::recording.SampleCount = 0;
  shell.enable_data_commands(false);
  shell.set_panel(1, {});
}
