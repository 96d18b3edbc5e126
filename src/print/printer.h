// The printer: orientation and paper, the system's set-up dialog, documents. An interface, so that
// tests need no printer and can make it fail.
#pragma once

#include "print/printout.h"

class QWidget;

// Every call but abort_document() throws PrinterError if there is no printer or it fails.
class Printer : public Printout {
 public:
  virtual Orientation orientation() = 0;
  virtual void set_orientation(Orientation orientation) = 0;

  // Sets A4, whatever was chosen before.
  virtual void set_paper_a4() = 0;
  // Sets A4, unless other paper was chosen in the set-up dialog since set_paper_a4().
  virtual void prefer_paper_a4() = 0;

  // Shows the system's printer dialog. The printer, orientation and paper chosen there hold from
  // then on; the dialog does not ask what to print. Needs no default printer, only one to choose.
  // Throws PrinterError if it is cancelled.
  virtual void show_setup(QWidget* parent) = 0;
};
