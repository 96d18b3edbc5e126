#include "base/spoken.h"

#include <QAccessibleWidget>
#include <QComboBox>
#include <QLabel>
#include <QTimer>

namespace {

// What a window last had said. A screen reader takes notice of a notification wherever the focus
// is, and Qt keeps the role that an object had when it was first asked for; so it is one of its
// own.
class Announcer final : public QWidget {
 public:
  explicit Announcer(QWidget* window) : QWidget(window) { setObjectName(name()); }
  static QString name() { return QStringLiteral("announcer"); }

  // A screen reader asks for the text some time after the event. What one handler has to say is
  // therefore said together, so that nothing takes the place of what came just before it.
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

// Qt tells a screen reader the name of a list and not what is chosen in it; so the choice is its
// description, before the key that leads to the list.
void speak_choice(QComboBox& list) {
  const QString key = list.accessibleDescription();
  const auto describe = [&list, key] {
    list.setAccessibleDescription(key.isEmpty() ? list.currentText()
                                                : list.currentText() + QStringLiteral(", ") + key);
  };
  QObject::connect(&list, &QComboBox::currentTextChanged, &list, describe);
  describe();
}
