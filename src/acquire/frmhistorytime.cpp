#include "acquire/frmhistorytime.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

#include "app/user.h"
#include "base/message_box.h"
#include "base/mnemonics.h"
#include "base/ok_cancel.h"
#include "base/read_only.h"
#include "base/spoken.h"

frmhistorytime::frmhistorytime(const QString& message, MessageBox& messages, QWidget* parent)
    : QDialog(parent), messages_(messages) {
  build();
  Text1->setPlainText(message);
  // Another control has the focus, so screen readers say the text as the dialog's description.
  setAccessibleDescription(message);
  Form_Load();
}

void frmhistorytime::build() {
  setObjectName(QStringLiteral("frmhistorytime"));
  setWindowTitle(QStringLiteral("Read Data Segment"));
  Text1 = new QPlainTextEdit(this);
  Text1->setObjectName(QStringLiteral("Text1"));
  Text1->setAccessibleName(QStringLiteral("Recorded time"));
  Text1->setReadOnly(true);
  Text1->setTabChangesFocus(true);
  look_read_only(*Text1);
  Text1->setFixedHeight(fontMetrics().lineSpacing() * 4);
  Text1->setMinimumWidth(fontMetrics().averageCharWidth() * 64);

  auto* grid = new QGridLayout;
  const auto add_list = [&](int row, const QString& name, const QString& caption) {
    auto* list = new QComboBox(this);
    list->setObjectName(name);
    list->setAccessibleName(caption);
    auto* label = new QLabel(caption, this);
    label->setBuddy(list);
    give_letter(*label, caption.front());
    speak_choice(*list);
    grid->addWidget(label, row, 0);
    grid->addWidget(list, row, 1);
    return list;
  };
  Combo1 = add_list(0, QStringLiteral("Combo1"), QStringLiteral("Start Time"));
  Combo2 = add_list(1, QStringLiteral("Combo2"), QStringLiteral("End Time"));
  grid->setColumnStretch(1, 1);

  const auto [ok, cancel, buttons] = make_ok_cancel(*this);
  Command1 = ok;
  Command2 = cancel;
  connect(Command1, &QPushButton::clicked, this, &frmhistorytime::Command1_Click);

  auto* all = new QVBoxLayout(this);
  all->addWidget(Text1);
  all->addLayout(grid);
  all->addLayout(buttons);
  Combo1->setFocus();
}

void frmhistorytime::Form_Load() {
  const int kept = std::min<int>(User::SegmentCount, static_cast<int>(User::SegmentTimes.size()));
  for (std::size_t k = 0; k < static_cast<std::size_t>(std::max(0, kept)); ++k) {
    Combo1->addItem(User::SegmentTimes[k][0]);
    Combo2->addItem(User::SegmentTimes[k][1]);
  }
  Combo1->setCurrentIndex(0);
  Combo2->setCurrentIndex(kept - 1);
}

void frmhistorytime::Command1_Click() {
  if (Combo2->currentIndex() < Combo1->currentIndex()) {
    messages_.show(QStringLiteral("Start Time>End Time"));
    Combo1->setFocus();
    return;
  }
  User::FirstSegment = static_cast<std::int16_t>(Combo1->currentIndex());
  User::LastSegment = static_cast<std::int16_t>(Combo2->currentIndex());
  confirmed_ = true;
  accept();
}
