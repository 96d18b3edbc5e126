// The frames of a check of the line, and what they mean.
#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

#include "device/request.h"

// A request that the check sends.
struct Probe {
  QString name;  // "status request"
  Request request;
  QString (*meaning)(const QByteArray& answer);  // of a right answer
};

// All requests that read something from a recorder with `channels` channels.
std::vector<Probe> probes_for(int channels);

// What came for one request.
enum class Outcome {
  right,
  extra_byte,    // right, with a byte in front that does not belong to it
  silent,        // nothing
  short_answer,  // too few bytes
  wrong_check,
  noise,  // too many bytes, with a wrong check
  echo,   // the request itself
};

// `bytes`: all that came before the next request.
Outcome outcome_of(const Request& request, const QByteArray& bytes);

// "14 bytes, check byte right: battery 3.00 V; values 4.50, 60.00"
QString meaning_of(const Probe& probe, Outcome outcome, const QByteArray& bytes);

// The number of channels of the recorder whose status answer the bytes are; 0 when they are none.
int channels_of_status(const QByteArray& bytes);
