// The run-time errors of the program and the three policies that a handler can apply to them.
#pragma once

#include <QString>

#include <stdexcept>
#include <string>
#include <utility>

// An operation that failed. The text is for developers, and for users of corvane-cli; a window's
// handler gives a message of its own.
class RunTimeError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A text that is not a number, or a number too large for its type.
class ConversionError : public RunTimeError {
 public:
  using RunTimeError::RunTimeError;
};

// A file that cannot be opened, read or written, or that ends too early.
class FileError : public RunTimeError {
 public:
  using RunTimeError::RunTimeError;
};

// A serial port that is absent, closed, already open, or that fails.
class PortError : public RunTimeError {
 public:
  using RunTimeError::RunTimeError;
};

// An index outside the bounds of an array.
class BoundsError : public RunTimeError {
 public:
  using RunTimeError::RunTimeError;
};

// Policy "stop at the first failure": skips the rest of `body` without a message.
// Returns whether `body` ran to its end.
template <class Body>
bool stop_at_first_failure(Body&& body) {
  try {
    std::forward<Body>(body)();
    return true;
  } catch (const RunTimeError&) {
    return false;
  }
}

// Policy "go to the error path": the first failure in `body` runs `error_path`.
template <class Body, class ErrorPath>
void or_error_path(Body&& body, ErrorPath&& error_path) {
  if (!stop_at_first_failure(std::forward<Body>(body))) std::forward<ErrorPath>(error_path)();
}

// Policy "skip the statement and go on": for one statement whose failure must not stop the others.
template <class Statement>
void skip_on_error(Statement&& statement) {
  stop_at_first_failure(std::forward<Statement>(statement));
}
