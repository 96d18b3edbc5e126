#include "print/Frmprint.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>

#include "app/shell.h"
#include "app/user.h"
#include "base/errors.h"
#include "base/message_box.h"
#include "base/mnemonics.h"
#include "base/numbers.h"
#include "base/ok_cancel.h"
#include "base/spoken.h"
#include "base/tool_tip.h"
#include "print/printer.h"

namespace {

const QStringList pages_offered = {"1", "2", "3",  "4",  "5",  "6",  "7",
                                   "8", "9", "10", "20", "30", "50", "100"};

// Doubles each "&" of a name, which would otherwise mark a shortcut.
QString as_caption(QString text) {
  return text.replace(u'&', QStringLiteral("&&"));
}

}  // namespace

Frmprint::Frmprint(Shell& shell) : QDialog(shell.window()), shell_(shell) {
  build();
  Form_Load();
}

void Frmprint::build() {
  setObjectName(QStringLiteral("Frmprint"));
  setWindowTitle(QStringLiteral("Print Set"));
  build_options();
  build_channels();
  build_pages();
  lay_out();
}

void Frmprint::build_options() {
  Frm1 = new QGroupBox(QStringLiteral("Print"), this);
  Frm1->setObjectName(QStringLiteral("Frm1"));
  auto* options = new QVBoxLayout(Frm1);
  for (int i = 0; i < 2; ++i) {
    auto* option = new QRadioButton(
        i == 0 ? QStringLiteral("Print Sheet") : QStringLiteral("Print Graph"), Frm1);
    option->setObjectName(QStringLiteral("Option1(%1)").arg(i));
    give_letter(*option, i == 0 ? u'S' : u'G');
    options->addWidget(option);
    Option1[static_cast<std::size_t>(i)] = option;
  }
  Check1[0] = new QCheckBox(QStringLiteral("趋势合并打印"), Frm1);
  Check1[0]->setToolTip(QStringLiteral("Print the curves together in one graph (Alt+T)"));
  give_letter(*Check1[0], u'T');
  options->addWidget(Check1[0]);
  options->addStretch();
}

void Frmprint::build_channels() {
  Frame1 = new QGroupBox(QStringLiteral("Channels"), this);
  Frame1->setObjectName(QStringLiteral("Frame1"));
  auto* channels = new QVBoxLayout(Frame1);
  for (std::size_t i = 1; i < Check1.size(); ++i) {
    Check1[i] = new QCheckBox(QStringLiteral("Channel %1").arg(i), Frame1);
    // A long name must not push the dialog off the screen; the tool tip shows it whole.
    Check1[i]->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    channels->addWidget(Check1[i]);
  }
  for (std::size_t i = 0; i < Check1.size(); ++i) {
    Check1[i]->setObjectName(QStringLiteral("Check1(%1)").arg(i));
  }
}

void Frmprint::build_pages() {
  Label1 = new QLabel(QStringLiteral("Pages"), this);
  Label1->setObjectName(QStringLiteral("Label1"));
  Combo1 = new QComboBox(this);
  Combo1->setObjectName(QStringLiteral("Combo1"));
  Combo1->setAccessibleName(Label1->text());
  Combo1->setEditable(true);
  Combo1->setInsertPolicy(QComboBox::NoInsert);
  Combo1->setCompleter(nullptr);
  Label1->setBuddy(Combo1);
  give_letter(*Label1, u'P');
  speak_choice(*Combo1);
  Cmd3 = new QPushButton(QStringLiteral("Printer Set"), this);
  Cmd3->setObjectName(QStringLiteral("Cmd3"));
  give_letter(*Cmd3, u'R');
  connect(Cmd3, &QPushButton::clicked, this,
          [this] { stop_at_first_failure([this] { Cmd3_Click(); }); });
}

void Frmprint::lay_out() {
  const auto [ok, cancel, buttons] = make_ok_cancel(*this, "Cmd1", "Cmd2");
  Cmd1 = ok;
  Cmd2 = cancel;
  connect(Cmd1, &QPushButton::clicked, this,
          [this] { stop_at_first_failure([this] { Cmd1_Click(); }); });
  auto* pages = new QHBoxLayout;
  pages->addWidget(Label1);
  pages->addWidget(Combo1);
  pages->addStretch();
  pages->addWidget(Cmd3);
  auto* all = new QGridLayout(this);
  all->addWidget(Frm1, 0, 0);
  all->addWidget(Frame1, 0, 1);
  all->setColumnStretch(1, 1);
  all->setColumnMinimumWidth(1, fontMetrics().averageCharWidth() * 28);
  all->addLayout(pages, 1, 0, 1, 2);
  all->addLayout(buttons, 2, 0, 1, 2);
}

void Frmprint::Form_Load() {
  User::PrintPages = 0;
  Combo1->addItems(pages_offered);
  Check1[0]->setEnabled(true);
  Check1[0]->setChecked(true);
  const Recording& recording = User::recording;
  const auto channels = static_cast<std::size_t>(recording.clamped_channel_count());
  for (std::size_t c = 1; c < Check1.size(); ++c) {
    const bool present = c <= channels;
    Check1[c]->setEnabled(present);
    Check1[c]->setChecked(present);
    // Without a caption a screen reader would have nothing to say.
    Check1[c]->setAccessibleName(present ? QString() : Check1[c]->text());
    const ChannelTexts<const QString> channel = recording.channel(c - 1);
    const QString text = present ? channel.number + u'(' + channel.name + u')' : QString();
    Check1[c]->setText(as_caption(text));
    Check1[c]->setToolTip(plain_tool_tip(text));
    // Setting a text removes the shortcut.
    give_letter(*Check1[c], QChar(u'0' + static_cast<char16_t>(c)));
  }
  Option1[0]->setChecked(true);
  skip_on_error([this] { shell_.printer().set_paper_a4(); });
}

bool Frmprint::a_channel_is_chosen() const {
  return std::any_of(Check1.begin() + 1, Check1.end(),
                     [](const QCheckBox* box) { return box->isChecked(); });
}

void Frmprint::Cmd1_Click() {
  if (!a_channel_is_chosen()) {
    shell_.messages().show(QStringLiteral("Please Select Channel"));
    Check1[1]->setFocus();
    return;
  }
  const QString pages = Combo1->currentText();
  User::PrintPages = is_number(pages) ? to_int16(pages) : std::int16_t{1};
  User::PrintGraph = Option1[1]->isChecked();
  for (std::size_t i = 0; i < Check1.size(); ++i) {
    User::PrintChannels[i] = Check1[i]->isChecked() ? 1 : 0;
  }
  accept();
}

// Nothing changes if the dialog is cancelled or there is no printer.
void Frmprint::Cmd3_Click() {
  shell_.printer().show_setup(this);
}
