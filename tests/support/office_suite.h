// The office suite as a test uses it: with a user's profile of its own, so that nothing stays
// behind and nothing of the user's is touched.
#pragma once

#include <QStringList>
#include <QTemporaryDir>

// For as long as it lives every office process that this program starts uses the profile; at the
// end those that still run are ended.
class OfficeSuite {
 public:
  OfficeSuite();
  ~OfficeSuite();
  OfficeSuite(const OfficeSuite&) = delete;
  OfficeSuite& operator=(const OfficeSuite&) = delete;

  // Whether the plug-in was built and the suite that it was built for is there.
  static bool installed();

  // Whether it can open a file in a process that runs already; the suite made for servers cannot.
  static bool has_windows();

  // The ids of the office processes with this profile.
  QList<qint64> processes() const;
  // What this profile's processes have left in the folder for temporary files.
  QStringList left_files() const;

  // Runs the suite with these arguments until it ends; a running one takes them over.
  bool run(const QStringList& arguments) const;
  // Has it convert `file` by `filter`, such as "fods"; what it makes stands in `folder`.
  bool convert(const QString& file, const QString& filter, const QString& folder) const;
  // Opens `file` as a user would, in a process that goes on.
  void open(const QString& file) const;
  // Whether somebody has that file open.
  static bool is_open(const QString& file);

 private:
  QTemporaryDir profile_;
};
