// A label that shows by an ellipsis that its text does not fit, and has it whole as its tool tip
// then.
#pragma once

#include <QLabel>

// For plain text. text() stays whole, and so does what a screen reader says. It can be made
// narrower than its text. With word wrap it has as many lines as its height holds.
class ElidingLabel final : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString tip_;  // the tool tip that the label has given itself
};
