#include "device/packet.h"

#include "app/user.h"
#include "base/errors.h"
#include "base/numbers.h"
#include "device/limits.h"
#include "device/request.h"

namespace Packet {

QByteArray SendBuffer;
QByteArray ReceiveBuffer;

namespace {

RecorderLink* link = nullptr;

int put(const Request& request) {
  SendBuffer = request.bytes;
  return request.answer_length;
}

}  // namespace

void attach(RecorderLink& new_link) {
  link = &new_link;
}

RecorderLink& recorder() {
  return *link;
}

bool CommBusy() {
  return link->busy();
}

FrameLog& PacketLog() {
  return link->log;
}

std::int16_t& PacketCounter() {
  return link->log.counter;
}

std::uint8_t CheckByte(int n) {
  return check_byte(SendBuffer, n);
}

int BuildStatusRequest() {
  return put(status_request(User::DeviceTable.channel_count(User::RecorderType)));
}

int BuildReadBlock(int block) {
  return put(block_request(block));
}

int BuildReadProperties() {
  return put(properties_request());
}

int BuildReadDescription() {
  return put(texts_request());
}

int BuildReadLimits(int channel) {
  return put(limits_request(channel));
}

int BuildWriteProperties() {
  return put(write_pattern_request(User::PatternBytes));
}

int BuildWriteDescription() {
  return put(write_texts_request(User::DescriptionBytes));
}

int BuildWriteLimits(int channel, const QString& up_limit, const QString& down_limit) {
  if (!is_number(up_limit) || !is_number(down_limit)) return 0;
  return put(write_limits_request(channel, encode_limit(up_limit), encode_limit(down_limit)));
}

int BuildCommand07(int start) {
  return put(record_request(start != 0));
}

bool Exchange(int expected_length) {
  const bool answered = link->exchange({SendBuffer, expected_length}).has_value();
  ReceiveBuffer = link->received();
  return answered;
}

std::optional<QByteArray> request(const Builder& build, const Retries& retries,
                                  const Abandoned& abandoned) {
  const auto build_request = [&] {
    const int length = build();
    return Request{SendBuffer, length};
  };
  std::optional<QByteArray> answer = link->ask(build_request, retries, abandoned);
  ReceiveBuffer = link->received();
  return answer;
}

}  // namespace Packet
