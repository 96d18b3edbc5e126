// A port with recorders in software behind it, on a scripted clock.
#pragma once

#include <QByteArray>
#include <QStringList>

#include <map>
#include <memory>

#include "simulator/line.h"
#include "simulator/recorder.h"
#include "support/scripted.h"

// Answers arrive as the clock's waits and pauses pass. As on a real line parity tells an address
// from a request: the recorder hears one byte under "9600,M,8,1" and then, under "9600,S,8,1", one
// write; what is sent otherwise it does not hear. When the cable comes out the port has gone:
// it stays open and gives what had arrived, but takes no settings and no bytes, and once closed
// there is no port of that number any more.
class SimulatedPort final : public SerialPort {
 public:
  explicit SimulatedPort(ScriptedClock& clock, bool paced = false) : clock_(clock), paced_(paced) {}

  // Ports that exist, with the recorder on each or, nullptr, nothing; the recorders are the test's.
  std::map<int, simulator::Recorder*> recorders;
  // What was done, one word each, as ScriptedPort writes it.
  QStringList log;

  void unplug();

  int port_number() const override { return number_; }
  void set_port_number(int number) override;
  void open() override;
  void close() override;
  bool is_open() const override { return open_; }
  void set_settings(const QString& settings) override;
  int bytes_waiting() override;
  QByteArray read_all() override;
  void write(const QByteArray& bytes) override;
  void set_rts(bool on) override { log << QStringLiteral("rts %1").arg(on); }
  void set_dtr(bool on) override { log << QStringLiteral("dtr %1").arg(on); }

 private:
  void require_open() const;
  void require_device() const;
  void collect();
  void plan();
  bool hears(const QByteArray& bytes);
  qint64 now_us() const { return clock_.elapsed() * 1000; }

  ScriptedClock& clock_;
  bool paced_;
  int number_ = 1;
  bool open_ = false;
  bool gone_ = false;
  QString settings_;
  bool addressed_ = false;
  QByteArray waiting_;
  simulator::Line line_;
  std::optional<qint64> planned_us_;
  // What was planned on the clock outlives neither the port nor an opening of it.
  std::shared_ptr<int> session_;
};
