// The dialog "Display Limit Set": the vertical range of each channel's graph.
#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

#include <array>

class MessageBox;

class Frmwarn final : public QDialog {
  Q_OBJECT

 public:
  // Edits User::DisplayLimit and User::DisplayLimitAuto; nothing changes until it is accepted.
  Frmwarn(MessageBox& messages, QWidget* parent);

  // One tab for each channel c: up limit 2c, down limit 2c + 1, automatic range c.
  QTabWidget* SSTab1;
  std::array<QLineEdit*, 8> Text1{};
  std::array<QCheckBox*, 4> Check1{};
  QPushButton* Command1;
  QPushButton* Command2;

 private:
  void build();
  QWidget* build_channel(std::size_t channel);
  void Form_Load();
  void Check1_Click(std::size_t index);
  void Command1_Click();
  void store();
  void refuse();

  MessageBox& messages_;
};
