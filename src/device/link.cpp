#include "device/link.h"

#include <QScopedValueRollback>

#include "app/shell.h"
#include "app/user.h"
#include "base/errors.h"
#include "base/message_box.h"
#include "base/serial_port.h"
#include "device/frmport.h"
#include "device/packet.h"

namespace {

constexpr std::int16_t no_port = -1;
constexpr std::int16_t automatic = 4;
constexpr std::int16_t searched_ports = 8;

// Whether a recorder answers on port `number`. A port left open by Unlink takes neither the
// number nor a second open: the probe then runs on that port. A recorder type without a usable
// channel count has no status request, so nothing is sent and nobody answers.
bool probe(Shell& shell, int number) {
  SerialPort& port = shell.MSComm1();
  skip_on_error([&] { port.set_port_number(number); });
  skip_on_error([&] { port.open(); });
  if (!stop_at_first_failure([] { User::DeviceTable.channel_count(User::RecorderType); })) {
    return false;
  }
  return Packet::request(Packet::BuildStatusRequest);
}

void tell_timeout(Shell& shell) {
  shell.messages().show(QStringLiteral("Link Timeout!"), QStringLiteral("Warnning"));
}

bool find_on_fixed_port(Shell& shell) {
  if (probe(shell, User::PortChoice + 1)) return true;
  if (shell.shutting_down()) return false;
  tell_timeout(shell);
  shell.MSComm1().close();
  return false;
}

// The last port of the search is left as it is.
bool search(Shell& shell) {
  for (std::int16_t k = 0; k < searched_ports; ++k) {
    User::PortChoice = k;
    if (probe(shell, k + 1)) return true;
    if (shell.shutting_down()) return false;
    if (k + 1 < searched_ports) shell.MSComm1().close();
  }
  tell_timeout(shell);
  return false;
}

// The window is loaded afresh, since its load is what reads the recorder. It can be closed again
// during that; then nothing is linked that the commands could work on.
void link_now(Shell& shell) {
  frmport(shell.window()).exec();
  if (User::PortChoice == no_port || shell.shutting_down()) return;
  const bool found = User::PortChoice == automatic ? search(shell) : find_on_fixed_port(shell);
  if (!found) return;
  shell.unload_realtime();
  shell.show_realtime();
  if (shell.loaded_realtime() && !shell.shutting_down()) shell.set_linked_commands(true);
}

}  // namespace

// A link that is under way must not be broken by another, nor a download by a link: the command is
// ignored until they end.
void link_Click(Shell& shell) {
  static bool linking = false;
  if (linking || User::Downloading) return;
  const QScopedValueRollback under_way(linking, true);
  skip_on_error([&] { link_now(shell); });
}

void unlink_Click(Shell& shell) {
  shell.unload_realtime();
  shell.set_linked_commands(false);
}
