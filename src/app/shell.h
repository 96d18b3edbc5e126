// What the windows and command handlers need from the main window. They use this class, never the
// main window itself; the child windows find each other through it.
#pragma once

#include <QString>

class Clock;
class FileDialog;
class MessageBox;
class Printer;
class QWidget;
class SerialPort;
class frmdisplay;
class frmrealtime;

class Shell {
 public:
  Shell() = default;
  Shell(const Shell&) = delete;
  Shell& operator=(const Shell&) = delete;
  virtual ~Shell() = default;

  // The outside world.
  virtual Clock& clock() = 0;
  virtual SerialPort& MSComm1() = 0;
  virtual MessageBox& messages() = 0;
  virtual FileDialog& CommonDialog1() = 0;
  virtual Printer& printer() = 0;
  // The parent for modal dialogs.
  virtual QWidget* window() = 0;

  // Sets the text of status bar panel 1 (data file), 2 (link state) or 3 (clock).
  virtual void set_panel(int panel, const QString& text) = 0;
  // Sets the progress bar, 0..100, and the percentage text beside it.
  virtual void set_progress(int value, const QString& text) = 0;
  // Shows in the status bar's tool tip what the program is waiting for; empty for nothing. Returns
  // the text shown before.
  virtual QString tell_wait(const QString& what) = 0;

  // Enables or disables the commands that act on a Recording: save, outputs, printview, printdata,
  // limit, setdisplaytime, history, and toolbar buttons 3, 4, 5 and 12. The toolbar's save button
  // stays enabled, on purpose.
  virtual void enable_data_commands(bool enabled) = 0;
  // Shows the user the path of the file that holds the present Recording; empty for none.
  // enable_data_commands() clears it, because a new Recording is in no file yet.
  virtual void set_recording_file(const QString& path) = 0;
  // Enables realtime, record, unlink, read and their buttons, and disables link; or the reverse.
  virtual void set_linked_commands(bool linked) = 0;

  // The Real-time Data window. realtime() first loads it, without showing it, if it is not loaded;
  // loading reads the recorder. Any wait can unload it. Both return null while a load is under way,
  // because the window does not show the recorder's data yet.
  virtual frmrealtime* loaded_realtime() = 0;
  virtual frmrealtime* realtime() = 0;
  // The window while its load is under way, else null: for settings that apply once it is loaded.
  virtual frmrealtime* loading_realtime() = 0;
  virtual void show_realtime() = 0;
  virtual void unload_realtime() = 0;

  // The Historical Data window.
  virtual frmdisplay* loaded_display() = 0;
  virtual void show_display() = 0;
  virtual void unload_display() = 0;

  // Whether the main window is being unloaded. A handler checks it after every wait and returns.
  virtual bool shutting_down() const = 0;
};
