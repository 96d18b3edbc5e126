// The main window: menus, toolbar, status bar, clock, and the child windows inside it. Its
// handlers only dispatch; the code of a command is in the folder that it belongs to.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMap>
#include <QMdiArea>
#include <QPointer>
#include <QProgressBar>
#include <QTimer>
#include <QToolBar>

#include <array>

#include "app/shell.h"
#include "device/recorder_link.h"

class Automation;
class ChildWindow;

// The interfaces to the outside world that the main window uses. All must outlive the window.
struct OutsideWorld {
  Clock& clock;
  SerialPort& port;
  MessageBox& messages;
  FileDialog& files;
  Printer& printer;
  Automation& office;
};

class frmmdi final : public QMainWindow, public Shell {
  Q_OBJECT

 public:
  explicit frmmdi(const OutsideWorld& world);

  Clock& clock() override { return world_.clock; }
  SerialPort& MSComm1() override { return world_.port; }
  MessageBox& messages() override { return world_.messages; }
  FileDialog& CommonDialog1() override { return world_.files; }
  Printer& printer() override { return world_.printer; }
  QWidget* window() override { return this; }

  void set_panel(int panel, const QString& text) override;
  void set_progress(int value, const QString& text) override;
  QString tell_wait(const QString& what) override;
  void enable_data_commands(bool enabled) override;
  void set_recording_file(const QString& path) override;
  void set_linked_commands(bool linked) override;

  frmrealtime* loaded_realtime() override;
  frmrealtime* realtime() override;
  frmrealtime* loading_realtime() override;
  void show_realtime() override;
  void unload_realtime() override;
  frmdisplay* loaded_display() override;
  void show_display() override;
  void unload_display() override;
  bool shutting_down() const override { return shutting_down_; }

  // A menu entry by its name ("open", "printview"); null for an unknown one.
  QAction* menu_entry(const QString& name) const { return entries_.value(name); }
  // A toolbar button by its index, counted from 1 and including separators; null outside.
  QAction* toolbar_button(int index) const { return Tool1->actions().value(index - 1); }

  QTimer* Timer1;
  QToolBar* Tool1;
  QLineEdit* Text1;
  QProgressBar* PrgB1;
  std::array<QLabel*, 3> Sts1{};

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  struct MenuEntry;
  void build();
  void build_menus();
  QAction* add_entry(QMenu& menu, const MenuEntry& entry);
  void build_toolbar();
  void build_status_bar();
  void build_area();
  void build_shortcuts();
  // Shows the hint in the middle of the window while no child window covers it, else hides it.
  void show_hint();
  void set_icons();
  void colour_hint();
  void MDIForm_Load();
  void MDIForm_Unload();
  void Timer1_Timer();
  void Tool1_ButtonClick(const QString& key);
  void realtime_Click();
  void history_Click();
  void Quit_Click();
  // Shows the child window in its frame inside the main window, maximised and in front.
  void show_child(ChildWindow& child);
  void show_file_of(ChildWindow& display);
  // Removes the frame around an unloaded window.
  void release_child(ChildWindow& child);

  void enable_recorder_command(const QString& name, int button, bool enabled);
  void show_recorder_commands();

  OutsideWorld world_;
  RecorderLink recorder_;
  bool linked_ = false;
  QMdiArea* area_;
  QLabel* hint_;
  QMap<QString, QAction*> entries_;
  QPointer<ChildWindow> realtime_;
  QPointer<ChildWindow> display_;
  bool realtime_loading_ = false;
  bool shutting_down_ = false;
};
