// The dialog "Select Date Segment": sets the graph's view by its first and last times.
#pragma once

#include <QDialog>

#include <array>
#include <cstdint>
#include <functional>

class MessageBox;
class QDateTimeEdit;
class QLabel;
class QPushButton;

class frmdate final : public QDialog {
  Q_OBJECT

 public:
  // Opens with the view that begins at sample `view_start`. "Ok" sets User::recording.ViewCount and
  // hands the first sample to `show`.
  frmdate(MessageBox& messages, std::int32_t view_start, std::function<void(std::int32_t)> show,
          QWidget* parent);

  QLabel* Label1;
  QLabel* Label2;
  // Start date and time of day, end date and time of day.
  std::array<QDateTimeEdit*, 4> DTP2{};
  QPushButton* Command1;
  QPushButton* Command2;

 private:
  void build();
  void name_picker(std::size_t index, const QString& name);
  void Form_Load(std::int32_t view_start);
  void Command1_Click();

  MessageBox& messages_;
  std::function<void(std::int32_t)> show_;
};
