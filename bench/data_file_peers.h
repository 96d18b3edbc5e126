// What a data file is measured against: the least code that does the same work.
#pragma once

#include <QProcess>
#include <QString>

#include <optional>
#include <string>
#include <vector>

// A Recording as plain vectors, filled and written by the peers.
struct PlainRecording {
  std::vector<std::string> texts;  // title, recorder name, 3 texts a channel
  std::vector<std::string> times;
  std::vector<float> values;  // `channels` a sample
  int channels = 0;
};

// Scans the memory-mapped file to its end and converts every number; lines that are texts are
// stepped over.
void read_with_from_chars(const QString& path, PlainRecording& recording);

// Reads every line of a text and extracts every number with >>.
void read_with_ifstream(const QString& path, PlainRecording& recording);

// Writes every field with memcpy or std::to_chars into one buffer, and that with one write.
void write_with_to_chars(const QString& path, const PlainRecording& recording);

// pandas in a process of its own, started when first used, reading the same samples as CSV with
// dates parsed.
class PandasReader {
 public:
  PandasReader(const QString& csv_path, int samples) : csv_path_(csv_path), samples_(samples) {}
  ~PandasReader();
  PandasReader(const PandasReader&) = delete;
  PandasReader& operator=(const PandasReader&) = delete;

  // The time of one reading in milliseconds; nothing where pandas is not installed.
  std::optional<double> read();

 private:
  bool start();
  QByteArray next_line();

  QString csv_path_;
  int samples_;
  QProcess process_;
  std::optional<bool> ready_;
};
