#include "monitor/frmrecord.h"

#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "app/shell.h"
#include "app/user.h"
#include "base/mnemonics.h"
#include "base/ok_cancel.h"
#include "monitor/frmrealtime.h"
#include "monitor/time_picker.h"

frmrecord::frmrecord(Shell& shell) : QDialog(shell.window()), shell_(shell) {
  build();
  Form_Load();
}

void frmrecord::build() {
  setObjectName(QStringLiteral("frmrecord"));
  setWindowTitle(QStringLiteral("Online Record"));
  const std::array captions = {QString(), QStringLiteral("Online Refresh"),
                               QStringLiteral("Online Record")};
  auto* all = new QVBoxLayout(this);
  for (std::size_t index = 1; index < Check1.size(); ++index) {
    Check1[index] = new QCheckBox(captions[index], this);
    Check1[index]->setObjectName(QStringLiteral("Check1(%1)").arg(index));
    give_letter(*Check1[index], index == 1 ? u'F' : u'R');
    all->addWidget(Check1[index]);
  }
  DTP1 = make_time_picker(QStringLiteral("DTP1"), this);
  DTP1->setAccessibleName(QStringLiteral("Interval"));
  auto* label = new QLabel(DTP1->accessibleName(), this);
  label->setBuddy(DTP1);
  give_letter(*label, u'I');
  auto* interval = new QFormLayout;
  interval->addRow(label, DTP1);
  all->addLayout(interval);
  all->addStretch();

  const auto [ok, cancel, buttons] = make_ok_cancel(*this);
  Command1 = ok;
  Command2 = cancel;
  connect(Command1, &QPushButton::clicked, this, &frmrecord::Command1_Click);
  all->addLayout(buttons);
}

void frmrecord::Form_Load() {
  Check1[1]->setChecked(User::OnlineRefresh);
  Check1[2]->setChecked(User::OnlineRecord);
  set_picked_seconds(*DTP1, QTime(0, 0).secsTo(User::OnlineInterval));
}

// Loads the Real-time Data window if necessary. Loading reads the recorder and sets the three
// settings to their defaults, so the user's choice is stored after it.
void frmrecord::Command1_Click() {
  setEnabled(false);
  frmrealtime* window = shell_.realtime();
  // A load under way has set the defaults already and does not touch the settings again.
  if (!window) window = shell_.loading_realtime();
  if (shell_.shutting_down()) return reject();
  User::OnlineRefresh = Check1[1]->isChecked();
  User::OnlineRecord = Check1[2]->isChecked();
  User::OnlineInterval = QTime(0, 0).addSecs(static_cast<int>(picked_seconds(*DTP1)));
  if (window) window->apply_online_settings();
  accept();
}
