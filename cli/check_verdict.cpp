#include "cli/check_verdict.h"

namespace {

const QString cable_advice = QStringLiteral(
    "See that the cable is plugged in at both ends and is the recorder's own, that the recorder's "
    "battery is good, and that --port is the right one (corvane-cli ports).");
const QString noise_advice = QStringLiteral(
    "Use a shorter or shielded cable, keep it away from motors and mains, try another adapter, and "
    "see that --type has the recorder's number of channels.");

QString of_all(const Findings& findings, int count) {
  return QStringLiteral("%1 of %2").arg(count).arg(findings.requests);
}

// Some answers were right, others were not.
Verdict unsteady(const Findings& findings, int right) {
  const int wrong = findings.count(Outcome::wrong_check) + findings.count(Outcome::noise);
  if (wrong > 0) {
    return {false,
            QStringLiteral("The recorder answers, but the check byte is wrong in %1: noise on the "
                           "line or a wrong channel count.")
                .arg(of_all(findings, wrong)),
            noise_advice};
  }
  if (findings.late > 0) {
    return {false,
            QStringLiteral("The recorder answers, but too late in %1: a slow adapter or a busy "
                           "computer.")
                .arg(of_all(findings, findings.late)),
            QStringLiteral("Try another adapter, without a hub in between.")};
  }
  return {false,
          QStringLiteral("The recorder answers in %1 only: a loose contact or noise on the line.")
              .arg(of_all(findings, right)),
          noise_advice};
}

// Bytes arrive, but no right answer.
Verdict never_right(const Findings& findings) {
  if (findings.late > 0) {
    return {false, QStringLiteral("What answers, answers too late."),
            QStringLiteral("Try another adapter, without a hub in between.")};
  }
  return {false,
          QStringLiteral("Bytes come, but not one right answer: noise on the line, another device, "
                         "or a wrong channel count."),
          noise_advice};
}

}  // namespace

int Findings::count(Outcome outcome) const {
  const auto found = outcomes.find(outcome);
  return found == outcomes.end() ? 0 : found->second;
}

Verdict verdict_on(const Findings& findings, const QString& recorder) {
  const int right = findings.count(Outcome::right) + findings.count(Outcome::extra_byte);
  if (!findings.refused_settings.isEmpty() && !findings.lost) {
    return {false,
            QStringLiteral("The port does not take the settings %1: its driver cannot do mark and "
                           "space parity.")
                .arg(findings.refused_settings),
            QStringLiteral("Use another adapter or a built-in port.")};
  }
  if (findings.lost) {
    return {false,
            QStringLiteral("The port failed in the middle, as when its adapter is unplugged."),
            QStringLiteral("Plug the adapter in again, firmly, and run the check again.")};
  }
  if (findings.count(Outcome::echo) == findings.requests) {
    return {false, QStringLiteral("What is sent comes back: nobody but an echo answers."),
            QStringLiteral("Take out the loop-back plug, or switch off the adapter's echo.")};
  }
  if (right == findings.requests && findings.late == 0) {
    const int extra = findings.count(Outcome::extra_byte);
    const QString remark =
        extra > 0
            ? QStringLiteral(", with a byte too many in front of %1, which does no harm").arg(extra)
            : QString();
    return {true,
            QStringLiteral("A %1 answers all %2 requests%3.")
                .arg(recorder)
                .arg(findings.requests)
                .arg(remark),
            {}};
  }
  if (findings.answering_channels > 0 && findings.answering_channels != findings.channels) {
    return {false,
            QStringLiteral("A recorder with %1 channels answers, not a %2.")
                .arg(findings.answering_channels)
                .arg(recorder),
            QStringLiteral("Choose a --type with %1 channels.").arg(findings.answering_channels)};
  }
  if (right > 0) return unsteady(findings, right);
  if (findings.count(Outcome::silent) == findings.requests && findings.late == 0) {
    return {false, QStringLiteral("Nobody answers: the line is silent."), cable_advice};
  }
  return never_right(findings);
}
