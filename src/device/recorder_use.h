// Knows who uses the recorder now, and whether another task may. An answer does not say whom it is
// for, so the commands and the polling take turns; everyone who wants the recorder asks here.
#pragma once

#include <QObject>

#include <optional>
#include <vector>

class Clock;

enum class RecorderTask { link, refresh, set_up, download, poll };

// A poll keeps out only other polls; every other task keeps out everything. The exception is a task
// that has waited for one answer longer than three tries can last, for example over midnight, when
// only bytes end the wait. Polls and commands may start inside such a wait. A refresh may not,
// because it can wait until the recorder is free.
class RecorderUse : public QObject {
  Q_OBJECT

 public:
  // The clock must outlive the object.
  explicit RecorderUse(const Clock& clock);

  bool free_for(RecorderTask task) const;

  // Holds the recorder for a task while it lives. Tasks nest as the program's waits do: one that
  // begins inside another's wait ends before it. Check it with `if (!turn)`: a task that gets no
  // turn must leave the recorder alone.
  class Turn {
   public:
    Turn(RecorderUse& use, RecorderTask task);
    ~Turn();
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    explicit operator bool() const { return granted_; }
    // Whether another command has begun inside this task's endless wait. This task then keeps out
    // nobody and must leave. If repeated(), the other is of the same kind and does its work.
    bool overtaken() const { return overtaken_by_.has_value(); }
    bool repeated() const { return overtaken_by_ == task_; }

   private:
    friend class RecorderUse;
    RecorderUse& use_;
    RecorderTask task_;
    bool granted_;
    std::optional<RecorderTask> overtaken_by_;
    std::optional<qint64> waiting_since_;  // as Clock::steady_ms() gives it
  };

  // Marks the innermost task as waiting for an answer, for as long as the object lives.
  class Wait {
   public:
    explicit Wait(RecorderUse& use);
    ~Wait();
    Wait(const Wait&) = delete;
    Wait& operator=(const Wait&) = delete;

   private:
    RecorderUse& use_;
    Turn* turn_;  // null if nobody has taken a turn
  };

  // The longest that three tries can last, in milliseconds.
  static constexpr int longest_wait_ms = 3600;

  // To be called now and then during a wait. Emits changed() when the wait becomes too long.
  void notice_long_wait();

 Q_SIGNALS:
  // The result of free_for() may have changed.
  void changed();

 private:
  bool outlasted(const Turn& turn) const;

  const Clock& clock_;
  std::vector<Turn*> turns_;  // the innermost last
  bool long_wait_ = false;    // as changed() last announced
};
