// The middle of the main window: the child windows, the hint that shows while there are none, and
// dropped files.
#include <QDropEvent>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include "app/frmmdi.h"
#include "data/data_commands.h"
#include "monitor/frmrealtime.h"
#include "views/frmdisplay.h"

namespace {

// The path of the dragged data file; empty if anything else or more than one file is dragged.
QString dropped_data_file(const QMimeData& dragged) {
  const QList<QUrl> urls = dragged.urls();
  const QString path = urls.size() == 1 ? urls.constFirst().toLocalFile() : QString();
  return path.endsWith(u".qlx", Qt::CaseInsensitive) ? path : QString();
}

}  // namespace

void frmmdi::build_area() {
  area_ = new QMdiArea(this);
  area_->setObjectName(QStringLiteral("MDIArea"));
  area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  hint_ = new QLabel(QStringLiteral("Link to a recorder: Tool > Link (Ctrl+L)\n"
                                    "Open a data file: File > Open (Ctrl+O), or drop it here\n"
                                    "Read the manual: F1"),
                     area_->viewport());
  hint_->setObjectName(QStringLiteral("hint"));
  hint_->setTextFormat(Qt::PlainText);
  hint_->setAlignment(Qt::AlignCenter);
  hint_->setWordWrap(true);
  QFont font = hint_->font();
  font.setPointSizeF(font.pointSizeF() * 1.2);
  hint_->setFont(font);
  (new QVBoxLayout(area_->viewport()))->addWidget(hint_);
  setCentralWidget(area_);
}

void frmmdi::show_hint() {
  hint_->setVisible(area_->subWindowList().isEmpty());
}

// Colours the hint grey, but with enough contrast to be read.
void frmmdi::colour_hint() {
  const QColor ink = palette().color(QPalette::WindowText);
  const QColor paper = palette().color(QPalette::Window);
  const auto mix = [](int a, int b) { return (3 * a + 2 * b) / 5; };
  QPalette grey = hint_->palette();
  grey.setColor(QPalette::WindowText,
                QColor(mix(ink.red(), paper.red()), mix(ink.green(), paper.green()),
                       mix(ink.blue(), paper.blue())));
  hint_->setPalette(grey);
  area_->setBackground(paper);
}

void frmmdi::dragEnterEvent(QDragEnterEvent* event) {
  if (!dropped_data_file(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

// Opens the file later, so that a message does not block the window it was dragged from.
void frmmdi::dropEvent(QDropEvent* event) {
  const QString path = dropped_data_file(*event->mimeData());
  if (path.isEmpty()) return;
  event->acceptProposedAction();
  QMetaObject::invokeMethod(
      this, [this, path] { OpenDroppedFile(*this, path); }, Qt::QueuedConnection);
}

frmrealtime* frmmdi::loaded_realtime() {
  return realtime_loading_ ? nullptr : static_cast<frmrealtime*>(realtime_.data());
}

frmrealtime* frmmdi::loading_realtime() {
  return realtime_loading_ ? static_cast<frmrealtime*>(realtime_.data()) : nullptr;
}

// Loading reads the recorder; the window can be unloaded before that is done.
frmrealtime* frmmdi::realtime() {
  if (!realtime_) {
    auto* window = new frmrealtime(*this, this);
    realtime_ = window;
    connect(window, &ChildWindow::unloading, this, [this, window] { release_child(*window); });
    const ChildWindow::KeepAlive kept(*window);
    const QScopedValueRollback loading(realtime_loading_, true);
    window->Form_Load();
  }
  show_recorder_commands();
  return loaded_realtime();
}

// Shows a window that another command is still loading, too.
void frmmdi::show_realtime() {
  realtime();
  if (realtime_) show_child(*realtime_);
}

void frmmdi::unload_realtime() {
  if (realtime_) realtime_->unload();
}

frmdisplay* frmmdi::loaded_display() {
  return static_cast<frmdisplay*>(display_.data());
}

void frmmdi::show_display() {
  if (!display_) {
    auto* window = new frmdisplay(*this, this);
    display_ = window;
    connect(window, &ChildWindow::unloading, this, [this, window] { release_child(*window); });
    window->Form_Load();
  }
  show_child(*display_);
}

void frmmdi::unload_display() {
  if (display_) display_->unload();
}

// Puts the file's path into the tool tip of the Historical Data window's frame, if it has one.
void frmmdi::show_file_of(ChildWindow& display) {
  auto* frame = qobject_cast<QMdiSubWindow*>(display.parentWidget());
  if (frame) frame->setToolTip(Sts1[0]->toolTip());
}

void frmmdi::show_child(ChildWindow& child) {
  if (shutting_down_) return;
  auto* frame = qobject_cast<QMdiSubWindow*>(child.parentWidget());
  if (!frame) {
    frame = area_->addSubWindow(&child);
    frame->setWindowIcon(windowIcon());
    if (display_ == &child) show_file_of(child);
  }
  child.show();
  frame->showMaximized();
  area_->setActiveSubWindow(frame);
  show_hint();
}

void frmmdi::release_child(ChildWindow& child) {
  if (realtime_ == &child) {
    realtime_ = nullptr;
    realtime_loading_ = false;
    if (!shutting_down_) show_recorder_commands();
  }
  if (display_ == &child) display_ = nullptr;
  auto* frame = qobject_cast<QMdiSubWindow*>(child.parentWidget());
  if (!frame) return;
  const bool maximised = frame->isMaximized();
  frame->setWidget(nullptr);
  child.setParent(this);
  area_->removeSubWindow(frame);
  frame->deleteLater();
  show_hint();
  // The window that comes to the front fills the area as the unloaded one did.
  const auto left = area_->subWindowList(QMdiArea::ActivationHistoryOrder);
  if (maximised && !left.isEmpty() && !shutting_down_) left.constLast()->showMaximized();
}

void frmmdi::realtime_Click() {
  show_realtime();
  if (frmdisplay* window = loaded_display()) window->RedrawGraph();
}

void frmmdi::history_Click() {
  show_display();
  if (frmrealtime* window = loaded_realtime()) window->RedrawGraph();
}
