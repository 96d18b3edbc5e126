// Stand-ins for the outside world that follow a script and need no real time.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QStringList>

#include <functional>
#include <map>
#include <vector>

#include "app/clock.h"
#include "app/file_dialog.h"
#include "app/message_box.h"
#include "app/serial_port.h"

// Time that passes only in pauses and waits, and runs what was planned for a moment when it comes.
class ScriptedClock final : public Clock {
 public:
  explicit ScriptedClock(const QDateTime& start = QDateTime(QDate(2026, 3, 1), QTime(10, 0),
                                                            Qt::UTC))
      : now_(start) {}

  float seconds_since_midnight() const override;
  QDateTime now() const override { return now_; }
  void sleep(int milliseconds) override;
  void wait(int milliseconds) override;
  void wake() override { ++wakes_; }

  // Runs `action` when `milliseconds` from now have passed in waits (a pause only makes it late).
  void after(int milliseconds, std::function<void()> action);
  qint64 elapsed() const { return elapsed_; }
  // Every pause since the start, in milliseconds.
  std::vector<int> sleeps;

 private:
  void advance(qint64 milliseconds);

  QDateTime now_;
  qint64 elapsed_ = 0;
  int wakes_ = 0;
  std::multimap<qint64, std::function<void()>> planned_;
};

// A port whose answers a function supplies. Port numbers in `absent` cannot be opened.
class ScriptedPort final : public SerialPort {
 public:
  // Given every write; what it returns arrives at once. Later bytes come through deliver().
  std::function<QByteArray(const QByteArray&)> answer;
  std::vector<int> absent;
  // What was done, one word each: "number 1", "open", "close", "settings 9600,M,8,1",
  // "write 00", "rts 0", "dtr 0".
  QStringList log;

  void deliver(const QByteArray& bytes);

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

  int number_ = 1;
  bool open_ = false;
  QByteArray waiting_;
};

// Writes down every box as "caption: text" and answers questions in the order given (then No).
class ScriptedMessages final : public MessageBox {
 public:
  QStringList shown;
  std::vector<bool> answers;
  // Run while a box stands, before it closes.
  std::function<void()> meanwhile;

  void show(const QString& text, const QString& caption) override;
  bool ask(const QString& text, const QString& caption) override;
};

// Gives the names of `choices` one after the other, then cancels.
class ScriptedFileDialog final : public FileDialog {
 public:
  QStringList choices;
  int choose_filter = 1;
  // "title|filter" of each time it was shown.
  QStringList shown;

  void show(Purpose purpose) override;
};
