// A port with recorders in software behind it, on a scripted clock.
#pragma once

#include <map>
#include <memory>
#include <optional>

#include "simulator/line.h"
#include "simulator/recorder.h"
#include "support/scripted.h"

// Answers arrive as the clock's waits and pauses pass. As on a real line parity tells an address
// from a request: the recorder hears one byte under "9600,M,8,1" and then, under "9600,S,8,1", one
// write; what is sent otherwise it does not hear. When the cable comes out the port has gone:
// it stays open and gives what had arrived, but takes no settings and no bytes, and once closed
// there is no port of that number any more.
class SimulatedPort final : public LoggedPort {
 public:
  explicit SimulatedPort(ScriptedClock& clock, bool paced = false) : clock_(clock), paced_(paced) {}

  // Ports that exist, with the recorder on each or, nullptr, nothing; the recorders are the test's.
  std::map<int, simulator::Recorder*> recorders;

  void open() override {
    LoggedPort::open();
    line_ = simulator::Line(paced_);
    planned_us_.reset();
    session_ = std::make_shared<int>(number_);
  }
  void close() override {
    LoggedPort::close();
    session_.reset();
  }
  void unplug() {
    recorders.erase(number_);
    line_.clear();
    gone_ = true;
    if (open_ && on_activity) on_activity();
  }

 private:
  bool exists() const override { return recorders.contains(number_); }
  void sent(const QByteArray& bytes) override {
    const auto found = recorders.find(number_);
    if (!hears(bytes) || found == recorders.end() || !found->second) return;
    for (const simulator::Answer& answer : found->second->receive(bytes, clock_.now())) {
      line_.send(answer, now_us());
    }
    plan();
  }
  bool hears(const QByteArray& bytes) {
    const bool was_addressed = std::exchange(addressed_, false);
    if (settings_ == u"9600,M,8,1") addressed_ = bytes.size() == 1;
    return addressed_ || (was_addressed && settings_ == u"9600,S,8,1");
  }
  void collect() override {
    const simulator::Line::Arrival arrival = line_.take(now_us());
    waiting_ += arrival.bytes;
    if (arrival.unplugged) unplug();
  }
  // Wakes the port's user when the next bytes arrive.
  void plan() {
    const auto due = line_.next_due();
    if (!due || (planned_us_ && *planned_us_ <= *due)) return;
    planned_us_ = due;
    const qint64 wait_us = std::max<qint64>(0, *due - now_us());
    const auto arrive = [this, session = std::weak_ptr<int>(session_)] {
      if (session.expired()) return;
      planned_us_.reset();
      collect();
      if (on_activity) on_activity();
      plan();
    };
    clock_.after(static_cast<int>((wait_us + 999) / 1000), arrive);
  }
  qint64 now_us() const { return clock_.elapsed() * 1000; }

  ScriptedClock& clock_;
  bool paced_;
  bool addressed_ = false;
  simulator::Line line_;
  std::optional<qint64> planned_us_;
  // What was planned on the clock outlives neither the port nor an opening of it.
  std::shared_ptr<int> session_;
};
