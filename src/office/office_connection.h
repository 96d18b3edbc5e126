// A connection to a running office suite: our own pipe into the user's office process, or into an
// office process that we start.
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

// Holds the connection for its lifetime, then has the office process close the pipe. One thread
// uses it; another one may call activity() and abandon().
class OfficeConnection {
 public:
  OfficeConnection();
  OfficeConnection(const OfficeConnection&) = delete;
  OfficeConnection& operator=(const OfficeConnection&) = delete;
  ~OfficeConnection();

  // Opens a pipe into this user's running office process, or else starts one. A started process has
  // no window, but shows every document that the user opens in it later. Throws AutomationError
  // when the suite is missing or does not start, or when `give_up` returns true.
  void open(const Automation::GiveUp& give_up);

  // Whether the office process was started by this connection.
  bool started() const { return process_.started(); }
  // Whether the office process still answers.
  bool alive();

  // Creates an object in the office process by its service name. Throws a UNO exception.
  css::uno::Reference<css::uno::XInterface> create(const QString& service) const;

  // Asks the office process to end if this connection started it and the user has nothing open in
  // it. Waits up to 5 s for the end.
  void quit();

  // Writes `bytes` to the file `path` with write_whole_file(); abandon() stops it.
  void write_file(const QString& path, std::string_view bytes);

  // Records that the office process makes progress.
  void count_answer() { ++answers_; }
  // Empty while a file is written: a slow disk does not mean a stuck process.
  std::optional<AutomationActivity> activity() const;

  // Called from another thread when the office process is stuck. Makes the current call and all
  // later calls fail. Ends a process that was started here, unless the user has opened a window in
  // it since it last reported none, or it has already agreed to end.
  void abandon();

 private:
  void launch();
  void connect(const Automation::GiveUp& give_up);
  bool try_to_connect();
  void withdraw_pipe() const;
  // Throws a UNO exception, as does used_by_user().
  void watch_windows();
  // Asks whether the user has something open in the office process.
  bool used_by_user();

  QString pipe_;
  OfficeProcess process_;
  std::atomic<std::int64_t> answers_ = 0;
  std::atomic<bool> writing_ = false;
  std::stop_source abandoned_;
  // Counts the windows that the user opens. The office process reports each one at once, because a
  // stuck process cannot be asked. 0 after the process has answered that nothing is open.
  std::shared_ptr<std::atomic<int>> users_windows_ = std::make_shared<std::atomic<int>>(0);
  // The office process has agreed to end.
  std::atomic<bool> ending_ = false;
  css::uno::Reference<css::uno::XComponentContext> local_;
  mutable std::mutex bridge_mutex_;
  css::uno::Reference<css::uno::XInterface> bridge_;
  css::uno::Reference<css::uno::XComponentContext> office_;
  // Reports windows as long as it is held.
  css::uno::Reference<css::awt::XToolkit2> toolkit_;
};
