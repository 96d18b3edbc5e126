#include "support/scripted.h"

#include <QCoreApplication>

#include <algorithm>

#include "app/errors.h"

float ScriptedClock::seconds_since_midnight() const {
  return static_cast<float>(now_.time().msecsSinceStartOfDay()) / 1000.0F;
}

void ScriptedClock::advance(qint64 milliseconds) {
  elapsed_ += milliseconds;
  now_ = now_.addMSecs(milliseconds);
}

void ScriptedClock::sleep(int milliseconds) {
  if (stopped()) return;
  sleeps.push_back(milliseconds);
  advance(milliseconds);
}

void ScriptedClock::after(int milliseconds, std::function<void()> action) {
  planned_.emplace(elapsed_ + milliseconds, std::move(action));
}

void ScriptedClock::wait(int milliseconds) {
  const qint64 end = elapsed_ + std::max(1, milliseconds);
  const int wakes = wakes_;
  QCoreApplication::processEvents();
  while (!stopped() && wakes_ == wakes && elapsed_ < end) {
    const auto next = planned_.begin();
    if (next == planned_.end() || next->first > end) {
      advance(end - elapsed_);
      return;
    }
    const auto action = std::move(next->second);
    advance(std::max<qint64>(0, next->first - elapsed_));
    planned_.erase(next);
    action();
  }
}

void ScriptedPort::require_open() const {
  if (!open_) throw PortError("port closed");
}

void ScriptedPort::deliver(const QByteArray& bytes) {
  waiting_ += bytes;
  if (on_activity) on_activity();
}

void ScriptedPort::set_port_number(int number) {
  log << QStringLiteral("number %1").arg(number);
  if (open_) throw PortError("port open");
  number_ = number;
}

void ScriptedPort::open() {
  log << QStringLiteral("open");
  if (open_) throw PortError("port open");
  if (std::find(absent.begin(), absent.end(), number_) != absent.end()) {
    throw PortError("no such port");
  }
  open_ = true;
  waiting_.clear();
}

void ScriptedPort::close() {
  log << QStringLiteral("close");
  open_ = false;
}

void ScriptedPort::set_settings(const QString& settings) {
  require_open();
  log << QStringLiteral("settings ") + settings;
}

int ScriptedPort::bytes_waiting() {
  require_open();
  return static_cast<int>(waiting_.size());
}

QByteArray ScriptedPort::read_all() {
  require_open();
  return std::exchange(waiting_, {});
}

void ScriptedPort::write(const QByteArray& bytes) {
  require_open();
  log << QStringLiteral("write ") + QString::fromLatin1(bytes.toHex(' '));
  if (answer) waiting_ += answer(bytes);
}

void ScriptedMessages::show(const QString& text, const QString& caption) {
  shown << caption + QStringLiteral(": ") + text;
  if (meanwhile) meanwhile();
}

bool ScriptedMessages::ask(const QString& text, const QString& caption) {
  show(text, caption);
  if (answers.empty()) return false;
  const bool answer = answers.front();
  answers.erase(answers.begin());
  return answer;
}

void ScriptedFileDialog::show(Purpose) {
  shown << title + u'|' + filter;
  if (choices.isEmpty()) return;
  file_name = choices.takeFirst();
  filter_index = choose_filter;
}
