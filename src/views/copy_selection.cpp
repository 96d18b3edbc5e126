#include "views/copy_selection.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QGuiApplication>
#include <QItemSelectionModel>
#include <QShortcut>

#include "views/sheet_model.h"

void copy_selection_on_request(QAbstractItemView& view) {
  auto* shortcut = new QShortcut(QKeySequence::Copy, &view);
  shortcut->setContext(Qt::WidgetShortcut);
  QObject::connect(shortcut, &QShortcut::activated, &view, [&view] {
    const QItemSelectionModel* selected = view.selectionModel();
    if (!selected || !selected->hasSelection()) return;
    QGuiApplication::clipboard()->setText(selection_text(selected->selection()));
  });
}
