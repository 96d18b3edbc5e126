// The way to a running office suite: a pipe of our own into the user's office process, or into one
// that is started for us.
#pragma once

#include <QString>

#include <com/sun/star/uno/XComponentContext.hpp>
#include <memory>

#include "data/automation.h"

// Talks to the office process for as long as it lives; then the pipe is taken away again.
class OfficeConnection {
 public:
  // Hands a pipe to the office process of this user that runs already, or else starts one. A
  // started one has no window, but shows every document that the user opens in it later. Throws
  // AutomationError when the suite is missing, does not start, or `give_up` says so.
  static std::shared_ptr<OfficeConnection> open(const Automation::GiveUp& give_up);

  OfficeConnection(const OfficeConnection&) = delete;
  OfficeConnection& operator=(const OfficeConnection&) = delete;
  ~OfficeConnection();

  // Whether the office process was started by this connection.
  bool started() const { return started_; }

  // An object of the office process by its service name. Throws a UNO exception.
  css::uno::Reference<css::uno::XInterface> create(const QString& service) const;

  // Ends the office process that this connection has started, unless the user has something open
  // in it by now. One that ran before stays.
  void quit();

 private:
  OfficeConnection() = default;
  void launch();
  void connect(const Automation::GiveUp& give_up);
  bool try_to_connect();
  bool office_alive() const;
  void withdraw_pipe() const;

  QString pipe_;
  qint64 process_ = 0;
  bool started_ = false;
  css::uno::Reference<css::uno::XComponentContext> local_;
  css::uno::Reference<css::uno::XInterface> bridge_;
  css::uno::Reference<css::uno::XComponentContext> office_;
};
