#include "base/spoken.h"

#include <QAccessibleWidget>
#include <QComboBox>
#include <QLabel>
#include <QTimer>

namespace {

// Holds the last announcement of a window. It needs an object of its own with the notification
// role: a screen reader notices notifications wherever the focus is, and Qt never changes the role
// that an object had at first.
class Announcer final : public QWidget {
 public:
  explicit Announcer(QWidget* window) : QWidget(window) { setObjectName(name()); }
  static QString name() { return QStringLiteral("announcer"); }

  // A screen reader asks for the text some time after the event, when a later text could have
  // replaced it. So the texts of one handler are announced together.
  void say(const QString& text) {
    to_say_ << text;
    if (to_say_.size() == 1) QTimer::singleShot(0, this, &Announcer::say_all);
  }
  const QString& said() const { return said_; }

 private:
  void say_all() {
    said_ = to_say_.join(QStringLiteral(". "));
    to_say_.clear();
    QAccessibleEvent event(this, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&event);
  }

  QStringList to_say_;
  QString said_;
};

class Announcement final : public QAccessibleWidget {
 public:
  explicit Announcement(Announcer& announcer)
      : QAccessibleWidget(&announcer, QAccessible::Notification) {}

  QString text(QAccessible::Text which) const override {
    if (which == QAccessible::Name) return static_cast<Announcer*>(object())->said();
    return QAccessibleWidget::text(which);
  }
};

QAccessibleInterface* interface_of(const QString&, QObject* object) {
  auto* announcer = dynamic_cast<Announcer*>(object);
  return announcer ? new Announcement(*announcer) : nullptr;
}

Announcer& announcer_of(QWidget& window) {
  auto* found = window.findChild<QWidget*>(Announcer::name(), Qt::FindDirectChildrenOnly);
  if (!found) {
    QAccessible::installFactory(interface_of);
    found = new Announcer(&window);
    found->hide();
  }
  return static_cast<Announcer&>(*found);
}

}  // namespace

void announce(const QWidget& at, const QString& text) {
  announcer_of(*at.window()).say(text);
}

void show_spoken(QLabel& label, const QString& text) {
  if (label.text() == text) return;
  label.setText(text);
  if (!text.isEmpty()) announce(label, text);
}

// Qt gives a screen reader the name of a list but not the chosen entry. So the list's description
// becomes the entry, followed by the key that leads to the list.
void speak_choice(QComboBox& list) {
  const QString key = list.accessibleDescription();
  const auto describe = [&list, key] {
    list.setAccessibleDescription(key.isEmpty() ? list.currentText()
                                                : list.currentText() + QStringLiteral(", ") + key);
  };
  QObject::connect(&list, &QComboBox::currentTextChanged, &list, describe);
  describe();
}
