// The dialog "Read Data Segment": which run of the recorder's segments to download.
#pragma once

#include <QDialog>
#include <QPlainTextEdit>

class MessageBox;
class QComboBox;
class QPushButton;

class frmhistorytime : public QDialog {
  Q_OBJECT

 public:
  // Offers User::SegmentTimes; a confirmed choice goes into User::FirstSegment and LastSegment.
  frmhistorytime(const QString& message, MessageBox& messages, QWidget* parent);

  bool confirmed() const { return confirmed_; }

  QComboBox* Combo1;  // start
  QComboBox* Combo2;  // end
  QPlainTextEdit* Text1;
  QPushButton* Command1;
  QPushButton* Command2;

 private:
  void build();
  void Form_Load();
  void Command1_Click();

  MessageBox& messages_;
  bool confirmed_ = false;
};
