// A date field with a calendar, for hands on the keyboard.
#pragma once

#include <QDateTimeEdit>

// Beyond a QDateTimeEdit with a calendar:
// - From its year on, or with all of it selected, a whole date can be typed ("2026-03-01" or
//   "20260301", "/" and "." count as "-") or pasted. What is typed of it so far is all that the
//   field shows. Parts that are not typed stay as they were.
// - A date outside the range becomes the nearest in it when the field is left, Enter is pressed or
//   the date is complete; on the way to a date in the range, parts outside are let through.
// - F4 and Alt+Down open the calendar.
class DatePicker final : public QDateTimeEdit {
  Q_OBJECT

 public:
  explicit DatePicker(QWidget* parent);

  QValidator::State validate(QString& text, int& position) const override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  // Whether the key belongs to a whole date that is being typed, which it then does its part for.
  bool type(const QKeyEvent& key);
  void show_typed();
  void accept_typed();
  void set_nearest(QDate date);
  void open_calendar();

  QString typed_;
};
