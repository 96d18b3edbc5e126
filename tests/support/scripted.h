// Stand-ins for the outside world that follow a script and need no real time.
#pragma once

#include <QCoreApplication>
#include <QDateTime>
#include <QStringList>

#include <algorithm>
#include <functional>
#include <map>
#include <vector>

#include "app/clock.h"
#include "app/errors.h"
#include "app/file_dialog.h"
#include "app/message_box.h"
#include "app/serial_port.h"

// Time that passes only in pauses and waits, and runs what was planned for a moment when it comes.
class ScriptedClock final : public Clock {
 public:
  explicit ScriptedClock(const QDateTime& start = QDateTime(QDate(2026, 3, 1), QTime(10, 0),
                                                            Qt::UTC))
      : now_(start) {}

  float seconds_since_midnight() const override {
    return static_cast<float>(now_.time().msecsSinceStartOfDay()) / 1000.0F;
  }
  QDateTime now() const override { return now_; }
  void sleep(int milliseconds) override {
    if (stopped()) return;
    sleeps.push_back(milliseconds);
    advance(milliseconds);
  }
  void wait(int milliseconds) override;
  void wake() override { ++wakes_; }

  // Runs `action` when `milliseconds` from now have passed in waits (a pause only makes it late).
  void after(int milliseconds, std::function<void()> action) {
    planned_.emplace(elapsed_ + milliseconds, std::move(action));
  }
  qint64 elapsed() const { return elapsed_; }
  // Every pause since the start, in milliseconds.
  std::vector<int> sleeps;

 private:
  void advance(qint64 milliseconds) {
    elapsed_ += milliseconds;
    now_ = now_.addMSecs(milliseconds);
  }

  QDateTime now_;
  qint64 elapsed_ = 0;
  int wakes_ = 0;
  std::multimap<qint64, std::function<void()>> planned_;
};

inline void ScriptedClock::wait(int milliseconds) {
  const qint64 end = elapsed_ + std::max(1, milliseconds);
  const int wakes = wakes_;
  QCoreApplication::processEvents();
  while (!stopped() && wakes_ == wakes && elapsed_ < end) {
    const auto next = planned_.begin();
    if (next == planned_.end() || next->first > end) return advance(end - elapsed_);
    const auto action = std::move(next->second);
    advance(std::max<qint64>(0, next->first - elapsed_));
    planned_.erase(next);
    action();
  }
}

// What the ports of tests have in common: the rules of the serial port, and what was done.
class LoggedPort : public SerialPort {
 public:
  // One entry each: "number 1", "open", "close", "settings 9600,M,8,1", "write 00", "rts 0",
  // "dtr 0".
  QStringList log;

  int port_number() const override { return number_; }
  void set_port_number(int number) override {
    log << QStringLiteral("number %1").arg(number);
    require(!open_, "port open");
    number_ = number;
  }
  void open() override {
    log << QStringLiteral("open");
    require(!open_, "port open");
    require(exists(), "no such port");
    open_ = true;
    gone_ = false;
    waiting_.clear();
  }
  void close() override {
    log << QStringLiteral("close");
    open_ = false;
  }
  bool is_open() const override { return open_; }
  void set_settings(const QString& settings) override {
    require(open_ && !gone_, "port closed or device gone");
    log << QStringLiteral("settings ") + settings;
    settings_ = settings;
  }
  int bytes_waiting() override {
    require(open_, "port closed");
    collect();
    return static_cast<int>(waiting_.size());
  }
  QByteArray read_all() override {
    bytes_waiting();
    return std::exchange(waiting_, {});
  }
  void write(const QByteArray& bytes) override {
    require(open_ && !gone_, "port closed or device gone");
    log << QStringLiteral("write ") + QString::fromLatin1(bytes.toHex(' '));
    sent(bytes);
  }
  void set_rts(bool on) override { log << QStringLiteral("rts %1").arg(on); }
  void set_dtr(bool on) override { log << QStringLiteral("dtr %1").arg(on); }

 protected:
  virtual bool exists() const = 0;  // the port of the number that is set
  virtual void sent(const QByteArray& bytes) = 0;
  virtual void collect() {}  // what has arrived by now into `waiting_`

  int number_ = 1;
  bool open_ = false;
  bool gone_ = false;  // the device, while the port stands open
  QString settings_;
  QByteArray waiting_;

 private:
  static void require(bool state, const char* failure) {
    if (!state) throw PortError(failure);
  }
};

// A port whose answers a function supplies.
class ScriptedPort final : public LoggedPort {
 public:
  // Given every write; what it returns arrives at once. Later bytes come through deliver().
  std::function<QByteArray(const QByteArray&)> answer;

  void deliver(const QByteArray& bytes) {
    waiting_ += bytes;
    if (on_activity) on_activity();
  }

 private:
  bool exists() const override { return true; }
  void sent(const QByteArray& bytes) override {
    if (answer) waiting_ += answer(bytes);
  }
};

// Writes down every box as "caption: text" and answers questions in the order given (then No).
class ScriptedMessages final : public MessageBox {
 public:
  QStringList shown;
  std::vector<bool> answers;
  // Run while a box stands, before it closes.
  std::function<void()> meanwhile;

  void show(const QString& text, const QString& caption) override {
    shown << caption + QStringLiteral(": ") + text;
    if (meanwhile) meanwhile();
  }
  bool ask(const QString& text, const QString& caption) override {
    show(text, caption);
    const bool answer = !answers.empty() && answers.front();
    if (!answers.empty()) answers.erase(answers.begin());
    return answer;
  }
};

// Gives the names of `choices` one after the other, then cancels.
class ScriptedFileDialog final : public FileDialog {
 public:
  QStringList choices;
  int choose_filter = 1;
  // "title|filter" of each time it was shown.
  QStringList shown;

  void show(Purpose) override {
    shown << title + u'|' + filter;
    if (choices.isEmpty()) return;
    file_name = choices.takeFirst();
    filter_index = choose_filter;
  }
};
