// The state of a port, in words.
#pragma once

#include <QString>

#include <optional>

struct PortState {
  enum class Kind { absent, forbidden, busy, broken, free };

  Kind kind = Kind::absent;
  QString device;  // empty when no device has this number
  // Follows the port's name in a sentence: "does not exist", "may be opened", "is in use by minicom
  // (process 123): it has the lock file ...".
  QString words;
  // What the user can do; empty when there is nothing to do.
  QString advice;
  // Whether the driver can do mark and space parity; empty when it was not tried.
  QString parity;
};

// Examines port 1..8. Leaves a port alone that another program uses. Opens a free one for a moment,
// which raises its DTR and RTS lines.
PortState look_at_port(int number);
