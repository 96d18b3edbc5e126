// Benchmarks of exporting the largest Recording.
#include <QFile>
#include <QTemporaryDir>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>
#include <string>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

#include "data/automation_plugin.h"
#include "data/export_document.h"
#include "data/export_lines.h"
#include "data/export_progress.h"
#include "data/export_text.h"
#include "data/export_workbook.h"
#include "data/file_handle.h"
#include "largest_recording.h"
#include "pandas.h"
#include "suite.h"
#include "support/office_suite.h"

namespace {

constexpr int samples = Recording::max_samples;
constexpr int channels = Recording::max_channels;

// The Recording as a peer gets it, with the lines above the samples made in advance.
struct PlainExport {
  std::string above;
  std::vector<std::string> times;
  std::vector<float> values;
};

PlainExport plain(const Recording& recording) {
  PlainExport result;
  for (const QString& line : lines_above_samples(recording, MinimumLabel::with_stop)) {
    result.above += '"' + line.toStdString() + "\"\r\n";
  }
  for (int n = 0; n < samples; ++n) {
    result.times.push_back(recording.SampleTimes(n).toStdString());
    // Adding 0 removes the sign of -0, which a peer would print.
    for (int c = 0; c < channels; ++c) result.values.push_back(recording.SampleValues(n, c) + 0.0F);
  }
  return result;
}

void write_with_to_chars(const PlainExport& data, const QString& path) {
  const std::size_t room = data.above.size() + 200 * data.times.size();
  const std::unique_ptr<char[]> buffer(new char[room]);
  char* const end = buffer.get() + room;
  char* out = buffer.get();
  const auto put = [&out](const char* text, std::size_t size) {
    std::memcpy(out, text, size);
    out += size;
  };
  put(data.above.data(), data.above.size());
  const float* value = data.values.data();
  for (int n = 0; n < samples; ++n) {
    put("\" ", 2);
    out = std::to_chars(out, end, n + 1).ptr;
    put("   ", 3);
    const std::string& time = data.times[static_cast<std::size_t>(n)];
    put(time.data(), time.size());
    put("        ", 8);
    for (int c = 0; c < channels; ++c) {
      put("       ", 7);
      out = std::to_chars(out, end, *value++, std::chars_format::fixed, 2).ptr;
    }
    put("\"\r\n", 3);
  }
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) std::abort();
  if (file.write(buffer.get(), out - buffer.get()) != out - buffer.get()) std::abort();
}

void write_with_fprintf(const PlainExport& data, const QString& path) {
  std::FILE* const file = std::fopen(QFile::encodeName(path).constData(), "wb");
  if (!file) std::abort();
  std::fputs(data.above.c_str(), file);
  const float* value = data.values.data();
  for (int n = 0; n < samples; ++n) {
    std::fprintf(file, "\" %d   %s        ", n + 1,
                 data.times[static_cast<std::size_t>(n)].c_str());
    for (int c = 0; c < channels; ++c) {
      std::fprintf(file, "       %.2f", static_cast<double>(*value++));
    }
    std::fputs("\"\r\n", file);
  }
  std::fclose(file);
}

void write_ours(const Recording& recording, const QString& path) {
  FileHandle file;
  file.open_for_writing(path);
  write_text_export(recording, file);
  file.close();
}

void write_csv(const PlainExport& data, const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) std::abort();
  file.write("time,a,b,c,d\n");
  const float* value = data.values.data();
  for (const std::string& time : data.times) {
    QByteArray line = QByteArray::fromStdString(time);
    for (int c = 0; c < channels; ++c) {
      line += ',' + QByteArray::number(static_cast<double>(*value++), 'g', 7);
    }
    file.write(line + '\n');
  }
}

// Both sides must write the same bytes.
void check_same_work(const QString& ours, const QString& peers) {
  if (contents(ours) == contents(peers)) return;
  std::puts("a peer of the text export does other work than the program");
  std::exit(2);
}

void text_benchmarks(Suite& suite, const Recording& recording, const QTemporaryDir& folder) {
  const PlainExport data = plain(recording);
  const QString ours = folder.filePath(QStringLiteral("ours.txt"));
  const QString peers = folder.filePath(QStringLiteral("peers.txt"));
  const QString csv = folder.filePath(QStringLiteral("same.csv"));
  write_ours(recording, ours);
  write_with_to_chars(data, peers);
  check_same_work(ours, peers);
  write_with_fprintf(data, peers);
  check_same_work(ours, peers);
  write_csv(data, csv);

  const auto peer_writing = [&](auto write) -> Side {
    return [&, write] { return milliseconds([&] { write(data, peers); }); };
  };
  const Side our_side = [&] { return milliseconds([&] { write_ours(recording, ours); }); };
  suite.compare("export: text", our_side, "to_chars into one buffer, one write",
                peer_writing(write_with_to_chars), 1.0);
  suite.compare("export: text", our_side, "fprintf", peer_writing(write_with_fprintf), 0.2);
  Pandas pandas(QStringLiteral("pandas_write.py"),
                {csv, folder.filePath(QStringLiteral("pandas"))});
  suite.compare(
      "export: text", our_side, "pandas.to_csv", [&] { return pandas.run(); }, 1.0 / 25);
}

// The processor time in milliseconds that this program and the suite have used so far.
double time_of_all(const OfficeSuite& office_suite) {
  double seconds = static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
  for (const qint64 process : office_suite.processes()) {
    // The bracketed name may hold anything; after it, user and system time are fields 12 and 13.
    const QByteArray line = contents(QStringLiteral("/proc/%1/stat").arg(process));
    const QByteArrayList fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    const double ticks = fields.value(11).toDouble() + fields.value(12).toDouble();
    seconds += ticks / static_cast<double>(sysconf(_SC_CLK_TCK));
  }
  return seconds * 1000;
}

// The processor time in milliseconds of all child processes that have ended.
double time_of_children() {
  rusage used{};
  getrusage(RUSAGE_CHILDREN, &used);
  const auto in_ms = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_usec) / 1000;
  };
  return in_ms(used.ru_utime) + in_ms(used.ru_stime);
}

// The peer is what a user would do instead: export a text and have the suite convert it. Both sides
// start the suite, with a user profile of its own.
void office_benchmarks(Suite& suite, const Recording& recording, const QTemporaryDir& folder) {
  if (!OfficeSuite::installed()) {
    std::puts("export: spreadsheet, document: skipped, no office suite");
    return;
  }
  const OfficeSuite office_suite;
  AutomationPlugin office(QStringLiteral(CORVANE_PLUGIN_FOLDER));
  const auto path = [&](const char* file) { return folder.filePath(QLatin1String(file)); };
  // A small first workbook starts the suite, which then outlives the document's export.
  Recording first = recording;
  first.SampleCount = 1;
  const auto exporting = [&](auto export_recording, const char* name) -> Side {
    return [&, export_recording, name] {
      office_suite.end();
      const double start = time_of_all(office_suite);
      ExportProgress progress;
      export_workbook(office, first, path("first.xls"), progress);
      export_recording(office, recording, path(name), progress);
      return time_of_all(office_suite) - start;
    };
  };
  const auto converting = [&](const char* form, const char* filter) -> Side {
    return [&, form, filter]() -> std::optional<double> {
      office_suite.end();
      const double start = time_of_children();
      const QString text = path("converted.txt");
      const double writing = milliseconds([&] { write_ours(recording, text); });
      if (!OfficeSuite::convert(text, form, folder.path(), filter)) return std::nullopt;
      return writing + time_of_children() - start;
    };
  };
  // The workbook has two sheets, one of them with real dates; the peer's has one, of plain texts.
  const Side to_workbook = converting("xls", "CSV:32/MRG,,76");
  const Side to_document = converting("doc", "Text (encoded):UTF8");
  to_document();  // creates the profile
  suite.compare("export: spreadsheet", exporting(export_workbook, "run.xls"),
                "text export, soffice --convert-to xls", to_workbook, 2.0, Repeat::once);
  suite.compare("export: document", exporting(export_document, "run.doc"),
                "text export, soffice --convert-to doc", to_document, 1.0, Repeat::once);
  office.end_own_applications();
}

}  // namespace

void export_benchmarks(Suite& suite) {
  const QTemporaryDir folder(memory_folder());
  const Recording recording = largest_recording(100);
  text_benchmarks(suite, recording, folder);
  office_benchmarks(suite, recording, folder);
}
