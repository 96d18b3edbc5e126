#include "device/request.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

#include "base/numbers.h"
#include "device/stored_block.h"

namespace {

constexpr int acknowledgement = 5;  // bytes

struct Command {
  std::uint8_t code;
  std::uint8_t second;  // the second header byte
};

Request make_request(Command command, std::span<const std::uint8_t> parameters, int answer) {
  QByteArray bytes(static_cast<qsizetype>(parameters.size()) + 3, '\0');
  bytes[0] = static_cast<char>(command.code);
  bytes[1] = static_cast<char>(command.second);
  std::copy(parameters.begin(), parameters.end(), bytes.begin() + 2);
  const auto last = bytes.size() - 1;
  bytes[last] = static_cast<char>(check_byte(bytes, static_cast<int>(last)));
  return {bytes, answer};
}

Request make_request(Command command, int answer) {
  return make_request(command, std::span<const std::uint8_t>(), answer);
}

Request make_request_for(int parameter, Command command, int answer) {
  const std::uint8_t byte = to_byte(parameter);
  return make_request(command, {&byte, 1}, answer);
}

}  // namespace

std::uint8_t check_byte(const QByteArray& bytes, int last) {
  std::uint8_t check = 0;
  for (int i = 0; i <= last; ++i) check ^= static_cast<std::uint8_t>(bytes[i]);
  return check;
}

Request status_request(int channels) {
  return make_request({0x00, 0x00}, 2 * channels + 6);
}

Request block_request(int block) {
  return make_request_for(block, {0x01, 0x01}, block_answer_size);
}

Request properties_request() {
  return make_request({0x02, 0x00}, 22);
}

Request texts_request() {
  return make_request({0x08, 0x00}, 68);
}

Request limits_request(int channel) {
  return make_request_for(channel, {0x0A, 0x01}, 8);
}

// The recorder expects 15 as the count of the 14 bytes.
Request write_pattern_request(const PatternFrame& pattern) {
  return make_request({0x05, 0x0F}, std::span(pattern).first(14), acknowledgement);
}

Request write_texts_request(const DescriptionFrame& texts) {
  return make_request({0x09, 0x40}, std::span(texts).first(64), acknowledgement);
}

Request write_limits_request(int channel, int up, int down) {
  const std::array<std::uint8_t, 6> parameters = {to_byte(channel),    0,
                                                  to_byte(down % 256), to_byte(down / 256),
                                                  to_byte(up % 256),   to_byte(up / 256)};
  return make_request({0x0B, 0x06}, parameters, acknowledgement);
}

Request record_request(bool start) {
  return make_request_for(start ? 1 : 0, {0x07, 0x01}, acknowledgement);
}
