// The keys of the slider below a graph.
#pragma once

#include <QHash>
#include <QKeyEvent>
#include <QSlider>

// Handles a slider's key: Page Up moves back and Page Down on, as in the graph; a plain slider does
// the opposite. Moves from the view's start `from`, because the handle can be beyond the last
// view's start. Returns false for other events.
inline bool step_slider(QSlider& slider, const QEvent& event, int from, int page) {
  const QHash<int, int> steps = {{Qt::Key_Left, -1},      {Qt::Key_Down, -1},
                                 {Qt::Key_Right, 1},      {Qt::Key_Up, 1},
                                 {Qt::Key_PageUp, -page}, {Qt::Key_PageDown, page}};
  if (event.type() != QEvent::KeyPress) return false;
  const int key = static_cast<const QKeyEvent&>(event).key();
  if (!steps.contains(key)) return false;
  slider.setValue(from + steps.value(key));
  return true;
}
