#include "base/date_picker.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyleOptionComboBox>

#include <algorithm>

namespace {

const QString date_format = QStringLiteral("yyyy-MM-dd");

QString with_dashes(QString text) {
  return text.replace(u'/', u'-').replace(u'.', u'-');
}

// The date of a complete text; invalid for any other text.
QDate whole_date(const QString& text) {
  const QDate date = QDate::fromString(text, QStringLiteral("yyyy-M-d"));
  return date.isValid() ? date : QDate::fromString(text, QStringLiteral("yyyyMMdd"));
}

bool is_complete(const QString& text) {
  return text.size() == (text.contains(u'-') ? date_format.size() : 8);
}

// The typed date. Parts not typed come from `before`, with its day limited to the month's last.
QDate completed(const QString& typed, QDate before) {
  if (const QDate date = whole_date(typed); date.isValid()) return date;
  const QStringList parts = typed.split(u'-');
  const int year = parts[0].toInt();
  const int month = parts.value(1).isEmpty() ? before.month() : parts[1].toInt();
  const QDate first(year, month, 1);
  if (parts[0].size() != 4 || parts.size() > 2 || !first.isValid()) return before;
  return first.addDays(std::min(before.day(), first.daysInMonth()) - 1);
}

}  // namespace

DatePicker::DatePicker(QWidget* parent) : QDateTimeEdit(parent) {
  setDisplayFormat(date_format);
  setCalendarPopup(true);
}

QValidator::State DatePicker::validate(QString& text, int& position) const {
  const QValidator::State state = QDateTimeEdit::validate(text, position);
  const bool outside = state == QValidator::Invalid && whole_date(text).isValid();
  return outside ? QValidator::Intermediate : state;
}

bool DatePicker::type(const QKeyEvent& key) {
  if (key.key() == Qt::Key_Backspace && !typed_.isEmpty()) {
    typed_.chop(1);
    show_typed();
    return true;
  }
  const QString text = with_dashes(key.text());
  if (text.size() != 1 || (!text[0].isDigit() && text[0] != u'-')) return false;
  const bool all_selected = lineEdit()->selectedText() == lineEdit()->text();
  const bool begins = all_selected || currentSection() == QDateTimeEdit::YearSection;
  if (typed_.isEmpty() && (!begins || text[0] == u'-')) return false;
  if (typed_.size() < date_format.size()) typed_ += text;
  show_typed();
  if (is_complete(typed_) && whole_date(typed_).isValid()) accept_typed();
  return true;
}

// Blocks the line edit's signals, because QDateTimeEdit handles only complete dates.
void DatePicker::show_typed() {
  const QSignalBlocker blocker(lineEdit());
  lineEdit()->setText(typed_.isEmpty() ? textFromDateTime(dateTime()) : typed_);
}

void DatePicker::accept_typed() {
  const QDate shown = whole_date(lineEdit()->text());
  const bool typed = !typed_.isEmpty();
  const QDate date = typed ? completed(typed_, this->date()) : shown;
  typed_.clear();
  set_nearest(date.isValid() ? date : this->date());
  // So that the next Tab leaves the field.
  if (typed) setCurrentSection(QDateTimeEdit::DaySection);
}

void DatePicker::set_nearest(QDate date) {
  setDate(std::clamp(date, minimumDate(), maximumDate()));
  show_typed();
}

void DatePicker::keyPressEvent(QKeyEvent* event) {
  const bool alt_down = event->key() == Qt::Key_Down && event->modifiers() == Qt::AltModifier;
  if (event->key() == Qt::Key_F4 || alt_down) return open_calendar();
  if (event->matches(QKeySequence::Paste)) {
    const QDate date = whole_date(with_dashes(QGuiApplication::clipboard()->text().trimmed()));
    if (date.isValid()) set_nearest(date);
    return;
  }
  if (type(*event)) return;
  const bool leaves = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (leaves || !typed_.isEmpty()) accept_typed();
  QDateTimeEdit::keyPressEvent(event);
}

void DatePicker::mousePressEvent(QMouseEvent* event) {
  if (!typed_.isEmpty()) accept_typed();
  QDateTimeEdit::mousePressEvent(event);
}

void DatePicker::focusOutEvent(QFocusEvent* event) {
  accept_typed();
  QDateTimeEdit::focusOutEvent(event);
}

// Presses the calendar's arrow with a mouse event, because Qt has no function that opens it.
void DatePicker::open_calendar() {
  accept_typed();
  QStyleOptionComboBox arrow;
  arrow.initFrom(this);
  arrow.editable = true;
  arrow.subControls = QStyle::SC_All;
  const QPointF place =
      style()->subControlRect(QStyle::CC_ComboBox, &arrow, QStyle::SC_ComboBoxArrow, this).center();
  QMouseEvent press(QEvent::MouseButtonPress, place, mapToGlobal(place), Qt::LeftButton,
                    Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(this, &press);
}
