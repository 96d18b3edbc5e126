#include "device/frmport.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "app/user.h"
#include "base/ok_cancel.h"

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
    // Also when the arrow keys choose it.
    connect(option, &QRadioButton::toggled, this, [this, i](bool on) {
      if (on) Option1_Click(i);
    });
    options->addWidget(option);
    Option1[static_cast<std::size_t>(i)] = option;
  }

  Label1 = new QLabel(QStringLiteral("Recorder Type"), this);
  Label1->setObjectName(QStringLiteral("Label1"));
  Combo1 = new QComboBox(this);
  Combo1->setObjectName(QStringLiteral("Combo1"));
  Combo1->setAccessibleName(Label1->text());
  Combo1->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  Combo1->setMinimumContentsLength(16);
  Label1->setBuddy(Combo1);

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
    Combo1->addItem(User::DeviceTable.text(0, row));
  }
}

void frmport::Option1_Click(int index) {
  User::PortChoice = static_cast<std::int16_t>(index);
}

// With two types of the same name the later row is taken.
void frmport::Command1_Click() {
  for (int row = 0; row < User::DeviceTable.rows(); ++row) {
    if (User::DeviceTable.text(0, row) == Combo1->currentText()) {
      User::RecorderType = static_cast<std::int16_t>(row);
    }
  }
  accept();
}

void frmport::Command2_Click() {
  User::PortChoice = -1;
}
