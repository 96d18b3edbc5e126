// What every test file needs: collects the test classes of one folder and runs them one after the
// other; adds data rows; reads and writes files and bytes.
#pragma once

#include <QFile>
#include <QTest>

#include <initializer_list>
#include <memory>
#include <vector>

inline std::vector<std::unique_ptr<QObject> (*)()> test_classes;

// At the end of a test file: `const int registered = register_test<TestNumbers>();`
template <class Test>
int register_test() {
  test_classes.push_back([]() -> std::unique_ptr<QObject> { return std::make_unique<Test>(); });
  return 0;
}

// For a test's _data() function: adds structs with a member `name` as rows. The test reads each
// with QFETCH(Row, row).
template <class Row>
void add_rows(std::initializer_list<Row> rows) {
  QTest::addColumn<Row>("row");
  for (const Row& row : rows) QTest::newRow(row.name) << row;
}

// "00 1f" as bytes.
inline QByteArray hex(const QByteArray& digits) {
  return QByteArray::fromHex(digits);
}

inline QByteArray contents(const QString& name) {
  QFile file(name);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

inline bool make_file(const QString& name, const QByteArray& bytes = {}) {
  QFile file(name);
  return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}
