#include "device/link.h"

#include "app/shell.h"
#include "app/user.h"
#include "app/waiting.h"
#include "base/errors.h"
#include "base/escape_key.h"
#include "base/message_box.h"
#include "base/serial_port.h"
#include "device/frmport.h"
#include "device/packet.h"

namespace {

constexpr std::int16_t no_port = -1;
constexpr std::int16_t automatic = 4;
constexpr std::int16_t searched_ports = 8;

// One Link command. It must stop when the user cancels it, when the program shuts down, and when
// another command has begun inside its endless wait. A second link takes over the port.
struct LinkCommand {
  explicit LinkCommand(Shell& the_shell)
      : shell(the_shell),
        turn(Packet::recorder().use, RecorderTask::link),
        escape([this] { cancelled = true; }) {}
  bool abandoned() const { return cancelled || turn.overtaken() || shell.shutting_down(); }
  // A second link or the shutdown has taken over, so this link must not do anything more.
  bool over() const { return turn.repeated() || shell.shutting_down(); }

  Shell& shell;
  RecorderUse::Turn turn;
  bool cancelled = false;
  EscapeKey escape;
};

// Shows which port is being searched for a recorder.
class PortShown {
 public:
  PortShown(Shell& shell, int number)
      : shell_(shell),
        waiting_(shell,
                 QStringLiteral("Looking for a recorder on COM%1. Esc ends it.").arg(number)) {
    shell_.set_progress(0, QStringLiteral("COM%1 ...").arg(number));
  }
  ~PortShown() { shell_.set_progress(0, {}); }
  PortShown(const PortShown&) = delete;
  PortShown& operator=(const PortShown&) = delete;

 private:
  Shell& shell_;
  Waiting waiting_;
};

// Returns whether a recorder answers on port `number`. If Unlink has left a port open, setting the
// number and opening fail, and the probe runs on the open port. A recorder type without a usable
// channel count has no status request, so nothing is sent and no recorder answers.
bool probe(const LinkCommand& command, int number) {
  SerialPort& port = command.shell.MSComm1();
  skip_on_error([&] { port.set_port_number(number); });
  const PortShown shown(command.shell, port.port_number());
  skip_on_error([&] { port.open(); });
  if (User::DeviceTable.channel_count_or_none(User::RecorderType) == 0) return false;
  return Packet::request(Packet::BuildStatusRequest, {}, [&] { return command.abandoned(); })
             .has_value() &&
         !command.abandoned();
}

// Gives no message when the user has cancelled the link.
void tell_timeout(const LinkCommand& command) {
  if (command.over() || command.cancelled) return;
  command.shell.messages().show(QStringLiteral("Link Timeout!"), QStringLiteral("Warnning"));
}

bool find_on_fixed_port(const LinkCommand& command) {
  if (probe(command, User::PortChoice + 1)) return true;
  tell_timeout(command);
  if (!command.over()) command.shell.MSComm1().close();
  return false;
}

// When no recorder answers, the last port of the search stays as it is.
bool search(const LinkCommand& command) {
  for (std::int16_t k = 0; k < searched_ports; ++k) {
    User::PortChoice = k;
    if (probe(command, k + 1)) return true;
    if (command.over()) return false;
    if (command.abandoned() || k + 1 < searched_ports) command.shell.MSComm1().close();
    if (command.abandoned()) break;
  }
  tell_timeout(command);
  return false;
}

bool find_recorder(Shell& shell) {
  const LinkCommand command(shell);
  if (!command.turn) return false;
  return User::PortChoice == automatic ? search(command) : find_on_fixed_port(command);
}

// Loads the window again even if it is open, because loading it reads the recorder. If it is closed
// meanwhile, the commands stay disabled, because they would have nothing to work on.
void link_now(Shell& shell) {
  frmport(shell.window()).exec();
  if (User::PortChoice == no_port || shell.shutting_down()) return;
  if (!find_recorder(shell)) return;
  shell.unload_realtime();
  shell.show_realtime();
  // A second link during the load may have closed the port.
  const bool open = shell.loaded_realtime() && shell.MSComm1().is_open();
  if (open && !shell.shutting_down()) shell.set_linked_commands(true);
}

}  // namespace

void link_Click(Shell& shell) {
  if (!Packet::recorder().use.free_for(RecorderTask::link)) return;
  stop_at_first_failure([&] { link_now(shell); });
}

void unlink_Click(Shell& shell) {
  shell.unload_realtime();
  shell.set_linked_commands(false);
}
