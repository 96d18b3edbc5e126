// Symbolic links to the simulator's device.
#pragma once

#include <QString>
#include <QStringList>

namespace simulator {

// Made at construction, removed at destruction. A link that stands in the way (left by a simulator
// that was killed) is replaced; anything else is left alone, and so is, at the end, a link that
// somebody has put in place of ours.
class Links {
 public:
  // Throws std::runtime_error, with no link left behind, when a path is taken or cannot be made.
  Links(const QStringList& paths, const QString& target);
  ~Links() { remove(); }
  Links(const Links&) = delete;
  Links& operator=(const Links&) = delete;

  void remove();

 private:
  QStringList paths_;
  QString target_;
};

}  // namespace simulator
