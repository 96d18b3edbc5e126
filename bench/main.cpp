#include <QApplication>

#include "suite.h"

// One function per file, which adds the comparisons of one part of the program to the table.
void data_file_benchmarks(Suite& suite);
void export_benchmarks(Suite& suite);
void startup_benchmarks(Suite& suite);
void download_benchmarks(Suite& suite);
void graph_benchmarks(Suite& suite);
void print_benchmarks(Suite& suite);
void live_benchmarks(Suite& suite);

// corvane-bench [--short] [WORD]: runs all benchmarks, or those with WORD in their names.
int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  QStringList words = application.arguments().mid(1);
  const bool short_run = words.removeAll(QStringLiteral("--short")) > 0;
  Suite suite(short_run, words.value(0).toStdString());
  suite.begin();
  data_file_benchmarks(suite);
  export_benchmarks(suite);
  startup_benchmarks(suite);
  download_benchmarks(suite);
  graph_benchmarks(suite);
  print_benchmarks(suite);
  live_benchmarks(suite);
  return suite.end();
}
