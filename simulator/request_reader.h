// Finds the requests in the bytes that come over the line.
#pragma once

#include <QByteArray>
#include <QDateTime>

#include <vector>

namespace simulator {

// Length of the whole request with this command byte, or 0 when there is no such command.
int request_length(unsigned char command);

struct Request {
  QByteArray bytes;    // without the address byte
  bool valid = false;  // known command, right second byte, right check byte
};

// A request is the address byte 00, followed by a frame whose first two bytes give its length. On a
// real line parity marks the address byte; here its position does, and bytes before it are ignored.
// A silence discards a half-received request, so that a broken request costs no more than itself.
// The silence must be shorter than a program's wait for an answer (1 s) and longer than the gap
// that a busy computer leaves between address byte and frame.
class RequestReader {
 public:
  static constexpr int silence_ms = 500;

  std::vector<Request> read(const QByteArray& bytes, const QDateTime& now);

 private:
  bool addressed_ = false;
  QByteArray frame_;
  QDateTime last_;
};

}  // namespace simulator
