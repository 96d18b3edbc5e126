// The command line of corvane-simulator.
#pragma once

#include <QString>
#include <QStringList>

#include <stdexcept>

#include "simulator/recorder.h"

class QCommandLineParser;

namespace simulator {

struct Options {
  Settings recorder;
  QStringList links;  // symbolic links to make to the device
  bool paced = true;
  QString log;  // file for the frames; "-" is the standard output, empty none
};

// A command line that makes no sense; what() says in a sentence why.
class OptionError : public std::runtime_error {
 public:
  explicit OptionError(const QString& text) : std::runtime_error(text.toStdString()) {}
};

// Adds all options, with their help, to a parser.
void describe_options(QCommandLineParser& parser);

// The options that a parser has found. Throws OptionError for a value outside its range or form,
// for channels that the recorder lacks, and for words that belong to no option.
Options options_from(const QCommandLineParser& parser);

}  // namespace simulator
