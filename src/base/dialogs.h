// The real message box and file dialog.
#pragma once

#include <QPointer>
#include <QWidget>

#include "base/file_dialog.h"
#include "base/message_box.h"

class WindowMessageBox final : public MessageBox {
 public:
  // A box is modal to the open dialog if there is one, else to this window.
  void set_parent(QWidget* parent) { parent_ = parent; }
  void show(const QString& text, const QString& caption) override;
  bool ask(const QString& text, const QString& caption) override;

 private:
  QPointer<QWidget> parent_;
};

class WindowFileDialog final : public FileDialog {
 public:
  void set_parent(QWidget* parent) { parent_ = parent; }
  void show(Purpose purpose) override;

 private:
  QPointer<QWidget> parent_;
  QString folder_;
};
