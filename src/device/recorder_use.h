// Who uses the recorder now, and whether another may. The answers on the line do not say whom they
// are for, so the commands and the polling take turns; everyone who wants the recorder asks here.
#pragma once

#include <QObject>

#include <optional>
#include <vector>

class Clock;

enum class RecorderTask { link, refresh, set_up, download, poll };

// A poll keeps out other polls only; every other task keeps out everything. The exception is a task
// that has waited for one answer longer than three tries can last, as over midnight, when the wait
// ends only with the bytes: polls and commands start inside its wait. A refresh does not, since it
// has time until the recorder is free.
class RecorderUse : public QObject {
  Q_OBJECT

 public:
  // The clock outlives the object.
  explicit RecorderUse(const Clock& clock);

  bool free_for(RecorderTask task) const;

  // Holds the recorder for a task while it lives. Tasks nest as the program's waits do: one that
  // begins inside another's wait ends before it. Ask with `if (!turn)`: a task that gets no turn
  // must leave the recorder alone.
  class Turn {
   public:
    Turn(RecorderUse& use, RecorderTask task);
    ~Turn();
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    explicit operator bool() const { return granted_; }
    // Another command has begun inside this task's endless wait. The task keeps out nobody any more
    // and must leave; when the other is of the same kind, it does what this one wanted.
    bool overtaken() const { return overtaken_by_.has_value(); }
    bool repeated() const { return overtaken_by_ == task_; }

   private:
    friend class RecorderUse;
    RecorderUse& use_;
    RecorderTask task_;
    bool granted_;
    std::optional<RecorderTask> overtaken_by_;
    std::optional<qint64> waiting_since_;  // of the clock's steady milliseconds
  };

  // Marks that the running task waits for an answer, from now on and while it lives.
  class Wait {
   public:
    explicit Wait(RecorderUse& use);
    ~Wait();
    Wait(const Wait&) = delete;
    Wait& operator=(const Wait&) = delete;

   private:
    RecorderUse& use_;
    Turn* turn_;  // null where nobody has taken a turn
  };

  // What three tries can last, in milliseconds.
  static constexpr int longest_wait_ms = 3600;

  // To be called now and then during a wait: emits changed() when the wait gets too long.
  void notice_long_wait();

 Q_SIGNALS:
  // What free_for() says may have changed.
  void changed();

 private:
  bool outlasted(const Turn& turn) const;

  const Clock& clock_;
  std::vector<Turn*> turns_;  // the innermost last
  bool long_wait_ = false;    // has been told
};
