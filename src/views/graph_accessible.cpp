#include "views/graph_accessible.h"

#include <QAccessibleWidget>

#include "views/graph_surface.h"

namespace {

class GraphAccessible final : public QAccessibleWidget,
                              public QAccessibleValueInterface,
                              public QAccessibleTextInterface {
 public:
  explicit GraphAccessible(GraphSurface& graph)
      : QAccessibleWidget(&graph, QAccessible::SpinBox), graph_(graph) {}

  QString text(QAccessible::Text which) const override {
    return which == QAccessible::Value ? shown() : QAccessibleWidget::text(which);
  }
  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }

  QVariant currentValue() const override { return graph_.value().sample; }
  QVariant minimumValue() const override { return 1; }
  QVariant maximumValue() const override { return graph_.value().samples; }
  QVariant minimumStepSize() const override { return 1; }
  void setCurrentValue(const QVariant& value) override {
    Q_EMIT graph_.sample_wanted(value.toInt() - 1);
  }

  // The text is read as a whole: it has no selection, no caret and no places of characters.
  QString text(int start, int end) const override { return shown().mid(start, end - start); }
  int characterCount() const override { return static_cast<int>(shown().size()); }
  int cursorPosition() const override { return 0; }
  void setCursorPosition(int) override {}
  int selectionCount() const override { return 0; }
  void selection(int, int* start, int* end) const override { *start = *end = 0; }
  void addSelection(int, int) override {}
  void removeSelection(int) override {}
  void setSelection(int, int, int) override {}
  QRect characterRect(int) const override { return {}; }
  int offsetAtPoint(const QPoint&) const override { return -1; }
  void scrollToSubstring(int, int) override {}
  QString attributes(int, int* start, int* end) const override {
    *start = 0;
    *end = characterCount();
    return {};
  }

 private:
  const QString& shown() const { return graph_.value().text; }

  GraphSurface& graph_;
};

QAccessibleInterface* interface_of(const QString&, QObject* object) {
  auto* graph = qobject_cast<GraphSurface*>(object);
  return graph ? new GraphAccessible(*graph) : nullptr;
}

}  // namespace

// Qt does not install the same function twice.
void make_graph_accessible() {
  QAccessible::installFactory(interface_of);
}
