// ports: shows the devices behind COM1 to COM8.
#include "cli/arguments.h"
#include "cli/interrupts.h"
#include "cli/output.h"
#include "cli/port_state.h"

namespace {

constexpr int ports = 8;

int run(const Arguments&, Interrupts& interrupts) {
  for (int number = 1; number <= ports; ++number) {
    interrupts.throw_if_interrupted();
    const PortState state = look_at_port(number);
    QString line = QStringLiteral("COM%1  %2  %3")
                       .arg(number)
                       .arg(state.device.isEmpty() ? QStringLiteral("-") : state.device, -14)
                       .arg(state.words);
    if (!state.parity.isEmpty()) line += QStringLiteral("; ") + state.parity;
    print(line + u'\n');
  }
  return exit_status::fine;
}

}  // namespace

Command ports_command() {
  return {
      "ports",
      "[OPTION]",
      "Shows what is behind COM1 to COM8.",
      "Prints a line for each of COM1 to COM8: the device behind it, whether it exists, may be\n"
      "opened or is in use by another program and how that was found, and whether its driver\n"
      "can do mark and space parity, which the recorder needs. A free port is opened for a\n"
      "moment; one that is in use is left alone.",
      {},
      0,
      run};
}
