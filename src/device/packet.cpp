#include "device/packet.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "app/user.h"
#include "base/clock.h"
#include "base/errors.h"
#include "base/message_box.h"
#include "base/numbers.h"
#include "base/serial_port.h"
#include "device/answer.h"

namespace Packet {

QByteArray SendBuffer;
QByteArray ReceiveBuffer;
bool CommBusy = false;
std::array<std::array<std::uint8_t, log_slot_size>, log_slots> PacketLog{};
std::int16_t PacketCounter = 0;

namespace {

SerialPort* port = nullptr;
Clock* clock = nullptr;

// The recorder's address; there is no other.
constexpr char address = 0x00;
constexpr int late_answer_ms = 2000;
constexpr int answer_time_ms = 1000;
constexpr int pause_ms = 10;
constexpr int busy_pause_ms = 100;
constexpr int shortest_answer = 4;
constexpr int last_log_slot = 254;

// A request of command, second header byte, parameters and check byte.
void build(std::uint8_t command, std::uint8_t second, std::span<const std::uint8_t> parameters) {
  SendBuffer = QByteArray(static_cast<qsizetype>(parameters.size()) + 3, '\0');
  SendBuffer[0] = static_cast<char>(command);
  SendBuffer[1] = static_cast<char>(second);
  std::copy(parameters.begin(), parameters.end(), SendBuffer.begin() + 2);
  const auto check_offset = SendBuffer.size() - 1;
  SendBuffer[check_offset] = static_cast<char>(CheckByte(static_cast<int>(check_offset)));
}

void log_frame(const QByteArray& frame) {
  if (PacketCounter >= last_log_slot) PacketCounter = 0;
  const auto length = std::min<qsizetype>(frame.size(), log_slot_size);
  std::copy_n(frame.begin(), length, PacketLog[static_cast<std::size_t>(PacketCounter)].begin());
  ++PacketCounter;
}

void send() {
  port->set_settings(QStringLiteral("9600,M,8,1"));
  port->write(QByteArray(1, address));
  clock->sleep(pause_ms);
  port->set_settings(QStringLiteral("9600,S,8,1"));
  // What waits now is left over from an earlier request. It is dropped before the request goes
  // out, so that even an answer without any delay is not taken for it.
  if (port->bytes_waiting() > 0) ReceiveBuffer = port->read_all();
  port->write(SendBuffer);
}

// Waits for the answer. Just before midnight the deadline lies beyond the day's last second; once
// the clock has wrapped only the bytes (or the end of the program) end the wait.
void await(int expected_length) {
  const float deadline =
      clock->seconds_since_midnight() + static_cast<float>(answer_time_ms) / 1000.0F;
  while (!clock->stopped() && port->bytes_waiting() < expected_length) {
    const float left = deadline - clock->seconds_since_midnight();
    if (left <= 0) return;
    clock->wait(std::min(answer_time_ms, static_cast<int>(std::ceil(left * 1000.0F))));
  }
}

std::uint8_t answer_check(int expected_length) {
  std::uint8_t check = 0;
  for (int i = 1; i < expected_length; ++i) check ^= byte_at(ReceiveBuffer, i);
  return check;
}

// Whether the last exchange has seen no whole answer, so that one may still come.
bool answer_missing = false;

// Takes what has arrived and says whether it is the answer.
bool take_answer(int expected_length) {
  clock->sleep(pause_ms);
  const int count = port->bytes_waiting();
  answer_missing = count < expected_length;
  if (count < shortest_answer) return false;
  ReceiveBuffer = port->read_all();
  // A check over a part of an answer would pass once in 256 times, and readings would be wrong.
  if (ReceiveBuffer.size() < expected_length) return false;
  if (answer_check(expected_length) == 0) return true;
  if (count != expected_length + 1) return false;
  // One extra byte in front. It is taken on trust, without a second check: an answer that a
  // line's start-up glitch has pushed along is worth more than a repeated request.
  ReceiveBuffer.remove(0, 1);
  return true;
}

// Lets so many bytes of late answers come in, and drops them. A clock that is set back ends it.
void await_late_answers(int bytes) {
  const QByteArray answer = ReceiveBuffer;
  const QDateTime begin = clock->now();
  skip_on_error([&] {
    while (!clock->stopped() && port->bytes_waiting() < bytes) {
      const qint64 waited = begin.msecsTo(clock->now());
      if (waited < 0 || waited >= late_answer_ms) break;
      clock->wait(static_cast<int>(late_answer_ms - waited));
    }
    port->read_all();
  });
  ReceiveBuffer = answer;
}

}  // namespace

void attach(SerialPort& new_port, Clock& new_clock) {
  port = &new_port;
  clock = &new_clock;
  port->on_activity = [] { clock->wake(); };
}

std::uint8_t CheckByte(int n) {
  std::uint8_t check = 0;
  for (int i = 0; i <= n; ++i) check ^= static_cast<std::uint8_t>(SendBuffer[i]);
  return check;
}

int BuildStatusRequest() {
  const int channels = User::DeviceTable.channel_count(User::RecorderType);
  build(0x00, 0x00, {});
  return 2 * channels + 6;
}

int BuildReadBlock(int block) {
  const std::uint8_t parameter = to_byte(block);
  build(0x01, 0x01, {&parameter, 1});
  return 260;
}

int BuildReadProperties() {
  build(0x02, 0x00, {});
  return 22;
}

int BuildReadDescription() {
  build(0x08, 0x00, {});
  return 68;
}

int BuildReadLimits(int channel) {
  const std::uint8_t parameter = to_byte(channel);
  build(0x0A, 0x01, {&parameter, 1});
  return 8;
}

int BuildWriteProperties() {
  build(0x05, 0x0F, std::span(User::PatternBytes).first(14));
  return 5;
}

int BuildWriteDescription() {
  build(0x09, 0x40, std::span(User::DescriptionBytes).first(64));
  return 5;
}

int BuildWriteLimits(int channel, const QString& up_limit, const QString& down_limit,
                     MessageBox& messages) {
  const auto complain = [&](const QString& what) {
    messages.show(QStringLiteral("Channel No.%1%2").arg(QString::number(channel), what));
    return 0;
  };
  if (!is_number(up_limit)) return complain(QStringLiteral("Up Limit Error"));
  if (!is_number(down_limit)) return complain(QStringLiteral("Down Limit Error"));
  const auto raw = [](const QString& text) {
    const std::int32_t rounded = to_int32(to_double(text) * 256.0);
    return rounded < 0 ? rounded + 65536 : rounded;
  };
  const int up = raw(up_limit);
  const int down = raw(down_limit);
  const std::array<std::uint8_t, 6> parameters = {to_byte(channel),    0,
                                                  to_byte(down % 256), to_byte(down / 256),
                                                  to_byte(up % 256),   to_byte(up / 256)};
  build(0x0B, 0x06, parameters);
  return 5;
}

int BuildCommand07(int start) {
  const std::uint8_t parameter = to_byte(start);
  build(0x07, 0x01, {&parameter, 1});
  return 5;
}

bool Exchange(int expected_length) {
  if (CommBusy) clock->sleep(busy_pause_ms);
  CommBusy = true;
  answer_missing = false;
  log_frame(SendBuffer);
  bool answered = false;
  or_error_path(
      [&] {
        send();
        skip_on_error([&] { await(expected_length); });
        skip_on_error([&] { answered = take_answer(expected_length); });
        log_frame(ReceiveBuffer);
      },
      [] {});
  CommBusy = false;
  return answered;
}

bool request(const std::function<int()>& build_request, const Retries& retries,
             const std::function<bool()>& abandoned) {
  int missing_bytes = 0;
  for (int attempt = 1; attempt <= retries.tries; ++attempt) {
    bool answered = false;
    int length = 0;
    stop_at_first_failure([&] {
      length = build_request();
      answered = Exchange(length);
    });
    if (answered) {
      if (missing_bytes > 0 && retries.await_late_answers) await_late_answers(missing_bytes);
      return true;
    }
    if (answer_missing) missing_bytes += length;
    if (clock->stopped() || (abandoned && abandoned())) return false;
    if (attempt < retries.tries || retries.pause_after_last) clock->sleep(retries.pause);
  }
  return false;
}

}  // namespace Packet
