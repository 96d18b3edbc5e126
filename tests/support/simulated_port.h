// A port with simulated recorders behind it, on a scripted clock.
#pragma once

#include <map>
#include <utility>

#include "base/errors.h"
#include "base/serial_port.h"
#include "simulator/line.h"
#include "simulator/recorder.h"
#include "support/scripted.h"

// Answers arrive during the clock's waits and pauses. As on a real line, parity distinguishes an
// address from a request: the recorder hears one byte under "9600,M,8,1" and then one write under
// "9600,S,8,1", and nothing else. When the cable is unplugged, the port stays open and gives what
// has arrived, but takes no settings and no bytes; once closed, it no longer exists under its
// number.
class SimulatedPort final : public SerialPort {
 public:
  // `paced`: answers come at the pace of 9600 baud, not at once.
  explicit SimulatedPort(ScriptedClock& clock, bool paced = false) : clock_(clock), line_(paced) {
    clock.each_millisecond = [this] {
      const auto due = line_.next_due();
      if (due && *due <= now_us()) deliver({});
    };
  }

  // The ports that exist, each with its recorder or nullptr for none. The test owns the recorders.
  std::map<int, simulator::Recorder*> recorders = {{1, nullptr}};
  // One entry per call: "number 1", "open", "close", "settings 9600,M,8,1", "write 00", "rts 0",
  // "dtr 0".
  QStringList log;
  // Bytes that wait as soon as a request is sent, with or without a recorder.
  QByteArray answer;

  void unplug() {
    recorders.erase(number_);
    line_.clear();
    gone_ = true;
    if (open_ && on_activity) on_activity();
  }
  // Makes these bytes arrive, and what the recorder has sent by now.
  void deliver(const QByteArray& bytes) {
    waiting_ += bytes;
    collect();
    if (on_activity) on_activity();
  }

  int port_number() const override { return number_; }
  void set_port_number(int number) override {
    log << QStringLiteral("number %1").arg(number);
    require(!open_);
    number_ = number;
  }
  void open() override {
    log << QStringLiteral("open");
    require(!open_ && recorders.contains(number_));
    open_ = true;
    gone_ = false;
    waiting_.clear();
    line_.clear();
  }
  void close() override {
    log << QStringLiteral("close");
    open_ = false;
    line_.clear();
  }
  bool is_open() const override { return open_; }
  void set_settings(const QString& settings) override {
    require(open_ && !gone_);
    log << QStringLiteral("settings ") + settings;
    settings_ = settings;
  }
  int bytes_waiting() override {
    require(open_);
    collect();
    return std::min(input_buffer, static_cast<int>(waiting_.size()));
  }
  QByteArray read_all() override {
    const int count = bytes_waiting();
    const QByteArray bytes = waiting_.left(count);
    waiting_.remove(0, count);
    return bytes;
  }
  void write(const QByteArray& bytes) override {
    require(open_ && !gone_);
    log << QStringLiteral("write ") + QString::fromLatin1(bytes.toHex(' '));
    if (bytes.size() > 1) waiting_ += answer;
    simulator::Recorder* recorder = recorders.at(number_);
    if (!hears(bytes) || !recorder) return;
    for (const simulator::Answer& given : recorder->receive(bytes, clock_.now())) {
      line_.send(given, now_us());
    }
  }
  void set_rts(bool on) override { log << QStringLiteral("rts %1").arg(on); }
  void set_dtr(bool on) override { log << QStringLiteral("dtr %1").arg(on); }

 private:
  // The driver holds back what does not fit.
  static constexpr int input_buffer = 1024;

  static void require(bool state) {
    if (!state) throw PortError("not in this state");
  }
  bool hears(const QByteArray& bytes) {
    const bool was_addressed = std::exchange(addressed_, false);
    if (settings_ == u"9600,M,8,1") addressed_ = bytes.size() == 1;
    return addressed_ || (was_addressed && settings_ == u"9600,S,8,1");
  }
  void collect() {
    const simulator::Line::Arrival arrival = line_.take(now_us());
    waiting_ += arrival.bytes;
    if (arrival.unplugged) unplug();
  }
  qint64 now_us() const { return clock_.elapsed() * 1000; }

  ScriptedClock& clock_;
  simulator::Line line_;
  int number_ = 1;
  bool open_ = false;
  bool gone_ = false;  // the device is gone, while the port is open
  bool addressed_ = false;
  QString settings_;
  QByteArray waiting_;
};
