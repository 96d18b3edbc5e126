// The frames that the check of a line exchanges, and their meaning.
#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

#include "device/request.h"

// A request that the check sends.
struct Probe {
  QString name;  // "status request"
  Request request;
  QString (*meaning)(const QByteArray& answer);  // describes a right answer
};

// All kinds of requests that read something from a recorder with `channels` channels.
std::vector<Probe> probes_for(int channels);

// The result of one request.
enum class Outcome {
  right,
  extra_byte,    // right, but with one stray byte in front
  silent,        // no bytes
  short_answer,  // too few bytes
  wrong_check,
  noise,  // too many bytes, and a wrong check byte
  echo,   // the request itself
};

// `bytes`: all bytes received before the next request.
Outcome outcome_of(const Request& request, const QByteArray& bytes);

// "14 bytes, check byte right: battery 3.00 V; values 4.50, 60.00"
QString meaning_of(const Probe& probe, Outcome outcome, const QByteArray& bytes);

// The number of channels of the recorder that sent this status answer; 0 when it is not one.
int channels_of_status(const QByteArray& bytes);
