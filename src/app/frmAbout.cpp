#include "app/frmAbout.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "base/message_box.h"
#include "base/mnemonics.h"

frmAbout::frmAbout(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmAbout"));
  setWindowTitle(QStringLiteral("About ") + program_title);

  auto* icon = new QLabel(this);
  icon->setPixmap(QApplication::windowIcon().pixmap(64));
  auto* name = new QLabel(program_title + u' ' + QStringLiteral(CORVANE_VERSION), this);
  QFont font = name->font();
  font.setPointSizeF(font.pointSizeF() * 1.6);
  font.setBold(true);
  name->setFont(font);
  auto* purpose = new QLabel(
      QStringLiteral("Links to a four-channel temperature and humidity recorder, sets it up,\n"
                     "watches it live, and keeps, shows and prints what it has recorded."),
      this);
  auto* qt = new QLabel(QStringLiteral("Qt ") + QString::fromLatin1(qVersion()), this);
  auto* buttons = new QDialogButtonBox(this);
  QPushButton* ok = buttons->addButton(QStringLiteral("Ok"), QDialogButtonBox::AcceptRole);
  ok->setDefault(true);
  give_letter(*ok, u'O');
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

  auto* texts = new QVBoxLayout;
  for (QLabel* label : {name, purpose, qt}) {
    label->setTextFormat(Qt::PlainText);
    texts->addWidget(label);
  }
  texts->addStretch();
  auto* top = new QHBoxLayout;
  top->addWidget(icon, 0, Qt::AlignTop);
  top->addLayout(texts);
  auto* all = new QVBoxLayout(this);
  all->addLayout(top);
  all->addWidget(buttons);
  all->setSizeConstraint(QLayout::SetFixedSize);
}
