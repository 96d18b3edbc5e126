// Base of the windows that open inside the main window. A handler that waits for the recorder or
// shows a dialog lets other events run, and one of them can close the window. The window is then
// unloaded at once (off the screen and every list) but deleted only when no handler runs in it.
#pragma once

#include <QWidget>

class ChildWindow : public QWidget {
  Q_OBJECT

 public:
  explicit ChildWindow(QWidget* parent = nullptr) : QWidget(parent) {}

  // Every handler that waits or shows a dialog creates one at its top. After each wait the handler
  // checks unloaded(); if true, it returns without touching the window's state.
  class KeepAlive {
   public:
    explicit KeepAlive(ChildWindow& window) : window_(window) { ++window_.handlers_; }
    ~KeepAlive();
    KeepAlive(const KeepAlive&) = delete;
    KeepAlive& operator=(const KeepAlive&) = delete;
    bool unloaded() const { return window_.unloaded_; }

   private:
    ChildWindow& window_;
  };

  bool unloaded() const { return unloaded_; }
  // Removes the window from the screen and the program; deletes it when no handler runs in it.
  void unload();

 Q_SIGNALS:
  // The window is being unloaded, by its close box or by the program.
  void unloading();

 protected:
  // What the window does when it is unloaded, such as stopping its timer.
  virtual void Form_Unload() {}
  void closeEvent(QCloseEvent* event) override;

 private:
  int handlers_ = 0;
  bool unloaded_ = false;
};
