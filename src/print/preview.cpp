#include "print/preview.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include "app/shell.h"
#include "base/mnemonics.h"
#include "print/page.h"

namespace {

// Room for the scroll bar beside a page of full width.
constexpr int beside_page = 20;

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
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(0);
  all->addWidget(area, 1);
  all->addLayout(row_);
  row_->setContentsMargins(9, 9, 9, 9);
  row_->setSpacing(6);
  row_->addStretch();
  const QSize screen = this->screen()->availableSize();
  resize(static_cast<int>(a4_portrait.width() / twips_per_pixel) + beside_page,
         screen.height() * 9 / 10);
}

QPushButton* Preview::add_button(const QString& name, const QString& caption,
                                 const QKeySequence& key) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  button->setAutoDefault(false);
  give_letter(*button, caption.front());
  button->installEventFilter(this);
  row_->addWidget(button);
  // A button's own shortcut presses it visibly, which holds up a key that is kept down.
  if (key.isEmpty()) return button;
  auto* shortcut = new QShortcut(key, this);
  connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
  return button;
}

void Preview::add_print_and_quit() {
  cmdPrint = add_button(QStringLiteral("cmdPrint"), QStringLiteral("Print"),
                        QKeySequence(Qt::CTRL | Qt::Key_P));
  Command2 = add_button(QStringLiteral("Command2"), QStringLiteral("Quit"));
  connect(cmdPrint, &QPushButton::clicked, this, &Preview::cmdPrint_Click);
  connect(Command2, &QPushButton::clicked, this, &QDialog::reject);
  area->setFocus();
}

QSizeF Preview::paper() const {
  QSizeF size = a4_portrait;
  skip_on_error([&] {
    if (shell_.printer().orientation() == Orientation::landscape) size.transpose();
  });
  return size;
}

void Preview::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (!event->spontaneous()) Form_Activate();
}

// The keys that scroll do so wherever the focus is.
bool Preview::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && scrolls(static_cast<QKeyEvent&>(*event))) {
    return QCoreApplication::sendEvent(area, event);
  }
  return QDialog::eventFilter(watched, event);
}
