#include "base/ok_cancel.h"

#include <QPushButton>

#include "base/mnemonics.h"

OkCancel make_ok_cancel(QDialog& dialog, const char* ok_name, const char* cancel_name) {
  const OkCancel buttons = {new QPushButton(QStringLiteral("Ok"), &dialog),
                            new QPushButton(QStringLiteral("Cancel"), &dialog), new QHBoxLayout};
  buttons.ok->setObjectName(QLatin1String(ok_name));
  buttons.ok->setDefault(true);
  buttons.cancel->setObjectName(QLatin1String(cancel_name));
  give_letter(*buttons.ok, u'O');
  give_letter(*buttons.cancel, u'C');
  QObject::connect(buttons.cancel, &QPushButton::clicked, &dialog, &QDialog::reject);
  buttons.row->addStretch();
  buttons.row->addWidget(buttons.ok);
  buttons.row->addWidget(buttons.cancel);
  return buttons;
}
