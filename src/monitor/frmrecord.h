// The Online Record dialog: whether and how often the Real-time Data window polls the recorder.
#pragma once

#include <QCheckBox>
#include <QDateTimeEdit>
#include <QDialog>
#include <QPushButton>

#include <array>

class Shell;

class frmrecord : public QDialog {
  Q_OBJECT

 public:
  explicit frmrecord(Shell& shell);

  // 1 "Online Refresh", 2 "Online Record"; element 0 is null. Either one switches polling on.
  std::array<QCheckBox*, 3> Check1{};
  QDateTimeEdit* DTP1;    // interval
  QPushButton* Command1;  // "Ok"
  QPushButton* Command2;  // "Cancel"

 private:
  void build();
  void Form_Load();
  void Command1_Click();

  Shell& shell_;
};
