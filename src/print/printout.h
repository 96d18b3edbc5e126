// The target of printed pages: a printer or a file, one document at a time.
#pragma once

#include <QSizeF>
#include <QString>

#include "base/errors.h"

class QPainter;

// There is no printer, or it failed; or a document could not be made.
class PrinterError : public RunTimeError {
 public:
  using RunTimeError::RunTimeError;
};

// The orientation codes of printers.
enum class Orientation { portrait = 1, landscape = 2 };

// A call that fails throws PrinterError, or FileError if a file cannot be written.
class Printout {
 public:
  Printout() = default;
  Printout(const Printout&) = delete;
  Printout& operator=(const Printout&) = delete;
  virtual ~Printout() = default;

  // Opens a document with its first page. The painter's unit is the twip, its origin the paper's
  // corner; it is valid until the document ends.
  virtual QPainter& start_document(const QString& title) = 0;
  // The size of the whole paper in twips, in its orientation.
  virtual QSizeF paper_size() = 0;
  virtual void new_page() = 0;
  // Sends the document.
  virtual void end_document() = 0;
  // Discards the document; never fails.
  virtual void abort_document() = 0;
};
