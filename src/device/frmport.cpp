#include "device/frmport.h"

#include <QComboBox>
#include <QFileInfo>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>

#include "app/user.h"
#include "base/mnemonics.h"
#include "base/ok_cancel.h"
#include "base/program_folder.h"
#include "base/spoken.h"
#include "base/tool_tip.h"
#include "device/port_names.h"
#include "device/port_state.h"

namespace {

constexpr int searched_ports = 8;

// A line of the tool tip: the device of a port and, if it cannot be opened, the reason.
QString port_line(int number, const QStringList& system_ports, const QSet<QString>& in_use) {
  const QString device = serial_device(number, program_folder(), system_ports);
  return QStringLiteral("COM%1: %2").arg(QString::number(number), port_text(device, in_use));
}

}  // namespace

frmport::frmport(QWidget* parent) : QDialog(parent) {
  build();
  Form_Load();
}

void frmport::build() {
  setObjectName(QStringLiteral("frmport"));
  setWindowTitle(QStringLiteral("Select Port"));

  auto* Frm1 = new QGroupBox(QStringLiteral("Port"), this);
  Frm1->setObjectName(QStringLiteral("Frm1"));
  auto* options = new QVBoxLayout(Frm1);
  for (int i = 0; i < 5; ++i) {
    const QString caption = i < 4 ? QStringLiteral("Comm %1").arg(i + 1) : QStringLiteral("Auto");
    auto* option = new QRadioButton(caption, Frm1);
    option->setObjectName(QStringLiteral("Option1(%1)").arg(i));
    // The signal is toggled, not clicked, because the arrow keys choose an option too.
    connect(option, &QRadioButton::toggled, this, [this, i](bool on) {
      if (on) Option1_Click(i);
    });
    give_letter(*option, i < 4 ? caption.back() : caption.front());
    option->installEventFilter(this);
    options->addWidget(option);
    Option1[static_cast<std::size_t>(i)] = option;
  }

  Label1 = new QLabel(QStringLiteral("Recorder Type"), this);
  Label1->setObjectName(QStringLiteral("Label1"));
  Combo1 = new QComboBox(this);
  Combo1->setObjectName(QStringLiteral("Combo1"));
  Combo1->setAccessibleName(Label1->text());
  // A long name is cut off in the field but complete in the list and the tool tip.
  Combo1->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  Combo1->setMinimumContentsLength(22);
  Label1->setBuddy(Combo1);
  give_letter(*Label1, u'R');
  speak_choice(*Combo1);
  connect(Combo1, &QComboBox::currentTextChanged, this,
          [this](const QString& type) { Combo1->setToolTip(plain_tool_tip(type)); });

  const auto [ok, cancel, buttons] = make_ok_cancel(*this);
  Command1 = ok;
  Command2 = cancel;
  connect(Command1, &QPushButton::clicked, this, &frmport::Command1_Click);
  // The close box and Escape cancel too.
  connect(this, &QDialog::rejected, this, &frmport::Command2_Click);

  auto* right = new QVBoxLayout;
  right->addWidget(Label1);
  right->addWidget(Combo1);
  right->addStretch();
  auto* top = new QHBoxLayout;
  top->addWidget(Frm1);
  top->addLayout(right, 1);
  auto* all = new QVBoxLayout(this);
  all->addLayout(top);
  all->addLayout(buttons);
}

void frmport::Form_Load() {
  User::PortChoice = -1;
  for (int row = 0; row < User::DeviceTable.rows(); ++row) {
    Combo1->addItem(User::DeviceTable.type_name(row));
  }
  if (Combo1->count() == 0) tell_no_types();
  QStringList lines;
  const QStringList system_ports = system_serial_ports();
  const QSet<QString> in_use = devices_open_elsewhere();
  for (int number = 1; number <= searched_ports; ++number) {
    lines << port_line(number, system_ports, in_use);
    if (number <= 4) {
      Option1[static_cast<std::size_t>(number) - 1]->setToolTip(plain_tool_tip(lines.back()));
    }
  }
  Option1[4]->setToolTip(plain_tool_tip(lines.join(u'\n')));
}

void frmport::tell_no_types() {
  const QString file = program_folder() + QStringLiteral("/device.txt");
  const QString text = QFileInfo::exists(file) ? QStringLiteral("device.txt lists no type")
                                               : QStringLiteral("device.txt is missing");
  Combo1->setPlaceholderText(text);
  Combo1->setAccessibleDescription(text);
  Combo1->setToolTip(plain_tool_tip(file));
}

// The arrow keys choose the next option even while none is chosen. Qt alone would then only move
// the focus.
bool frmport::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
  const int key = static_cast<const QKeyEvent&>(*event).key();
  const bool forward = key == Qt::Key_Down || key == Qt::Key_Right;
  const bool back = key == Qt::Key_Up || key == Qt::Key_Left;
  const auto at = std::find(Option1.begin(), Option1.end(), watched);
  if ((!forward && !back) || at == Option1.end()) return QDialog::eventFilter(watched, event);
  const auto count = static_cast<std::ptrdiff_t>(Option1.size());
  const auto next = (at - Option1.begin() + (forward ? 1 : count - 1)) % count;
  QRadioButton* option = Option1[static_cast<std::size_t>(next)];
  option->setFocus(Qt::TabFocusReason);
  option->setChecked(true);
  return true;
}

void frmport::Option1_Click(int index) {
  User::PortChoice = static_cast<std::int16_t>(index);
}

// Of two types with the same name, the later row counts.
void frmport::Command1_Click() {
  for (int row = 0; row < User::DeviceTable.rows(); ++row) {
    if (User::DeviceTable.type_name(row) == Combo1->currentText()) {
      User::RecorderType = static_cast<std::int16_t>(row);
    }
  }
  accept();
}

void frmport::Command2_Click() {
  User::PortChoice = -1;
}
