// identify: prints what the recorder reports about itself.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "base/numbers.h"
#include "base/times.h"
#include "cli/connection.h"
#include "cli/output.h"
#include "device/limits.h"
#include "device/properties.h"
#include "device/status.h"
#include "device/texts.h"

namespace {

struct Identity {
  RecorderProperties properties;
  QString title;
  QString description;
  RecorderStatus status;
  std::vector<ChannelLimits> limits;
};

Identity identity_of(Connection& recorder) {
  Identity identity;
  identity.properties = decode_properties(recorder.ask(properties_request()));
  const RecorderTexts texts = decode_texts(recorder.ask(texts_request()));
  identity.title = text_of_units(texts.title.data(), static_cast<int>(texts.title.size()));
  identity.description =
      text_of_units(texts.description.data(), static_cast<int>(texts.description.size()));
  const int channels = recorder.type().channels;
  identity.status = decode_status(recorder.ask(status_request(channels)));
  for (int n = 1; n <= channels; ++n) {
    identity.limits.push_back(decode_limits(recorder.ask(limits_request(n))));
  }
  return identity;
}

QString startup_words(const RecorderProperties& properties) {
  switch (properties.startup_type) {
    case StartupType::start_up:
      return QStringLiteral("Start up");
    case StartupType::delayed:
      return QStringLiteral("Delay Start up, %1 s").arg(properties.startup_delay);
    case StartupType::stop:
      break;
  }
  return QStringLiteral("Stop!");
}

QString stop_words(const RecorderProperties& properties) {
  return properties.wrap ? QStringLiteral("When buffer is full,Wrap buffer!")
                         : QStringLiteral("When buffer is full,Stop record");
}

QString line(const QString& label, const QString& value) {
  return QStringLiteral("%1 %2\n").arg(label, -20).arg(value);
}

QString text_of(const Identity& identity, const Connection& recorder) {
  const RecorderProperties& properties = identity.properties;
  QString text = line(QStringLiteral("Port"), recorder.where());
  text += line(QStringLiteral("Type"), recorder.type().words());
  text += line(QStringLiteral("Title"), identity.title);
  text += line(QStringLiteral("Description"), identity.description);
  text +=
      line(QStringLiteral("Battery"),
           QStringLiteral("%1 V, %2")
               .arg(fixed2(identity.status.battery_volts),
                    identity.status.battery_ok() ? QStringLiteral("Ok") : QStringLiteral("Error")));
  text += line(QStringLiteral("State"),
               properties.recording ? QStringLiteral("Recording") : QStringLiteral("Stop"));
  text += line(QStringLiteral("Startup type"), startup_words(properties));
  text += line(QStringLiteral("Startup time"), stamp_text(properties.start));
  text += line(QStringLiteral("Record interval"),
               QStringLiteral("%1 s").arg(properties.record_interval));
  text += line(QStringLiteral("Stop type"), stop_words(properties));
  text += line(QStringLiteral("All data"), QString::number(properties.all_data));
  text += line(QStringLiteral("Historical sampling"),
               QStringLiteral("%1 readings").arg(properties.readings_held));
  for (std::size_t c = 0; c < identity.limits.size(); ++c) {
    const int row = recorder.type().row;
    const auto channel = static_cast<int>(c);
    text += line(QStringLiteral("Channel %1").arg(c + 1),
                 QStringLiteral("%1, now %2 %3, limits %4 to %5, %6")
                     .arg(recorder.type().table.channel_name(row, channel),
                          fixed2(double{identity.status.readings[c]}),
                          recorder.type().table.channel_unit(row, channel),
                          fixed2(identity.limits[c].down), fixed2(identity.limits[c].up),
                          properties.channels[c] ? QStringLiteral("records")
                                                 : QStringLiteral("does not record")));
  }
  return text;
}

QString json_of(const Identity& identity, const Connection& recorder) {
  const RecorderProperties& properties = identity.properties;
  QJsonArray channels;
  for (std::size_t c = 0; c < identity.limits.size(); ++c) {
    const auto channel = static_cast<int>(c);
    const int row = recorder.type().row;
    channels.append(QJsonObject{{"channel", static_cast<int>(c + 1)},
                                {"name", recorder.type().table.channel_name(row, channel)},
                                {"unit", recorder.type().table.channel_unit(row, channel)},
                                {"value", double{identity.status.readings[c]}},
                                {"down_limit", identity.limits[c].down},
                                {"up_limit", identity.limits[c].up},
                                {"records", properties.channels[c]}});
  }
  const QJsonObject all = {{"port", QStringLiteral("COM%1").arg(recorder.port_number())},
                           {"type", recorder.type().name()},
                           {"title", identity.title},
                           {"description", identity.description},
                           {"battery_volts", identity.status.battery_volts},
                           {"battery_ok", identity.status.battery_ok()},
                           {"recording", properties.recording},
                           {"startup_type", startup_words(properties).section(u',', 0, 0)},
                           {"startup_time", stamp_text(properties.start).replace(u' ', u'T')},
                           {"startup_delay_s", properties.startup_delay},
                           {"record_interval_s", properties.record_interval},
                           {"wraps", properties.wrap},
                           {"all_data", properties.all_data},
                           {"readings_held", properties.readings_held},
                           {"channels", channels}};
  return QString::fromUtf8(QJsonDocument(all).toJson());
}

int run(const Arguments& arguments, Interrupts& interrupts) {
  Connection recorder(arguments, interrupts);
  const Identity identity = identity_of(recorder);
  print(arguments.is_set("json") ? json_of(identity, recorder) : text_of(identity, recorder));
  return exit_status::fine;
}

}  // namespace

Command identify_command() {
  return {
      "identify",
      "[OPTION]...",
      "Prints what a recorder says of itself.",
      "Prints the recorder's title and description, battery, state, recording pattern, how many\n"
      "readings it holds, and for each channel its value now, its alarm limits and whether it\n"
      "takes part in recording.",
      {port_option, type_option, {"json", nullptr, "Prints JSON."}},
      0,
      run};
}
