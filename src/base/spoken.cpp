#include "base/spoken.h"

#include <QAccessibleWidget>
#include <QComboBox>
#include <QLabel>

namespace {

constexpr const char* said = "said";

// Only of notifications a screen reader takes notice when something else has the focus.
class SpokenLabel final : public QAccessibleWidget {
 public:
  explicit SpokenLabel(QLabel& label) : QAccessibleWidget(&label, QAccessible::Notification) {}

  QString text(QAccessible::Text which) const override {
    if (which == QAccessible::Name) return object()->property(said).toString();
    return QAccessibleWidget::text(which);
  }
};

QAccessibleInterface* interface_of(const QString&, QObject* object) {
  auto* label = qobject_cast<QLabel*>(object);
  return label && label->property(said).isValid() ? new SpokenLabel(*label) : nullptr;
}

}  // namespace

void announce(QLabel& at, const QString& text) {
  QAccessible::installFactory(interface_of);
  at.setProperty(said, text);
  QAccessibleEvent event(&at, QAccessible::ObjectShow);
  QAccessible::updateAccessibility(&event);
}

void show_spoken(QLabel& label, const QString& text) {
  if (label.text() == text) return;
  label.setText(text);
  announce(label, text);
}

// Qt tells a screen reader the name of a list and not what is chosen in it; so the choice is its
// description.
void speak_choice(QComboBox& list) {
  const auto describe = [&list] { list.setAccessibleDescription(list.currentText()); };
  QObject::connect(&list, &QComboBox::currentTextChanged, &list, describe);
  describe();
}
