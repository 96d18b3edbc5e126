// The graph preview: one page of the historical graph as it will be printed.
#pragma once

#include <QTimer>

#include "print/preview.h"

class frmGraphView final : public Preview {
  Q_OBJECT

 public:
  explicit frmGraphView(Shell& shell);

  QTimer* Timer1;

 protected:
  void Form_Activate() override;
  void print() override;
  void draw_page(QPainter& painter, QSizeF size) const override;

 private:
  void Timer1_Timer();
};
