// A data file as pages.
#pragma once

#include <QString>

class Recording;

// Writes `path`: the page of the historical graph with all samples, all channels in one graph, then
// the pages of the data sheet, on upright A4. Needs a QGuiApplication for its fonts. Throws
// PrinterError when the file cannot be written.
void write_pdf(const Recording& recording, const QString& path, const QString& printed);
