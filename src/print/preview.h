// The base of both previews: a modal window with the page and a row of buttons below it.
#pragma once

#include <QDialog>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QVBoxLayout>

#include "print/page_area.h"
#include "print/printer.h"

class QPushButton;
class Shell;

class Preview : public QDialog {
  Q_OBJECT

 public:
  PageArea* area;
  QPushButton* cmdPrint;
  QPushButton* Command2;

 protected:
  explicit Preview(Shell& shell);

  // Adds a button at the right end of the row; `key` is its shortcut.
  QPushButton* add_button(const QString& name, const QString& caption,
                          const QKeySequence& key = {});
  // Adds Print and Quit, the last two buttons of every preview.
  void add_print_and_quit();
  void add_above_buttons(QWidget* widget);
  QHBoxLayout* row() const { return row_; }

  // The printer's paper in twips, in its orientation: A4, unless other paper was chosen under
  // Printer Set. Portrait A4 without a printer.
  QSizeF paper() const;
  Shell& shell() const { return shell_; }

  virtual void Form_Activate() = 0;
  virtual void print() = 0;
  virtual void draw_page(QPainter& painter, QSizeF size) const = 0;

  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Shell& shell_;
  QVBoxLayout* all_;
  QHBoxLayout* row_;
};
