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

// A link must be broken off when the user or the program ends it, and when another command has
// begun inside its endless wait. After another link the port is that link's.
struct LinkCommand {
  explicit LinkCommand(Shell& the_shell)
      : shell(the_shell),
        turn(Packet::recorder().use, RecorderTask::link),
        escape([this] { cancelled = true; }) {}
  bool abandoned() const { return cancelled || turn.overtaken() || shell.shutting_down(); }
  // Others have taken over all that was left to do.
  bool over() const { return turn.repeated() || shell.shutting_down(); }

  Shell& shell;
  RecorderUse::Turn turn;
  bool cancelled = false;
  EscapeKey escape;
};

// Shows on which port the recorder is looked for.
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

// Whether a recorder answers on port `number`. A port left open by Unlink takes neither the
// number nor a second open: the probe then runs on that port. A recorder type without a usable
// channel count has no status request, so nothing is sent and nobody answers.
bool probe(const LinkCommand& command, int number) {
  SerialPort& port = command.shell.MSComm1();
  skip_on_error([&] { port.set_port_number(number); });
  skip_on_error([&] { port.open(); });
  const PortShown shown(command.shell, port.port_number());
  if (User::DeviceTable.channel_count_or_none(User::RecorderType) == 0) return false;
  return Packet::request(Packet::BuildStatusRequest, {}, [&] { return command.abandoned(); })
             .has_value() &&
         !command.abandoned();
}

// The user's end of a link says nothing.
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

// The last port of the search is left as it is.
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

// The window is loaded afresh, since its load is what reads the recorder. It can be closed again
// during that; then nothing is linked that the commands could work on.
void link_now(Shell& shell) {
  frmport(shell.window()).exec();
  if (User::PortChoice == no_port || shell.shutting_down()) return;
  if (!find_recorder(shell)) return;
  shell.unload_realtime();
  shell.show_realtime();
  // A link that came inside this one's load may have closed the port.
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
