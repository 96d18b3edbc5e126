// The dialog "Select Port": port and recorder type for the next link.
#pragma once

#include <QDialog>

#include <array>

class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;

class frmport : public QDialog {
  Q_OBJECT

 public:
  // Sets User::PortChoice to -1 and offers the types of User::DeviceTable.
  explicit frmport(QWidget* parent);

  std::array<QRadioButton*, 5> Option1{};
  QLabel* Label1;
  QComboBox* Combo1;
  QPushButton* Command1;
  QPushButton* Command2;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void build();
  void Form_Load();
  void tell_no_types();
  void Option1_Click(int index);
  void Command1_Click();
  void Command2_Click();
};
