// The peers of the data file: the least code that does the same work.
#pragma once

#include <QString>

#include <string>
#include <vector>

// A Recording as plain vectors, filled and written by the peers.
struct PlainRecording {
  std::vector<std::string> texts;  // title, recorder name, 3 texts per channel
  std::vector<std::string> times;
  std::vector<float> values;  // `channels` per sample
  int channels = 0;
};

// Scans the memory-mapped file to its end and converts every number; skips the lines that are
// texts.
void read_with_from_chars(const QString& path, PlainRecording& recording);

// Reads every line of a text and extracts every number with >>.
void read_with_ifstream(const QString& path, PlainRecording& recording);

// Writes every field with memcpy or std::to_chars into one buffer, and that with one write.
void write_with_to_chars(const QString& path, const PlainRecording& recording);
