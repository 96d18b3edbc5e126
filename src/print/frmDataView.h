// The data-sheet preview: the samples of the view in a table, page by page as they will be printed.
#pragma once

#include <QLabel>

#include "print/preview.h"

class frmDataView final : public Preview {
  Q_OBJECT

 public:
  explicit frmDataView(Shell& shell);

  // Prints the first `pages` pages, or as many as there are, as one document; the window need not
  // be shown. Message "Default Printer Error" when that fails. Gives whether they were printed.
  bool print(int pages);

  // The page shown, counted from 0; a number outside leads to the nearest page.
  int page() const { return page_; }
  void show_page(int page);

  QPushButton* cmdFirst;
  QPushButton* cmdPrevious;
  QPushButton* cmdNext;
  QPushButton* cmdLast;
  QLabel* Label1;

 protected:
  void Form_Activate() override;
  void cmdPrint_Click() override;
  void draw_page(QPainter& painter, QSizeF size) const override;

 private:
  int page_count() const;

  int page_ = 0;
};
