// What is the matter with a port, in words.
#pragma once

#include <QString>

#include <optional>

struct PortState {
  enum class Kind { absent, forbidden, busy, broken, free };

  Kind kind = Kind::absent;
  QString device;  // empty: no device has this number
  // "does not exist", "may be opened", "is in use by minicom (process 123): it has the lock file
  // ...": what follows the port's name in a sentence.
  QString words;
  // What the person in front of it can do; empty where there is nothing to do.
  QString advice;
  // Mark and space parity: empty where it was not tried.
  QString parity;
};

// Looks at port 1..8. A port that another program uses is left alone; a free one is opened for a
// moment, which lifts its DTR and RTS lines.
PortState look_at_port(int number);
