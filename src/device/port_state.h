// Finds what would keep a serial device from being opened. Does so without opening it, because that
// would raise the lines DTR and RTS of a port that nobody has chosen.
#pragma once

#include <QSet>
#include <QString>

// The devices below "/dev" that other processes of this user have open, except the pseudo-terminals
// that these processes have made.
QSet<QString> devices_open_elsewhere();

// The name `device`, such as "/dev/ttyUSB0" from serial_device(), and after it what is wrong: it is
// missing, not permitted, locked, or in use by another program, as one of `open_elsewhere` is. The
// name alone if nothing is known to be wrong. "no such port" for an empty name.
QString port_text(const QString& device, const QSet<QString>& open_elsewhere);
