// A label that ends a text that does not fit with an ellipsis and shows all of it in its tool
// tip.
#pragma once

#include <QLabel>

// For plain text. text() and what a screen reader says are never shortened. The label can be made
// narrower than its text. With word wrap it shows as many lines as its height holds.
class ElidingLabel final : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString tip_;  // the tool tip that the label last set
};
