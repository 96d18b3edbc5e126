#include "views/copy_selection.h"

#include <QAbstractItemView>
#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QItemSelectionModel>
#include <QPainter>

#include "views/sheet_model.h"

namespace {

void copy_selection(const QAbstractItemView& view, Headings headings) {
  const QItemSelectionModel* selected = view.selectionModel();
  if (!selected || !selected->hasSelection()) return;
  QGuiApplication::clipboard()->setText(selection_text(selected->selection(), headings));
}

}  // namespace

void copy_selection_on_request(QAbstractItemView& view) {
  const auto add = [&view](const QString& caption, Headings headings) {
    auto* action = new QAction(caption, &view);
    action->setShortcutContext(Qt::WidgetShortcut);
    QObject::connect(action, &QAction::triggered, &view,
                     [&view, headings] { copy_selection(view, headings); });
    view.addAction(action);
    return action;
  };
  add(QStringLiteral("Copy"), Headings::left_out)->setShortcut(QKeySequence::Copy);
  add(QStringLiteral("Copy with headings"), Headings::first);
  view.setContextMenuPolicy(Qt::ActionsContextMenu);
}

void copy_picture(const QList<QWidget*>& parts) {
  QRect area;
  for (const QWidget* part : parts) {
    if (part->isVisible()) area |= part->geometry();
  }
  const QWidget& first = *parts.constFirst();
  const double ratio = first.devicePixelRatioF();
  QImage picture((QSizeF(area.size()) * ratio).toSize(), QImage::Format_RGB32);
  picture.setDevicePixelRatio(ratio);
  picture.fill(first.palette().color(QPalette::Window));
  QPainter painter(&picture);
  for (QWidget* part : parts) {
    if (!part->isVisible()) continue;
    part->render(&painter, part->pos() - area.topLeft(), {}, QWidget::DrawChildren);
  }
  painter.end();
  QGuiApplication::clipboard()->setImage(picture);
}
