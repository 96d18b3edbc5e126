// export: converts a data file to other forms.
#include <QFileInfo>

#include <future>

#include "base/errors.h"
#include "base/times.h"
#include "cli/arguments.h"
#include "cli/csv.h"
#include "cli/files.h"
#include "cli/interrupts.h"
#include "cli/output.h"
#include "cli/pdf.h"
#include "data/automation.h"
#include "data/export_document.h"
#include "data/export_progress.h"
#include "data/export_text.h"
#include "data/export_watch.h"
#include "data/export_workbook.h"
#include "data/file_handle.h"
#include "data/whole_file.h"
#include "views/statistics.h"

namespace {

using Write = std::function<void(const Recording& recording, const QString& path, Interrupts&)>;

void write_text(const Recording& recording, const QString& path, Interrupts&) {
  FileHandle file;
  file.open_for_writing(path);
  write_text_export(recording, file);
  file.close();
}

void write_csv(const Recording& recording, const QString& path, Interrupts& interrupts) {
  const std::string bytes = csv_of(recording).toStdString();
  interrupts.throw_if_interrupted();
  write_whole_file(path, bytes);
}

void write_pages(const Recording& recording, const QString& path, Interrupts& interrupts) {
  write_pdf(recording, path, stamp_text(interrupts.clock.now()),
            [&] { interrupts.throw_if_interrupted(); });
}

// Ends the office processes that the export started, even if the export fails.
struct OfficeForExport {
  ~OfficeForExport() { office.end_own_applications(); }
  Automation& office = office_automation();
};

// Runs the export in a thread: an office program can be slow or hang, and a signal must end it.
template <class Export>
Write by_office(Export export_recording) {
  return
      [export_recording](const Recording& recording, const QString& path, Interrupts& interrupts) {
        constexpr int look_interval_ms = 30;
        const OfficeForExport user;
        ExportProgress progress;
        ExportWatch watch(user.office);
        auto work = std::async(std::launch::async,
                               [&] { export_recording(user.office, recording, path, progress); });
        while (work.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
          interrupts.clock.wait(look_interval_ms);
          if (!interrupts.clock.stopped() && !watch.stuck()) continue;
          progress.stop();
          user.office.give_up();
          work.wait();
        }
        interrupts.throw_if_interrupted();
        work.get();
      };
}

Write form_of(const Arguments& arguments, const QString& path) {
  const QString extension = QFileInfo(path).suffix().toLower();
  if (extension == u"txt") return write_text;
  if (extension == u"csv") return write_csv;
  if (extension == u"pdf") return write_pages;
  if (extension == u"doc") return by_office(export_document);
  if (extension == u"xls") return by_office(export_workbook);
  arguments.refuse(
      QStringLiteral("\"%1\" does not end in .txt, .csv, .pdf, .doc or .xls").arg(path));
}

int run(const Arguments& arguments, Interrupts& interrupts) {
  const QString path = arguments.text("output");
  if (path.isEmpty()) arguments.refuse(QStringLiteral("the file to write is missing (-o)"));
  const Write write = form_of(arguments, path);
  require_writable(path);
  Recording recording = load_recording(arguments.file());
  if (recording.SampleCount > 0) compute_statistics(recording);
  interrupts.throw_if_interrupted();
  write_file(path, [&] { write(recording, path, interrupts); });
  return exit_status::fine;
}

}  // namespace

Command export_command() {
  return {"export",
          "FILE.qlx -o OUT.{txt,csv,pdf,doc,xls}",
          "Writes a data file as text, CSV, PDF, document or workbook.",
          "Writes what a data file holds in another form, which the ending of the name chooses.\n"
          ".txt, .doc and .xls are what the desktop program's Save As makes; documents and\n"
          "workbooks need LibreOffice. .csv has a header line and a line for each sample, as\n"
          "spreadsheets and pandas read it: UTF-8, a comma between the fields, times such as "
          "2026-03-01T10:00:00.\n"
          ".pdf is the desktop program's printout: the graph of all readings, then the sheet.",
          {{"o|output", "FILE", "The file to write; one that exists is replaced."}},
          1,
          run};
}
