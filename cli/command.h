// What a command of corvane-cli is.
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

// Ends the command. The sentence goes to standard error, the status to whoever started it.
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
  const char* arguments;  // as the usage shows them
  const char* summary;    // a line
  const char* details;    // paragraphs
  std::vector<Option> options;
  int files;  // how many arguments are no options
  // Gives the exit status. Throws Failure, and RunTimeError for what nobody foresaw.
  int (*run)(const Arguments& arguments, Interrupts& interrupts);
};

// In the order of the help.
const std::vector<Command>& commands();

// Options that all commands share that talk to a recorder.
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
