// One use of the recorder by a handler of the Real-time Data window: its turn with the recorder,
// and whether it must leave when it comes back from a wait.
#pragma once

#include "app/shell.h"
#include "device/packet.h"
#include "monitor/frmrealtime.h"

class frmrealtime::Session {
 public:
  Session(frmrealtime& window, RecorderTask task)
      : running_(window), shell_(window.shell_), turn_(Packet::recorder().use, task) {}

  // The handler has the recorder; else it must leave it alone.
  bool granted() const { return static_cast<bool>(turn_); }
  // The window or the program has ended meanwhile, or another task has taken over.
  bool ended() const { return running_.unloaded() || shell_.shutting_down() || turn_.overtaken(); }

  // Sends a request, three times if need be. No value when nobody answers or the session has ended.
  std::optional<QByteArray> request(const std::function<int()>& build,
                                    const Retries& retries = {}) const {
    auto answer = Packet::request(build, retries, [this] { return ended(); });
    return ended() ? std::nullopt : answer;
  }

 private:
  Handler running_;
  Shell& shell_;
  RecorderUse::Turn turn_;
};
