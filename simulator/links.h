// Symbolic links to the simulator's device.
#pragma once

#include <QString>
#include <QStringList>

namespace simulator {

// Makes the links at construction and removes them at destruction. Replaces a link that is in the
// way (a simulator that was killed leaves one), but nothing else. At the end it leaves a link alone
// that somebody has put in place of ours.
class Links {
 public:
  // Throws std::runtime_error, and leaves no link behind, if a path is taken or a link fails.
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
