#include <QApplication>
#include <QGridLayout>
#include <QMessageBox>
#include <QStyle>

#include "base/dialogs.h"

namespace {

// Makes the box wide enough for its caption and the icon and buttons of a title bar.
void make_room_for_caption(QMessageBox& box) {
  auto* grid = qobject_cast<QGridLayout*>(box.layout());
  if (!grid) return;
  const QFontMetrics caption(QApplication::font("QMdiSubWindowTitleBar"));
  const int beside = 5 * box.style()->pixelMetric(QStyle::PM_TitleBarHeight);
  const int width = caption.horizontalAdvance(box.windowTitle()) + beside;
  grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

// Texts can contain what a recorder or a file supplied, so they are never read as markup.
QMessageBox::StandardButton run(QWidget* parent, const QString& text, const QString& caption,
                                QMessageBox::StandardButtons buttons) {
  QWidget* active = QApplication::activeModalWidget();
  QMessageBox box(QMessageBox::NoIcon, caption, text, buttons, active ? active : parent);
  box.setTextFormat(Qt::PlainText);
  // Enter must not overwrite or erase anything.
  if (buttons.testFlag(QMessageBox::No)) box.setDefaultButton(QMessageBox::No);
  make_room_for_caption(box);
  box.exec();
  return box.standardButton(box.clickedButton());
}

}  // namespace

void WindowMessageBox::show(const QString& text, const QString& caption) {
  run(parent_, text, caption, QMessageBox::Ok);
}

bool WindowMessageBox::ask(const QString& text, const QString& caption) {
  return run(parent_, text, caption, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}
