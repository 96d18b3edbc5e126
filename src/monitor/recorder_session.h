// One use of the recorder by a handler of a child window: its turn with the recorder, and whether
// it must leave when it comes back from a wait.
#pragma once

#include "app/shell.h"
#include "base/child_window.h"
#include "device/packet.h"

class RecorderSession {
 public:
  RecorderSession(ChildWindow& window, Shell& shell, RecorderTask task)
      : kept_(window), shell_(shell), turn_(Packet::recorder().use, task) {}

  // The handler has the recorder; else it must leave it alone.
  bool granted() const { return static_cast<bool>(turn_); }
  // The window or the program has ended meanwhile: there is nobody to tell anything.
  bool closed() const { return kept_.unloaded() || shell_.shutting_down(); }
  // Another task has taken over inside an endless wait; one of the same kind.
  bool overtaken() const { return turn_.overtaken(); }
  bool repeated() const { return turn_.repeated(); }
  bool ended() const { return closed() || overtaken(); }

  // Sends a request, three times if need be. No value when nobody answers or the session has ended.
  std::optional<QByteArray> request(const std::function<int()>& build,
                                    const Retries& retries = {}) const {
    auto answer = Packet::request(build, retries, [this] { return ended(); });
    return ended() ? std::nullopt : answer;
  }

 private:
  ChildWindow::KeepAlive kept_;
  Shell& shell_;
  RecorderUse::Turn turn_;
};
