// Stand-ins for the outside world that follow a script and need no real time.
#pragma once

#include <QCoreApplication>
#include <QDateTime>
#include <QGuiApplication>
#include <QStringList>

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "base/clock.h"
#include "base/file_dialog.h"
#include "base/message_box.h"
#include "print/qt_printer.h"

// A clock whose time passes only in pauses and, millisecond by millisecond, in waits.
class ScriptedClock final : public Clock {
 public:
  explicit ScriptedClock(QTime start = {10, 0}) : now_({2026, 3, 1}, start, Qt::UTC) {}

  float seconds_since_midnight() const override {
    return static_cast<float>(now_.time().msecsSinceStartOfDay()) / 1000.0F;
  }
  QDateTime now() const override { return now_; }
  qint64 steady_ms() const override { return elapsed_; }
  void sleep(int milliseconds) override {
    if (stopped()) return;
    sleeps.push_back(milliseconds);
    advance(milliseconds);
    if (each_pause) each_pause();
  }
  void wait(int milliseconds) override {
    const qint64 end = elapsed_ + std::max(1, milliseconds);
    const int wakes = wakes_;
    QCoreApplication::processEvents();
    while (!stopped() && wakes_ == wakes) {
      if (!planned_.empty() && planned_.begin()->first <= elapsed_) {
        planned_.extract(planned_.begin()).mapped()();
      } else if (elapsed_ < end) {
        advance(1);
        if (each_millisecond) each_millisecond();
      } else {
        return;
      }
    }
  }
  void wake() override { ++wakes_; }

  // Runs `action` in a wait, `milliseconds` from now; a pause can only delay it.
  void after(int milliseconds, std::function<void()> action) {
    planned_.emplace(elapsed_ + milliseconds, std::move(action));
  }
  // Sets the clock, as a user might; no time passes.
  void set(const QDateTime& now) { now_ = now; }
  qint64 elapsed() const { return elapsed_; }
  // Every pause since the start, in milliseconds.
  std::vector<int> sleeps;
  // What happens in the world after each pause, and in each millisecond of a wait.
  std::function<void()> each_pause;
  std::function<void()> each_millisecond;

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

// Records every box as "caption: text" and answers questions in the order given (then No).
class ScriptedMessages final : public MessageBox {
 public:
  QStringList shown;
  QList<bool> answers;
  // Runs while a box is open, before it closes.
  std::function<void()> meanwhile;

  void show(const QString& text, const QString& caption) override {
    shown << caption + QStringLiteral(": ") + text;
    if (meanwhile) meanwhile();
  }
  bool ask(const QString& text, const QString& caption) override {
    show(text, caption);
    return !answers.isEmpty() && answers.takeFirst();
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

// Prints as the real printer does (where there is none, a test calls print_to_file() first), logs
// the calls, and fails where a test wants it to.
class ScriptedPrinter final : public QtPrinter {
 public:
  // "none" for no printer at all, or the call that fails: "start", "page", "end".
  QString fault;
  // The orientation chosen in the set-up dialog; empty if the dialog is cancelled.
  std::optional<Orientation> chosen;
  // What was done: "a4", "setup", "start TITLE", "page", "end", "abort".
  QStringList log;

  void set_paper_a4() override {
    carry_out(QStringLiteral("a4"));
    QtPrinter::set_paper_a4();
  }
  void prefer_paper_a4() override {
    carry_out(QStringLiteral("a4"));
    QtPrinter::prefer_paper_a4();
  }
  void show_setup(QWidget*) override {
    carry_out(QStringLiteral("setup"));
    set_orientation(chosen ? *chosen : throw PrinterError("cancelled"));
  }
  QPainter& start_document(const QString& title) override {
    const bool hourglass = QGuiApplication::overrideCursor();
    carry_out((hourglass ? "start " : "start without hourglass ") + title);
    return QtPrinter::start_document(title);
  }
  void new_page() override {
    carry_out(QStringLiteral("page"));
    QtPrinter::new_page();
  }
  void end_document() override {
    carry_out(QStringLiteral("end"));
    QtPrinter::end_document();
  }
  void abort_document() override {
    log << QStringLiteral("abort");
    QtPrinter::abort_document();
  }

 private:
  void carry_out(const QString& call) {
    const bool fails = fault == u"none" || (!fault.isEmpty() && call.startsWith(fault));
    if (fails) throw PrinterError("scripted fault");
    log << call;
  }
};
