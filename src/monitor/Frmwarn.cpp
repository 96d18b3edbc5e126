#include "monitor/Frmwarn.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

#include "app/user.h"
#include "base/errors.h"
#include "base/message_box.h"
#include "base/mnemonics.h"
#include "base/numbers.h"
#include "base/ok_cancel.h"
#include "base/tool_tip.h"

namespace {

// The number and name of a tab's channel, or "No channel" if the Recording does not have it.
QString channel_text(std::size_t slot) {
  const Recording& recording = User::recording;
  const auto channels = static_cast<std::size_t>(recording.clamped_channel_count());
  if (recording.SampleCount == 0 || slot >= channels) return QStringLiteral("No channel");
  const ChannelTexts<const QString> channel = recording.channel(slot);
  return QStringLiteral("Channel %1: %2").arg(channel.number, channel.name);
}

}  // namespace

Frmwarn::Frmwarn(MessageBox& messages, QWidget* parent) : QDialog(parent), messages_(messages) {
  build();
  Form_Load();
}

void Frmwarn::build() {
  setObjectName(QStringLiteral("Frmwarn"));
  setWindowTitle(QStringLiteral("Display Limit Set"));
  SSTab1 = new QTabWidget(this);
  SSTab1->setObjectName(QStringLiteral("SSTab1"));
  SSTab1->setAccessibleName(QStringLiteral("Channels"));
  SSTab1->setUsesScrollButtons(false);
  for (std::size_t c = 0; c < Check1.size(); ++c) {
    SSTab1->addTab(build_channel(c), QStringLiteral("Tab %1").arg(c));
    SSTab1->setTabToolTip(static_cast<int>(c), plain_tool_tip(channel_text(c)));
  }
  give_digits(*SSTab1);
  const auto [ok, cancel, buttons] = make_ok_cancel(*this);
  Command1 = ok;
  Command2 = cancel;
  connect(Command1, &QPushButton::clicked, this, &Frmwarn::Command1_Click);

  auto* all = new QVBoxLayout(this);
  all->addWidget(SSTab1);
  all->addLayout(buttons);
  all->setSizeConstraint(QLayout::SetFixedSize);
}

QWidget* Frmwarn::build_channel(std::size_t channel) {
  auto* page = new QWidget(SSTab1);
  auto* grid = new QGridLayout(page);
  const std::array captions = {QStringLiteral("Up Limit"), QStringLiteral("Down Limit")};
  for (std::size_t which = 0; which < captions.size(); ++which) {
    const std::size_t index = 2 * channel + which;
    auto* box = new QLineEdit(page);
    box->setObjectName(QStringLiteral("Text1(%1)").arg(index));
    box->setAccessibleName(captions[which] + QStringLiteral(", ") + channel_text(channel));
    auto* label = new QLabel(captions[which], page);
    label->setBuddy(box);
    give_letter(*label, captions[which].front());
    grid->addWidget(label, static_cast<int>(which), 0);
    grid->addWidget(box, static_cast<int>(which), 1);
    Text1[index] = box;
  }
  auto* check = new QCheckBox(QStringLiteral("Auto"), page);
  check->setObjectName(QStringLiteral("Check1(%1)").arg(channel));
  give_letter(*check, u'A');
  connect(check, &QCheckBox::toggled, this, [this, channel] { Check1_Click(channel); });
  grid->addWidget(check, 2, 1);
  Check1[channel] = check;
  return page;
}

void Frmwarn::Form_Load() {
  for (std::size_t i = 0; i < Text1.size(); ++i) Text1[i]->setText(fixed2(User::DisplayLimit[i]));
  for (std::size_t c = 0; c < Check1.size(); ++c) {
    Check1[c]->setChecked(User::DisplayLimitAuto[c] != 0);
  }
}

// Keeps the texts, so that they count again once the automatic range is switched off.
void Frmwarn::Check1_Click(std::size_t index) {
  const bool enabled = !Check1[index]->isChecked();
  Text1[2 * index]->setEnabled(enabled);
  Text1[2 * index + 1]->setEnabled(enabled);
}

void Frmwarn::Command1_Click() {
  or_error_path([this] { store(); }, [this] { refuse(); });
}

// Then moves the focus to the first text that was refused, or to the box that lets it be edited.
void Frmwarn::refuse() {
  messages_.show(QStringLiteral("Input Error,Please Retry"));
  for (std::size_t i = 0; i < Text1.size(); ++i) {
    if (float_of(Text1[i]->text())) continue;
    SSTab1->setCurrentIndex(static_cast<int>(i / 2));
    if (!Text1[i]->isEnabled()) return Check1[i / 2]->setFocus();
    Text1[i]->setFocus();
    return Text1[i]->selectAll();
  }
}

// Reads and stores the limits of an automatic range too.
void Frmwarn::store() {
  std::array<float, 8> limits;
  std::transform(Text1.begin(), Text1.end(), limits.begin(),
                 [](const QLineEdit* box) { return to_float(box->text()); });
  std::copy(limits.begin(), limits.end(), User::DisplayLimit.begin());
  for (std::size_t c = 0; c < Check1.size(); ++c) {
    User::DisplayLimitAuto[c] = Check1[c]->isChecked() ? 1 : 0;
  }
  accept();
}
