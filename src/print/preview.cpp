#include "print/preview.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>

#include <algorithm>
#include <cmath>

#include "app/shell.h"
#include "base/mnemonics.h"
#include "print/page.h"

namespace {

bool scrolls(const QKeyEvent& key) {
  switch (key.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
      return true;
    default:
      return false;
  }
}

}  // namespace

Preview::Preview(Shell& shell) : QDialog(shell.window()), shell_(shell) {
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  area = new PageArea([this](QPainter& painter, QSizeF size) { draw_page(painter, size); }, this);
  row_ = new QHBoxLayout;
  all_ = new QVBoxLayout(this);
  all_->setContentsMargins(0, 0, 0, 0);
  all_->setSpacing(0);
  all_->addWidget(area, 1);
  all_->addLayout(row_);
  row_->setContentsMargins(9, 9, 9, 9);
  row_->setSpacing(6);
  row_->addStretch();
  // As wide as a page and the scroll bar beside it, if the screen is wide enough.
  const QSize screen = this->screen()->availableSize();
  const int page = static_cast<int>(std::ceil(a4_portrait.width() / twips_per_pixel));
  const int wanted = page + area->VScroll1->sizeHint().width();
  resize(std::min(wanted, screen.width() * 19 / 20), screen.height() * 9 / 10);
}

QPushButton* Preview::add_button(const QString& name, const QString& caption,
                                 const QKeySequence& key) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  button->setAutoDefault(false);
  give_letter(*button, caption.front());
  button->installEventFilter(this);
  row_->addWidget(button);
  // A button's own shortcut animates each press, which slows repeats while the key is held down.
  if (key.isEmpty()) return button;
  auto* shortcut = new QShortcut(key, this);
  connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
  return button;
}

void Preview::add_print_and_quit() {
  cmdPrint = add_button(QStringLiteral("cmdPrint"), QStringLiteral("Print"),
                        QKeySequence(Qt::CTRL | Qt::Key_P));
  Command2 = add_button(QStringLiteral("Command2"), QStringLiteral("Quit"));
  connect(cmdPrint, &QPushButton::clicked, this, &Preview::print);
  connect(Command2, &QPushButton::clicked, this, &QDialog::reject);
  area->setFocus();
}

void Preview::add_above_buttons(QWidget* widget) {
  all_->insertWidget(1, widget);
}

QSizeF Preview::paper() const {
  QSizeF size = a4_portrait;
  skip_on_error([&] {
    shell_.printer().prefer_paper_a4();
    size = shell_.printer().paper_size();
  });
  return size;
}

void Preview::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (!event->spontaneous()) Form_Activate();
}

// Keys that scroll the page do so even while a button has the focus.
bool Preview::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && scrolls(static_cast<QKeyEvent&>(*event))) {
    return QCoreApplication::sendEvent(area, event);
  }
  return QDialog::eventFilter(watched, event);
}
