#include "cli/connection.h"

#include "base/errors.h"
#include "base/program_folder.h"
#include "cli/port_state.h"
#include "device/port_names.h"

namespace {

constexpr int searched_ports = 8;

QString device_of(int number) {
  return serial_device(number, program_folder(), system_serial_ports());
}

[[noreturn]] void fail(const QString& sentence) {
  throw Failure(exit_status::no_recorder, sentence);
}

// If several types have the same name, the last one counts, as in the desktop program.
int row_of(const Arguments& arguments, const DeviceTable& table) {
  if (!arguments.is_set("type")) return 0;
  QStringList names;
  int row = -1;
  for (int k = 0; k < table.rows(); ++k) {
    names << table.type_name(k);
    if (names.back() == arguments.text("type")) row = k;
  }
  if (row < 0) {
    arguments.refuse(QStringLiteral("--type: \"%1\" is not a type of device.txt, which has %2")
                         .arg(arguments.text("type"), names.join(QStringLiteral(", "))));
  }
  return row;
}

}  // namespace

QString port_words(int number) {
  const QString device = device_of(number);
  const QString name = QStringLiteral("COM%1").arg(number);
  return device.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, device);
}

RecorderType::RecorderType(const Arguments& arguments) {
  const QString path = program_folder() + QStringLiteral("/device.txt");
  table = read_device_file(path);
  if (table.rows() == 0) {
    throw Failure(exit_status::file,
                  path + QStringLiteral(" is missing or lists no recorder types"));
  }
  row = row_of(arguments, table);
  if (table.channel_count_or_none(row) == 0) {
    throw Failure(
        exit_status::file,
        QStringLiteral("%1 gives the type \"%2\" no number of channels").arg(path, name()));
  }
  channels = table.channel_count(row);
}

QString RecorderType::words() const {
  return QStringLiteral("%1 (%2 %3)")
      .arg(name())
      .arg(channels)
      .arg(channels == 1 ? QStringLiteral("channel") : QStringLiteral("channels"));
}

Connection::Connection(const Arguments& arguments, Interrupts& interrupts)
    : interrupts_(interrupts),
      number_(arguments.port()),
      type_(arguments),
      link_(port_, interrupts.clock) {
  find();
}

void Connection::find() {
  if (number_) {
    connect_to(*number_);
  } else {
    search();
  }
}

bool Connection::open(int number) {
  return stop_at_first_failure([&] {
    port_.close();
    port_.set_port_number(number);
    port_.open();
  });
}

bool Connection::answers() {
  const auto abandoned = [this] { return interrupted(); };
  const QString here = port_words(port_number());
  if (!link_.ask([this] { return status_request(type_.channels); }, {}, abandoned)) return false;
  where_ = here;
  return true;
}

void Connection::connect_to(int number) {
  if (!open(number)) {
    fail(QStringLiteral("%1 %2").arg(port_words(number), look_at_port(number).words));
  }
  if (answers()) return;
  if (interrupted()) fail(QStringLiteral("interrupted"));
  fail(QStringLiteral("no %1 answers on %2; corvane-cli check --port %3 tells more")
           .arg(type_.words(), port_words(number))
           .arg(number));
}

void Connection::search() {
  QStringList tried;
  for (int number = 1; number <= searched_ports; ++number) {
    if (device_of(number).isEmpty()) continue;
    tried << QStringLiteral("COM%1").arg(number);
    if (!open(number)) {
      tried.back() += QStringLiteral(", which ") + look_at_port(number).words;
    } else if (answers()) {
      return;
    }
    if (interrupted()) fail(QStringLiteral("interrupted"));
  }
  if (tried.isEmpty()) fail(QStringLiteral("there is no serial port"));
  fail(QStringLiteral("no %1 answers on %2; corvane-cli ports tells more of the ports")
           .arg(type_.words(), tried.join(QStringLiteral("; "))));
}

QByteArray Connection::ask(const Request& request) {
  const auto answer = link_.ask([&] { return request; }, {}, [this] { return interrupted(); });
  if (interrupted()) fail(QStringLiteral("interrupted"));
  if (!answer) fail(where() + QStringLiteral(" does not answer any more"));
  return *answer;
}

bool Connection::reconnect() {
  try {
    find();
    return true;
  } catch (const Failure&) {
    close();
    return false;
  }
}
