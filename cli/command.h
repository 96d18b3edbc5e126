// A command of corvane-cli: its name, options and function.
#pragma once

#include <QString>
#include <QStringList>

#include <stdexcept>
#include <vector>

class Arguments;
class Interrupts;

namespace exit_status {
inline constexpr int fine = 0;
inline constexpr int usage = 1;
inline constexpr int no_recorder = 2;
inline constexpr int file = 3;
inline constexpr int out_of_range = 4;
}  // namespace exit_status

// Ends the command. Standard error gets the sentence, the caller of the program the exit status.
class Failure : public std::runtime_error {
 public:
  Failure(int status, const QString& sentence)
      : std::runtime_error(sentence.toStdString()), status_(status) {}
  int status() const { return status_; }
  QString sentence() const { return QString::fromUtf8(what()); }

 private:
  int status_;
};

struct Option {
  const char* name;   // "port", or "output" with a letter in front: "o|output"
  const char* value;  // the name of its value in the help; null for a switch
  const char* help;
};

struct Command {
  const char* name;
  const char* arguments;  // as the usage line shows them
  const char* summary;    // one line
  const char* details;    // paragraphs
  std::vector<Option> options;
  int files;  // number of arguments that are not options
  // Returns the exit status. Throws Failure, and RunTimeError for an unforeseen error.
  int (*run)(const Arguments& arguments, Interrupts& interrupts);
};

// All commands, in the order of the help.
const std::vector<Command>& commands();

// The options of every command that talks to a recorder.
inline constexpr Option port_option = {
    "port", "N", "Port COM1 to COM8 as 1 to 8, or auto: the first with a recorder (default auto)."};
inline constexpr Option type_option = {
    "type", "NAME", "Recorder type, a name of device.txt (default: the first one there)."};

Command ports_command();
Command check_command();
Command identify_command();
Command download_command();
Command watch_command();
Command export_command();
Command stats_command();
