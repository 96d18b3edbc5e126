// Where pages go: a printer or a file, one document at a time.
#pragma once

#include <QSizeF>
#include <QString>

#include "base/errors.h"

class QPainter;

// There is no printer, or it failed; or the file could not be written.
class PrinterError : public RunTimeError {
 public:
  using RunTimeError::RunTimeError;
};

// The orientation codes of printers.
enum class Orientation { portrait = 1, landscape = 2 };

// Every call but the last throws PrinterError when it fails.
class Printout {
 public:
  Printout() = default;
  Printout(const Printout&) = delete;
  Printout& operator=(const Printout&) = delete;
  virtual ~Printout() = default;

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
