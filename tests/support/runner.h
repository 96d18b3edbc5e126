// Collects the test classes of one folder and runs them one after the other.
#pragma once

#include <QObject>

#include <functional>
#include <memory>

int add_test_object(std::function<std::unique_ptr<QObject>()> make);

// At the end of a test file: `const int registered = register_test<TestNumbers>();`
template <class Test>
int register_test() {
  return add_test_object([] { return std::make_unique<Test>(); });
}
