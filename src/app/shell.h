// What the windows and command handlers need of the main window. They know this class and never
// the main window itself; the child windows find each other through it.
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

  // Status bar panel 1 (data file), 2 (link state) or 3 (clock).
  virtual void set_panel(int panel, const QString& text) = 0;
  // Progress bar, 0..100, and the percentage text beside it.
  virtual void set_progress(int value, const QString& text) = 0;
  // Says in a tool tip of the status bar what the program waits for; empty for nothing. Gives what
  // it said before.
  virtual QString tell_wait(const QString& what) = 0;

  // The commands that act on a Recording: save, outputs, printview, printdata, limit,
  // setdisplaytime, history, and toolbar buttons 3, 4, 5 and 12. The toolbar's save button stays
  // enabled, on purpose.
  virtual void enable_data_commands(bool enabled) = 0;
  // The file that holds the Recording as it is now, for the user to see; empty for none.
  // enable_data_commands() empties it: the Recording that comes or goes with it is in no file yet.
  virtual void set_recording_file(const QString& path) = 0;
  // realtime, record, unlink, read and their toolbar buttons on, link off; or the reverse.
  virtual void set_linked_commands(bool linked) = 0;

  // The Real-time Data window. realtime() loads it (which reads the recorder) without showing it
  // if it is not loaded; it can be gone again after any wait. Null while a load is under way:
  // what the window shows is then not yet the recorder's.
  virtual frmrealtime* loaded_realtime() = 0;
  virtual frmrealtime* realtime() = 0;
  // The window while its load is under way, else null: for what it is to do when it is loaded.
  virtual frmrealtime* loading_realtime() = 0;
  virtual void show_realtime() = 0;
  virtual void unload_realtime() = 0;

  // The Historical Data window.
  virtual frmdisplay* loaded_display() = 0;
  virtual void show_display() = 0;
  virtual void unload_display() = 0;

  // True once the main window is being unloaded: a handler that comes back from a wait must leave.
  virtual bool shutting_down() const = 0;
};
