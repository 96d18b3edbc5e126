// Who uses the recorder now, and whether another may. The answers on the line do not say whom they
// are for, so the commands and the polling take turns; everyone who wants the recorder asks here.
#pragma once

#include <QObject>
#include <QTimer>

#include <optional>
#include <vector>

class Clock;

enum class RecorderTask { link, refresh, set_up, download, poll };

// A poll keeps out other polls only; every other task keeps out everything. The exception is a task
// that has waited for its answer longer than three tries can last, as over midnight, when its wait
// ends only with the bytes: it keeps out nobody, and the next one starts inside its wait.
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
    // Another command has begun inside this task's endless wait. The task must leave: what it
    // wanted to do the other does now.
    bool overtaken() const { return overtaken_; }

   private:
    friend class RecorderUse;
    RecorderUse& use_;
    RecorderTask task_;
    bool granted_;
    bool overtaken_ = false;
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

  // The longest that a request can rightly wait, in milliseconds.
  static constexpr int longest_wait_ms = 3600;

 Q_SIGNALS:
  // What free_for() says may have changed.
  void changed();

 private:
  bool outlasted(const Turn& turn) const;

  const Clock& clock_;
  QTimer overdue_;
  std::vector<Turn*> turns_;  // the innermost last
};
