#include "device/qt_serial_port.h"

#include <QDeadlineTimer>
#include <QThread>

#include "base/errors.h"
#include "base/program_folder.h"
#include "device/port_names.h"

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <cerrno>
#include <sys/ioctl.h>
#include <termios.h>
#endif

namespace {

// A write that the device has not accepted within this time has failed. The longest request, 67
// bytes, takes 0.08 s on the line.
constexpr int write_time_ms = 1000;
// The size of the input buffer in bytes. Answers are far shorter.
constexpr qint64 input_buffer = 1024;

#ifdef Q_OS_WIN
// Whether the driver still holds bytes to send.
bool driver_holds_bytes(HANDLE port) {
  DWORD errors = 0;
  COMSTAT state{};
  return ClearCommError(port, &errors, &state) && state.cbOutQue > 0;
}
void await_hardware(HANDLE) {}
#else
bool driver_holds_bytes(int port) {
  int queued = 0;
  return ioctl(port, TIOCOUTQ, &queued) == 0 && queued > 0;
}

// Waits for the hardware to send its last bytes. With an empty queue the driver limits this wait.
void await_hardware(int port) {
  int result = 0;
  do {
    result = tcdrain(port);
  } while (result != 0 && errno == EINTR);
  if (result != 0) throw PortError("the port does not send its bytes");
}
#endif

}  // namespace

QtSerialPort::QtSerialPort() {
  port_.setReadBufferSize(input_buffer);
  QObject::connect(&port_, &QSerialPort::readyRead, &port_, [this] { tell(); });
  QObject::connect(&port_, &QSerialPort::errorOccurred, &port_,
                   [this](QSerialPort::SerialPortError error) { note_error(error); });
}

void QtSerialPort::tell() {
  if (on_activity) on_activity();
}

// A device that has hung up stays readable for ever and would keep the event loop busy. So the port
// is closed, but only after its own handler has returned.
void QtSerialPort::note_error(QSerialPort::SerialPortError error) {
  const bool lost = error == QSerialPort::ReadError || error == QSerialPort::ResourceError;
  if (lost && port_.isOpen() && !gone_) {
    gone_ = true;
    QMetaObject::invokeMethod(
        &port_,
        [this] {
          if (gone_) port_.close();
          tell();
        },
        Qt::QueuedConnection);
  }
  tell();
}

void QtSerialPort::require_open() const {
  if (!port_.isOpen() || gone_) throw PortError("port closed");
}

void QtSerialPort::set_port_number(int number) {
  if (is_open()) throw PortError("port number of an open port");
  number_ = number;
}

void QtSerialPort::open() {
  if (is_open()) throw PortError("port already open");
  const QString device = serial_device(number_, program_folder(), system_serial_ports());
  if (device.isEmpty()) throw PortError("no such port");
  port_.setPortName(device);
  if (!port_.open(QIODevice::ReadWrite)) throw PortError("port cannot be opened");
}

void QtSerialPort::close() {
  gone_ = false;
  if (!port_.isOpen()) return;
  // Closing would wait for bytes that a hung adapter never sends, so they are dropped.
  port_.clear(QSerialPort::Output);
  port_.close();
}

// Waits until all bytes have been sent. Only then may the parity change, because the recorder tells
// an address from a request by it. The driver first takes the bytes and then sends them. A hung
// adapter takes or sends none; the bytes that it has not taken are then dropped.
void QtSerialPort::drain() {
  const QDeadlineTimer deadline(write_time_ms);
  while (port_.bytesToWrite() > 0 || driver_holds_bytes(port_.handle())) {
    if (deadline.hasExpired()) {
      port_.clear(QSerialPort::Output);
      throw PortError("the port does not send its bytes");
    }
    // On a stopped line this wait returns at once.
    const bool written = port_.bytesToWrite() > 0 &&
                         port_.waitForBytesWritten(static_cast<int>(deadline.remainingTime()));
    if (!written) QThread::msleep(1);
  }
  await_hardware(port_.handle());
}

void QtSerialPort::set_settings(const QString& text) {
  const LineSettings settings = line_settings(text);
  require_open();
  drain();
  const bool taken = port_.setBaudRate(settings.baud_rate) &&
                     port_.setDataBits(settings.data_bits) &&
                     port_.setStopBits(settings.stop_bits) && port_.setParity(settings.parity);
  if (!taken) throw PortError("the device refuses the settings");
}

int QtSerialPort::bytes_waiting() {
  require_open();
  // Reads what the driver holds without waiting for the event loop to notice it.
  port_.waitForReadyRead(0);
  return static_cast<int>(port_.bytesAvailable());
}

QByteArray QtSerialPort::read_all() {
  require_open();
  return port_.readAll();
}

void QtSerialPort::write(const QByteArray& bytes) {
  require_open();
  if (port_.write(bytes) != bytes.size()) throw PortError("the port does not take bytes");
  port_.flush();  // the event loop sends what the driver does not take at once
}

void QtSerialPort::set_rts(bool on) {
  if (port_.isOpen()) port_.setRequestToSend(on);
}

void QtSerialPort::set_dtr(bool on) {
  if (port_.isOpen()) port_.setDataTerminalReady(on);
}
