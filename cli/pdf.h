// A data file as pages.
#pragma once

#include <QString>

#include <functional>

class Recording;

// Writes `path`: the page of the historical graph with all samples, all channels in one graph, then
// the pages of the data sheet, on upright A4. Needs a QGuiApplication for its fonts. What
// `before_page` throws ends it. Throws PrinterError when the file cannot be written. An older file
// stays until the new one is whole.
void write_pdf(const Recording& recording, const QString& path, const QString& printed,
               const std::function<void()>& before_page);
