// The dialog "Print Set": what to print, which channels, how many pages or copies.
#pragma once

#include <QDialog>
#include <QGroupBox>

#include <array>

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;
class Shell;

class Frmprint : public QDialog {
  Q_OBJECT

 public:
  // Shows the channels of User::recording. Ok stores the choice in User::PrintPages, PrintGraph and
  // PrintChannels; however else the dialog ends, PrintPages is 0.
  explicit Frmprint(Shell& shell);

  QGroupBox* Frm1;
  std::array<QRadioButton*, 2> Option1{};
  std::array<QCheckBox*, 5> Check1{};
  QGroupBox* Frame1;
  QLabel* Label1;
  QComboBox* Combo1;
  QPushButton* Cmd1;
  QPushButton* Cmd2;
  QPushButton* Cmd3;

 private:
  void build();
  void build_options();
  void build_channels();
  void build_pages();
  void lay_out();
  void Form_Load();
  void Cmd1_Click();
  void Cmd3_Click();
  bool a_channel_is_chosen() const;

  Shell& shell_;
};
