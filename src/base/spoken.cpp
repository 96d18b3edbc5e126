#include "base/spoken.h"

#include <QAccessibleWidget>
#include <QComboBox>
#include <QLabel>

namespace {

// What a window last had said. A screen reader takes notice of a notification wherever the focus
// is, and Qt keeps the role that an object had when it was first asked for; so it is one of its
// own.
class Announcer final : public QWidget {
 public:
  explicit Announcer(QWidget* window) : QWidget(window) { setObjectName(name()); }
  static QString name() { return QStringLiteral("announcer"); }
  QString text;
};

class Announcement final : public QAccessibleWidget {
 public:
  explicit Announcement(Announcer& announcer)
      : QAccessibleWidget(&announcer, QAccessible::Notification) {}

  QString text(QAccessible::Text which) const override {
    if (which == QAccessible::Name) return static_cast<Announcer*>(object())->text;
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
  Announcer& announcer = announcer_of(*at.window());
  announcer.text = text;
  QAccessibleEvent event(&announcer, QAccessible::ObjectShow);
  QAccessible::updateAccessibility(&event);
}

void show_spoken(QLabel& label, const QString& text) {
  if (label.text() == text) return;
  label.setText(text);
  announce(label, text);
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
