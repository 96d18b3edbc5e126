// Exports a Recording as PDF pages.
#pragma once

#include <QString>

#include <functional>

class Recording;

// Writes to `path` the page of the historical graph, with all samples and channels in one graph,
// then the pages of the data sheet, on portrait A4. Needs a QGuiApplication for its fonts. Calls
// `before_page` before each sheet page; an exception from it ends the export. Throws PrinterError
// when the file cannot be written. An older file stays until the new one is complete.
void write_pdf(const Recording& recording, const QString& path, const QString& printed,
               const std::function<void()>& before_page);
