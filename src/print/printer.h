// The printer: orientation and paper, the system's set-up dialog, documents. Replaceable, so that a
// missing or failing printer can be had without one.
#pragma once

#include "print/printout.h"

class QWidget;

// Every call throws PrinterError when there is no printer or it fails.
class Printer : public Printout {
 public:
  virtual Orientation orientation() = 0;
  virtual void set_orientation(Orientation orientation) = 0;

  // A4 from now on, whatever was chosen before.
  virtual void set_paper_a4() = 0;
  // A4, unless other paper was chosen in the set-up dialog since.
  virtual void prefer_paper_a4() = 0;

  // Shows the system's printer dialog. The printer, the orientation and the paper chosen there are
  // the ones from then on; what to print is not asked. Works without a default printer as long as
  // there is one to choose. Throws PrinterError when it is cancelled.
  virtual void show_setup(QWidget* parent) = 0;
};
