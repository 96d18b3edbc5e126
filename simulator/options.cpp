#include "simulator/options.h"

#include <QCommandLineParser>

namespace simulator {

namespace {

const char* const description =
    "A recorder in software on a pseudo-terminal, to try Corvane without a recorder.\n"
    "\n"
    "It prints the device, the links made to it, and \"ready\", and runs until it is\n"
    "interrupted. A link named com1 .. com8 in Corvane's own folder makes it the port of\n"
    "that number. It answers, records and forgets as a recorder does.\n"
    "\n"
    "Faults, KIND[:CONDITION[,CONDITION...]]:\n"
    "  silent             no answer\n"
    "  check              wrong check byte\n"
    "  extra              one extra byte in front of the answer\n"
    "  truncated          half the answer, or its first bytes=N\n"
    "  late               1500 ms late, or ms=N\n"
    "  garbage            8 bytes of noise before the answer, or bytes=N\n"
    "  unplug             the device goes away after half the answer; the program ends\n"
    "A fault strikes every request, or only those that meet all conditions given:\n"
    "  request=N          the N-th request since the start, counted from 1\n"
    "  block=N            reads of block N, counted from the newest, 0\n"
    "  command=HH         requests with this command byte, hexadecimal\n"
    "  first=N            no more than N times\n"
    "Where several faults would strike, the one given first does.\n"
    "\n"
    "Examples:\n"
    "  corvane-simulator --link com1 --readings 3000 --wrap\n"
    "  corvane-simulator --link com3 --channels 2 --mask 1,2 --fault silent:first=2\n"
    "  corvane-simulator --link com1 --log - --fault check:block=5 --fault late:request=7";

QString quoted(const QString& text) {
  return u'"' + text + u'"';
}

[[noreturn]] void refuse(const QString& option, const QString& value, const QString& wanted) {
  throw OptionError(QStringLiteral("--%1: %2 is not %3").arg(option, quoted(value), wanted));
}

int whole(const QString& option, const QString& text, int least, int most) {
  bool ok = false;
  const int value = text.toInt(&ok);
  if (!ok || value < least || value > most) {
    refuse(option, text, QStringLiteral("a whole number from %1 to %2").arg(least).arg(most));
  }
  return value;
}

double decimal(const QString& option, const QString& text, double least, double most) {
  bool ok = false;
  const double value = text.toDouble(&ok);
  if (!ok || !(value >= least && value <= most)) {
    refuse(option, text, QStringLiteral("a number from %1 to %2").arg(least).arg(most));
  }
  return value;
}

unsigned channel_mask(const QString& text, int channels) {
  unsigned mask = 0;
  for (const QString& channel : text.split(u',')) {
    mask |= 1U << (whole(QStringLiteral("mask"), channel, 1, channels) - 1);
  }
  return mask;
}

QDateTime start_time(const QString& text) {
  QDateTime time = QDateTime::fromString(text, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
  time.setTimeSpec(Qt::UTC);
  const int year = time.date().year();
  if (!time.isValid() || year < 2000 || year > 2255) {
    refuse(QStringLiteral("start"), text,
           QStringLiteral("a time YYYY-MM-DD HH:MM:SS in the years 2000 to 2255"));
  }
  return time;
}

QString short_text(const QString& option, const QString& text, int most) {
  if (text.size() > most) {
    refuse(option, text, QStringLiteral("a text of at most %1 characters").arg(most));
  }
  return text;
}

// "CHANNEL:DOWN:UP"
void set_limits(Settings& settings, const QString& text) {
  const QString option = QStringLiteral("limits");
  const QStringList parts = text.split(u':');
  if (parts.size() != 3) refuse(option, text, QStringLiteral("of the form CHANNEL:DOWN:UP"));
  const int channel = whole(option, parts[0], 1, settings.channels);
  // The range of 8.8 fixed point.
  const double down = decimal(option, parts[1], -128.0, 127.99);
  const double up = decimal(option, parts[2], -128.0, 127.99);
  if (down > up) refuse(option, text, QStringLiteral("a down limit below an up limit"));
  settings.limits[static_cast<std::size_t>(channel - 1)] = {down, up};
}

Fault fault(const QString& text) {
  const auto fault = fault_from_text(text);
  if (!fault) refuse(QStringLiteral("fault"), text, QStringLiteral("a fault; --help lists them"));
  return *fault;
}

struct Entry {
  const char* name;
  const char* value;
  const char* help;
};

constexpr Entry entries[] = {
    {"link", "path", "Symbolic link to make to the device; may be given several times."},
    {"channels", "n", "Channels of the recorder, 1 to 4 (default 4)."},
    {"mask", "list", "Channels that record, such as 1,3 (default all)."},
    {"readings", "n", "Readings in memory, all channels together, 0 to 32000 (default 3000)."},
    {"interval", "s", "Seconds between samples, 1 to 65536 (default 60)."},
    {"start", "time",
     "Start that it reports, \"YYYY-MM-DD HH:MM:SS\" (default: fits the readings)."},
    {"elapsed", "s", "Age of the newest reading in seconds, 0 to 65535 (default 0)."},
    {"stopped", nullptr, "Does not record."},
    {"wrap", nullptr, "Drops its oldest readings when its memory is full, instead of stopping."},
    {"delay", "s", "Its start was delayed by so many seconds, 0 to 65535."},
    {"title", "text", "Title, at most 8 characters."},
    {"description", "text", "Description, at most 24 characters."},
    {"battery", "volts", "Battery voltage, 0 to 4 (default 3)."},
    {"limits", "limits", "Alarm limits CHANNEL:DOWN:UP, such as 2:-10.5:25; one for each channel."},
    {"fault", "fault", "A fault, see above; may be given several times."},
    {"unpaced", nullptr, "Answers at once, not with the 1.1 ms that a byte takes at 9600 baud."},
    {"log", "file", "Writes every frame with its time and direction; - is the standard output."},
};

}  // namespace

void describe_options(QCommandLineParser& parser) {
  parser.setApplicationDescription(QString::fromLatin1(description));
  for (const Entry& entry : entries) {
    parser.addOption({QString::fromLatin1(entry.name), QString::fromLatin1(entry.help),
                      QString::fromLatin1(entry.value)});
  }
}

Options options_from(const QCommandLineParser& parser) {
  if (!parser.positionalArguments().isEmpty()) {
    throw OptionError(quoted(parser.positionalArguments().constFirst()) +
                      QStringLiteral(" belongs to no option"));
  }
  const auto if_set = [&parser](const char* name, const auto& take) {
    const QString option = QString::fromLatin1(name);
    if (parser.isSet(option)) take(option, parser.value(option));
  };
  Options options;
  Settings& recorder = options.recorder;
  const auto into = [&if_set](const char* name, int& number, int least, int most) {
    if_set(name, [&](const QString& option, const QString& text) {
      number = whole(option, text, least, most);
    });
  };
  into("channels", recorder.channels, 1, max_channels);
  recorder.mask = (1U << recorder.channels) - 1;
  if_set("mask", [&](const QString&, const QString& text) {
    recorder.mask = channel_mask(text, recorder.channels);
  });
  recorder.readings = 3000;
  into("readings", recorder.readings, 0, Memory::capacity);
  into("interval", recorder.interval_s, 1, 65536);
  if_set("start", [&](const QString&, const QString& text) { recorder.start = start_time(text); });
  into("elapsed", recorder.elapsed_s, 0, 65535);
  recorder.running = !parser.isSet(QStringLiteral("stopped"));
  recorder.wrap = parser.isSet(QStringLiteral("wrap"));
  if_set("delay", [&](const QString& option, const QString& text) {
    recorder.delay_s = whole(option, text, 0, 65535);
  });
  if_set("title", [&](const QString& option, const QString& text) {
    recorder.title = short_text(option, text, 8);
  });
  if_set("description", [&](const QString& option, const QString& text) {
    recorder.description = short_text(option, text, 24);
  });
  if_set("battery", [&](const QString& option, const QString& text) {
    recorder.battery_volts = decimal(option, text, 0.0, 4.0);
  });
  for (const QString& text : parser.values(QStringLiteral("limits"))) set_limits(recorder, text);
  for (const QString& text : parser.values(QStringLiteral("fault"))) {
    recorder.faults.push_back(fault(text));
  }
  options.links = parser.values(QStringLiteral("link"));
  options.paced = !parser.isSet(QStringLiteral("unpaced"));
  options.log = parser.value(QStringLiteral("log"));
  return options;
}

}  // namespace simulator
