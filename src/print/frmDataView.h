// The data-sheet preview: the samples of the view in a table, page by page as they will be printed.
#pragma once

#include "print/preview.h"

class QLabel;

class frmDataView final : public Preview {
  Q_OBJECT

 public:
  explicit frmDataView(Shell& shell);

  // The page shown, counted from 0. A number out of range means the nearest page.
  int page() const { return page_; }
  void show_page(int page);

  QPushButton* cmdFirst;
  QPushButton* cmdPrevious;
  QPushButton* cmdNext;
  QPushButton* cmdLast;
  QLabel* Label1;
  QLabel* Label2;

 protected:
  void Form_Activate() override;
  void print() override;
  void draw_page(QPainter& painter, QSizeF size) const override;

 private:
  int page_count() const;

  int page_ = 0;
};
