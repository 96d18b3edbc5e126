#include "simulator/request_reader.h"

#include "simulator/frames.h"

namespace simulator {

namespace {

struct Command {
  unsigned char code, second_byte;
  int length;
};

// Command 05 counts 15 parameter bytes and carries 14, as the recorder expects.
constexpr Command commands[] = {
    {0x00, 0x00, 3}, {0x01, 0x01, 4},  {0x02, 0x00, 3}, {0x05, 0x0F, 17}, {0x07, 0x01, 4},
    {0x08, 0x00, 3}, {0x09, 0x40, 67}, {0x0A, 0x01, 4}, {0x0B, 0x06, 9},
};

const Command* find_command(unsigned char code) {
  for (const Command& command : commands) {
    if (command.code == code) return &command;
  }
  return nullptr;
}

// 0 while the frame is too short to tell. An unknown command's second byte counts its parameters.
int expected_length(const QByteArray& frame) {
  if (frame.isEmpty()) return 0;
  if (const int length = request_length(byte_at(frame, 0))) return length;
  return frame.size() < 2 ? 0 : byte_at(frame, 1) + 3;
}

bool is_valid(const QByteArray& frame) {
  const Command* command = find_command(byte_at(frame, 0));
  return command && byte_at(frame, 1) == command->second_byte && check_byte(frame) == 0;
}

}  // namespace

int request_length(unsigned char command) {
  const Command* found = find_command(command);
  return found ? found->length : 0;
}

std::vector<Request> RequestReader::read(const QByteArray& bytes, const QDateTime& now) {
  if (last_.isValid() && last_.msecsTo(now) > silence_ms) {
    addressed_ = false;
    frame_.clear();
  }
  last_ = now;

  std::vector<Request> requests;
  for (const char byte : bytes) {
    if (!addressed_) {
      addressed_ = byte == 0;
      continue;
    }
    frame_ += byte;
    if (frame_.size() != expected_length(frame_)) continue;
    requests.push_back({frame_, is_valid(frame_)});
    frame_.clear();
    addressed_ = false;
  }
  return requests;
}

}  // namespace simulator
