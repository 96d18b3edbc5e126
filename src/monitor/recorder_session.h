// One use of the recorder by a handler of a child window. Holds the handler's turn with the
// recorder and tells it after each wait whether it must return.
#pragma once

#include "app/shell.h"
#include "base/child_window.h"
#include "device/packet.h"

class RecorderSession {
 public:
  RecorderSession(ChildWindow& window, Shell& shell, RecorderTask task)
      : kept_(window), shell_(shell), turn_(Packet::recorder().use, task) {}

  // Whether the handler has the recorder. If not, it must send nothing.
  bool granted() const { return static_cast<bool>(turn_); }
  // Whether the window or the program has closed meanwhile, so nobody is left to see a message.
  bool closed() const { return kept_.unloaded() || shell_.shutting_down(); }
  // Whether another task has begun inside this one's endless wait, and whether of the same kind.
  bool overtaken() const { return turn_.overtaken(); }
  bool repeated() const { return turn_.repeated(); }
  bool ended() const { return closed() || overtaken(); }

  // Sends a request, up to three times. No value if nothing answers or the session has ended.
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
