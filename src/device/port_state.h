// What would keep a serial device from being opened, found out without opening it: opening raises
// the lines DTR and RTS of a port that nobody has chosen.
#pragma once

#include <QString>

// `device` as serial_device() gives it, "/dev/ttyUSB0", and what is wrong with it: missing, not
// permitted, or in use by another program; nothing more than the device where nothing is known to
// be wrong. An empty name is "no such port".
QString port_text(const QString& device);
