// The way to a running office suite: a pipe of our own into the user's office process, or into one
// that is started for us.
#pragma once

#include <QString>

#include <atomic>
#include <com/sun/star/awt/XToolkit2.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string_view>

#include "data/automation.h"
#include "office/office_process.h"

// Talks to the office process for as long as it lives; then the pipe is taken away again. One
// thread works with it; another one may ask for its activity and abandon it.
class OfficeConnection {
 public:
  OfficeConnection();
  OfficeConnection(const OfficeConnection&) = delete;
  OfficeConnection& operator=(const OfficeConnection&) = delete;
  ~OfficeConnection();

  // Hands a pipe to the office process of this user that runs already, or else starts one. A
  // started one has no window, but shows every document that the user opens in it later. Throws
  // AutomationError when the suite is missing, does not start, or `give_up` says so.
  void open(const Automation::GiveUp& give_up);

  // Whether the office process was started by this connection.
  bool started() const { return process_.started(); }
  // Whether it still answers.
  bool alive();

  // An object of the office process by its service name. Throws a UNO exception.
  css::uno::Reference<css::uno::XInterface> create(const QString& service) const;

  // Ends the office process that this connection has started, unless the user has something open
  // in it by now. One that ran before stays.
  void quit();

  // Makes `bytes` the file `path`, as write_whole_file() does; abandon() stops it.
  void write_file(const QString& path, std::string_view bytes);

  // A sign that the office process got on with what it was asked.
  void count_answer() { ++answers_; }
  // Nothing while a file is written: a slow disk is no sign of a stuck process.
  std::optional<AutomationActivity> activity() const;

  // From another thread, for an office process that does not get on: the call under way fails, and
  // so does every later one. A process that was started here is ended, unless the user has opened
  // a window in it since it last said that there was none, or it has agreed to end by itself.
  void abandon();

 private:
  void launch();
  void connect(const Automation::GiveUp& give_up);
  bool try_to_connect();
  void withdraw_pipe() const;
  // Throws a UNO exception, as does the next.
  void watch_windows();
  // Asks whether the user has something open in the office process.
  bool used_by_user();

  QString pipe_;
  OfficeProcess process_;
  std::atomic<std::int64_t> answers_ = 0;
  std::atomic<bool> writing_ = false;
  std::stop_source abandoned_;
  // Windows that the user has opened in it, as it said itself at that moment, because it cannot be
  // asked any more when it is stuck. 0 when it has answered since that nothing is open.
  std::shared_ptr<std::atomic<int>> users_windows_ = std::make_shared<std::atomic<int>>(0);
  // It has agreed to end.
  std::atomic<bool> ending_ = false;
  css::uno::Reference<css::uno::XComponentContext> local_;
  mutable std::mutex bridge_mutex_;
  css::uno::Reference<css::uno::XInterface> bridge_;
  css::uno::Reference<css::uno::XComponentContext> office_;
  // Tells of windows as long as it is held.
  css::uno::Reference<css::awt::XToolkit2> toolkit_;
};
