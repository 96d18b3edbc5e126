#include "data_file_peers.h"

#include <QFile>

#include <charconv>
#include <cstring>
#include <fstream>
#include <memory>
#include <stdexcept>

namespace {

constexpr int texts_a_channel = 3;

void require(bool condition) {
  if (!condition) throw std::runtime_error("a peer could not do its work");
}

// Reads fields, each a text or a number on a line of its own.
class Lines {
 public:
  Lines(const char* begin, const char* end) : at_(begin), end_(end) {}

  void skip(int lines) {
    for (int i = 0; i < lines; ++i) {
      const auto* feed = std::memchr(at_, '\n', static_cast<std::size_t>(end_ - at_));
      at_ = static_cast<const char*>(feed) + 1;
    }
  }
  template <class Number>
  Number number() {
    Number value{};
    const auto [after, error] = std::from_chars(at_, end_, value);
    require(error == std::errc());
    at_ = after + 2;
    return value;
  }
  bool at_end() const { return at_ == end_; }

 private:
  const char* at_;
  const char* end_;
};

char* put_text(char* out, const std::string& text) {
  *out++ = '"';
  std::memcpy(out, text.data(), text.size());
  out += text.size();
  std::memcpy(out, "\"\r\n", 3);
  return out + 3;
}

template <class Number, class... Form>
char* put_number(char* out, Number value, Form... form) {
  out = std::to_chars(out, out + 64, value, form...).ptr;
  std::memcpy(out, "\r\n", 2);
  return out + 2;
}

}  // namespace

void read_with_from_chars(const QString& path, PlainRecording& recording) {
  QFile file(path);
  require(file.open(QIODevice::ReadOnly));
  const char* bytes = reinterpret_cast<const char*>(file.map(0, file.size()));
  require(bytes != nullptr);
  Lines lines(bytes, bytes + file.size());
  lines.skip(2);
  recording.channels = lines.number<int>();
  lines.skip(texts_a_channel * recording.channels);
  const int samples = lines.number<int>();
  recording.values.resize(static_cast<std::size_t>(samples * recording.channels));
  float* value = recording.values.data();
  for (int n = 0; n < samples; ++n) {
    lines.skip(1);
    for (int c = 0; c < recording.channels; ++c) *value++ = lines.number<float>();
  }
  require(lines.at_end());
}

void read_with_ifstream(const QString& path, PlainRecording& recording) {
  std::ifstream in(path.toStdString());
  std::string line;
  const auto text_lines = [&](int count) {
    for (int i = 0; i < count; ++i) std::getline(in >> std::ws, line);
  };
  int samples = 0;
  text_lines(2);
  in >> recording.channels;
  text_lines(texts_a_channel * recording.channels);
  in >> samples;
  recording.times.resize(static_cast<std::size_t>(samples));
  recording.values.resize(static_cast<std::size_t>(samples * recording.channels));
  float* value = recording.values.data();
  for (std::string& time : recording.times) {
    std::getline(in >> std::ws, time);
    for (int c = 0; c < recording.channels; ++c) in >> *value++;
  }
  require(static_cast<bool>(in));
}

void write_with_to_chars(const QString& path, const PlainRecording& recording) {
  const std::size_t room = 100'000 + 24 * recording.times.size() + 14 * recording.values.size();
  const std::unique_ptr<char[]> buffer(new char[room]);
  char* out = put_text(put_text(buffer.get(), recording.texts[0]), recording.texts[1]);
  out = put_number(out, recording.channels);
  for (std::size_t i = 2; i < recording.texts.size(); ++i) out = put_text(out, recording.texts[i]);
  out = put_number(out, static_cast<int>(recording.times.size()));
  const float* value = recording.values.data();
  for (const std::string& time : recording.times) {
    out = put_text(out, time);
    for (int c = 0; c < recording.channels; ++c) {
      out = put_number(out, *value++, std::chars_format::fixed);
    }
  }
  QFile file(path);
  require(file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered));
  require(file.write(buffer.get(), out - buffer.get()) == out - buffer.get());
}
