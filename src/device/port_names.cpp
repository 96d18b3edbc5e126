#include "device/port_names.h"

#include <QCollator>
#include <QFileInfo>
#include <QSerialPortInfo>

#include <algorithm>
#include <array>

#include "base/errors.h"

QString serial_device(int number, const QString& folder, const QStringList& system_ports) {
#ifdef Q_OS_WIN
  Q_UNUSED(folder)
  Q_UNUSED(system_ports)
  return QStringLiteral("COM%1").arg(number);
#else
  const QFileInfo link(QStringLiteral("%1/com%2").arg(folder).arg(number));
  if (link.isSymLink()) {
    const QString device = link.canonicalFilePath();
    return device.isEmpty() ? link.symLinkTarget() : device;
  }
  QStringList sorted = system_ports;
  QCollator natural{QLocale(QLocale::English)};  // the C locale knows no numeric order
  natural.setNumericMode(true);
  std::stable_sort(sorted.begin(), sorted.end(),
                   [&](const QString& a, const QString& b) { return natural.compare(a, b) < 0; });
  return sorted.value(number - 1);
#endif
}

QStringList system_serial_ports() {
  QStringList names;
  const auto ports = QSerialPortInfo::availablePorts();
  for (const QSerialPortInfo& port : ports) names << port.systemLocation();
  return names;
}

LineSettings line_settings(const QString& text) {
  const QStringList parts = text.split(u',');
  if (parts.size() != 4) throw PortError("malformed settings");
  LineSettings settings;
  bool number = false;
  settings.baud_rate = parts[0].trimmed().toInt(&number);
  const QString parity = parts[1].trimmed().toUpper();
  static const QString letters = QStringLiteral("NEOMS");
  static constexpr std::array parities = {QSerialPort::NoParity, QSerialPort::EvenParity,
                                          QSerialPort::OddParity, QSerialPort::MarkParity,
                                          QSerialPort::SpaceParity};
  const auto which = parity.size() == 1 ? letters.indexOf(parity) : -1;
  const int data_bits = parts[2].trimmed().toInt();
  const QString stop_bits = parts[3].trimmed();
  if (!number || settings.baud_rate <= 0 || which < 0 || data_bits < 5 || data_bits > 8) {
    throw PortError("malformed settings");
  }
  settings.parity = parities[static_cast<std::size_t>(which)];
  settings.data_bits = static_cast<QSerialPort::DataBits>(data_bits);
  if (stop_bits == QStringLiteral("1")) {
    settings.stop_bits = QSerialPort::OneStop;
  } else if (stop_bits == QStringLiteral("1.5")) {
    settings.stop_bits = QSerialPort::OneAndHalfStop;
  } else if (stop_bits == QStringLiteral("2")) {
    settings.stop_bits = QSerialPort::TwoStop;
  } else {
    throw PortError("malformed settings");
  }
  return settings;
}
