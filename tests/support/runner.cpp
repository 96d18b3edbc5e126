#include "support/runner.h"

#include <QApplication>

#include <algorithm>

// Runs those classes that have all the test functions named as arguments ("name" or "name:row").
int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const QStringList arguments = application.arguments();
  int failures = test_classes.empty() ? 1 : 0;
  for (const auto make : test_classes) {
    const auto test = make();
    const auto unknown = [&test](const QString& argument) {
      const QByteArray slot = argument.section(u':', 0, 0).toLatin1() + "()";
      return !argument.startsWith(u'-') && test->metaObject()->indexOfSlot(slot) < 0;
    };
    if (std::any_of(arguments.begin() + 1, arguments.end(), unknown)) continue;
    failures += QTest::qExec(test.get(), arguments);
  }
  return failures == 0 ? 0 : 1;
}
