#include "support/runner.h"

#include <QApplication>
#include <QTest>

#include <vector>

namespace {

std::vector<std::function<std::unique_ptr<QObject>()>>& makers() {
  static std::vector<std::function<std::unique_ptr<QObject>()>> list;
  return list;
}

}  // namespace

int add_test_object(std::function<std::unique_ptr<QObject>()> make) {
  makers().push_back(std::move(make));
  return static_cast<int>(makers().size());
}

// With test function names as arguments ("name" or "name:row") only the classes that have them run.
int main(int argc, char** argv) {
  QApplication application(argc, argv);
  int failures = makers().empty() ? 1 : 0;
  for (const auto& make : makers()) {
    const auto test = make();
    QStringList arguments = {application.arguments().constFirst()};
    bool named = false;
    bool wanted = false;
    for (const QString& argument : application.arguments().mid(1)) {
      const QByteArray slot = argument.section(u':', 0, 0).toLatin1() + "()";
      const bool has = test->metaObject()->indexOfSlot(slot.constData()) >= 0;
      named = named || !argument.startsWith(u'-');
      wanted = wanted || has;
      if (has || argument.startsWith(u'-')) arguments << argument;
    }
    if (!named || wanted) failures += QTest::qExec(test.get(), arguments);
  }
  return failures == 0 ? 0 : 1;
}
