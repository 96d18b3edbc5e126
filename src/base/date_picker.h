// A date field with a calendar that can be used from the keyboard alone.
#pragma once

#include <QDateTimeEdit>

// What it adds to a QDateTimeEdit with a calendar:
// - With the cursor in the year, or with all selected, the user can type a whole date ("2026-03-01"
//   or "20260301"; "/" and "." count as "-"). Meanwhile the field shows only what has been typed.
//   Parts that are not typed keep their values. A whole date can also be pasted.
// - A date outside the range becomes the nearest one inside it when the user leaves the field,
//   presses Enter or completes the date. Until then the field accepts parts outside the range.
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
  // Adds the key to the whole date being typed; false if the key is not part of one.
  bool type(const QKeyEvent& key);
  void show_typed();
  void accept_typed();
  void set_nearest(QDate date);
  void open_calendar();

  QString typed_;
};
