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

// A request is the address byte 00 and then a frame whose first two bytes tell its length. On a
// real line parity marks the address byte; here its place does: it comes first, bytes before it are
// not for us. A silence forgets what stands half received, so that a broken request costs no more
// than itself. It has to be shorter than a program's wait for an answer (1 s) and longer than what
// a busy computer puts between address byte and frame.
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
