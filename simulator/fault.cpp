#include "simulator/fault.h"

#include <QStringList>

#include <algorithm>

#include "simulator/frames.h"

namespace simulator {

namespace {

struct Kind {
  FaultKind kind;
  const char* name;
  const char* amount;  // the name of its amount in a text, or null
};

constexpr Kind kinds[] = {
    {FaultKind::Silent, "silent", nullptr}, {FaultKind::Check, "check", nullptr},
    {FaultKind::Extra, "extra", nullptr},   {FaultKind::Truncated, "truncated", "bytes"},
    {FaultKind::Late, "late", "ms"},        {FaultKind::Garbage, "garbage", "bytes"},
    {FaultKind::Unplug, "unplug", nullptr},
};

const Kind& kind_of(FaultKind kind) {
  return *std::find_if(std::begin(kinds), std::end(kinds),
                       [kind](const Kind& entry) { return entry.kind == kind; });
}

// A reader notices an extra byte in front because the check fails. A lead byte equal to the check
// byte would hide it, so it is inverted.
QByteArray with_extra_byte(QByteArray bytes) {
  if (bytes.front() == bytes.back()) bytes[0] = static_cast<char>(~bytes.front());
  return bytes.prepend('\x55');
}

QByteArray noise(int size) {
  QByteArray bytes;
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(0xA5 + 29 * i);
  return bytes;
}

bool meets(const Fault& fault, const QByteArray& request, int number) {
  const int command = byte_at(request, 0);
  return (!fault.request || *fault.request == number) &&
         (!fault.block || (command == 0x01 && byte_at(request, 2) == *fault.block)) &&
         (!fault.command || *fault.command == command);
}

// Sets the field of "name=number"; false if there is no such field or the number does not fit.
bool set_condition(Fault& fault, const QString& text) {
  const QString name = text.section(u'=', 0, 0);
  struct Field {
    QString name;
    std::optional<int>* value;
    int least, most, base;
  };
  const Field fields[] = {
      {QStringLiteral("request"), &fault.request, 1, 1'000'000, 10},
      {QStringLiteral("block"), &fault.block, 0, 255, 10},
      {QStringLiteral("command"), &fault.command, 0, 255, 16},
      {QStringLiteral("first"), &fault.first, 1, 1'000'000, 10},
      {QString::fromLatin1(kind_of(fault.kind).amount), &fault.amount, 0, 60'000, 10},
  };
  for (const Field& field : fields) {
    if (name.isEmpty() || field.name != name || field.value->has_value()) continue;
    bool ok = false;
    const int value = text.section(u'=', 1).toInt(&ok, field.base);
    if (!ok || value < field.least || value > field.most) return false;
    *field.value = value;
    return true;
  }
  return false;
}

}  // namespace

Answer spoil(Answer answer, const Fault& fault) {
  const int size = static_cast<int>(answer.bytes.size());
  answer.remark = QStringLiteral("fault: ") + QLatin1String(kind_of(fault.kind).name);
  if (size == 0) return answer;
  switch (fault.kind) {
    case FaultKind::Silent:
      answer.bytes.clear();
      break;
    case FaultKind::Check:
      answer.bytes[size - 1] = static_cast<char>(~answer.bytes.back());
      break;
    case FaultKind::Extra:
      answer.bytes = with_extra_byte(answer.bytes);
      break;
    case FaultKind::Truncated:
      answer.bytes.truncate(std::min(fault.amount.value_or(size / 2), size - 1));
      break;
    case FaultKind::Late:
      answer.delay_ms += fault.amount.value_or(1500);
      break;
    case FaultKind::Garbage:
      answer.bytes.prepend(noise(fault.amount.value_or(8)));
      break;
    case FaultKind::Unplug:
      answer.bytes.truncate(size / 2);
      answer.unplug = true;
      break;
  }
  return answer;
}

Faults::Faults(const std::vector<Fault>& faults) {
  for (const Fault& fault : faults) entries_.push_back({fault});
}

std::optional<Fault> Faults::next(const QByteArray& request) {
  ++requests_;
  for (Entry& entry : entries_) {
    const bool used_up = entry.fault.first && entry.strikes >= *entry.fault.first;
    if (used_up || !meets(entry.fault, request, requests_)) continue;
    ++entry.strikes;
    return entry.fault;
  }
  return std::nullopt;
}

std::optional<Fault> fault_from_text(const QString& text) {
  const QString name = text.section(u':', 0, 0);
  const auto kind = std::find_if(std::begin(kinds), std::end(kinds), [&name](const Kind& entry) {
    return name == QLatin1String(entry.name);
  });
  if (kind == std::end(kinds)) return std::nullopt;
  Fault fault;
  fault.kind = kind->kind;
  if (!text.contains(u':')) return fault;
  for (const QString& condition : text.section(u':', 1).split(u',')) {
    if (!set_condition(fault, condition)) return std::nullopt;
  }
  return fault;
}

}  // namespace simulator
