// The printer: orientation and paper, the system's set-up dialog, one document at a time.
// Replaceable, so that a missing or failing printer can be had without one.
#pragma once

#include <QSizeF>
#include <QString>

#include "base/errors.h"

class QPainter;
class QWidget;

// There is no default printer, or the printer failed.
class PrinterError : public RunTimeError {
 public:
  using RunTimeError::RunTimeError;
};

// The printer's orientation codes.
enum class Orientation { portrait = 1, landscape = 2 };

// Every call throws PrinterError when there is no printer or it fails.
class Printer {
 public:
  Printer() = default;
  Printer(const Printer&) = delete;
  Printer& operator=(const Printer&) = delete;
  virtual ~Printer() = default;

  virtual Orientation orientation() = 0;
  virtual void set_orientation(Orientation orientation) = 0;
  virtual void set_paper_a4() = 0;

  // Shows the system's printer dialog with this orientation. Gives the one chosen there; another
  // printer chosen there is the printer from then on. Throws PrinterError when it is cancelled.
  virtual Orientation show_setup(Orientation orientation, QWidget* parent) = 0;

  // Opens a document with its first page. The painter's unit is the twip, its origin the corner
  // of the paper; it is good until the document ends.
  virtual QPainter& start_document(const QString& title) = 0;
  // The whole paper, in twips, as it is turned.
  virtual QSizeF paper_size() = 0;
  virtual void new_page() = 0;
  // Sends the document.
  virtual void end_document() = 0;
  // Throws the document away; never fails.
  virtual void abort_document() = 0;
};
