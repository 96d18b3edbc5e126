// The blocks that an interrupted download keeps for the next one, in a file of their own.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QFile>
#include <QString>

#include <map>
#include <optional>

#include "acquire/segments.h"
#include "device/properties.h"
#include "device/texts.h"

// One line that distinguishes a recording from the others of the same recorder.
QByteArray recording_identity(const RecorderProperties& properties, const RecorderTexts& texts);

// A recorder numbers its blocks from the newest reading, so the numbers change while it records. In
// wrap mode it also drops its oldest readings. Here a block is known by the position behind its
// newest reading; positions count from a fixed reading.
class KeptBlocks {
 public:
  // Loads the blocks of the recording `identity` from the file `path`: none from a file of another
  // recording, and from a damaged file those before the damage.
  KeptBlocks(QString path, QByteArray identity);
  // Whether the file exists but belongs to another recording. begin() would overwrite it.
  bool of_another_recording() const { return of_another_; }

  // Computes how many readings have come since the blocks were kept: from the number held or, once
  // a wrapping recorder drops its oldest readings, from the time. `now` is real UTC when the
  // properties came. Drops all blocks if neither gives the number: the recorder reports its newest
  // reading's age in whole seconds, too coarse for an interval below three.
  void align(const RecorderProperties& properties, const MemoryMap& memory, const QDateTime& now);

  // Writes the kept blocks to the file and leaves it open for more. Throws FileError.
  void begin();
  // Adds the answer to the request for block `block`; it is on the disk when this returns. Throws
  // FileError.
  void keep(int block, const QByteArray& answer);
  // An answer with the readings that the recorder would give for block `block`; its check byte can
  // be missing. No value unless all its readings are kept.
  std::optional<QByteArray> find(int block) const;
  // The number of different samples in that answer; 0 if it is not kept. The more there are, the
  // better they prove that the blocks are in the right places.
  int different_samples(int block) const;
  // How many the proof needs. If a clock was set, blocks are in wrong places, and a recorder whose
  // readings stay the same, or alternate, sends the same block for those places too.
  int samples_for_proof() const { return placed_by_time_ ? 4 : 1; }
  // Whether two answers have the same readings.
  bool same_readings(const QByteArray& one, const QByteArray& other) const;

  bool empty() const { return blocks_.empty(); }
  // Drops all blocks, in the file too. Throws FileError.
  void start_over();
  // Removes the file. To be called when the download is complete.
  void remove();

 private:
  // The recorder's state when the blocks were kept.
  struct State {
    int newest = 0;  // position behind the newest reading
    int held = 0;    // readings in the memory
    bool recording = false;
    QDateTime end;  // time of the newest reading, real UTC
  };

  void load();
  bool parse_line(const QByteArray& line);
  std::optional<int> readings_since(const RecorderProperties& properties, const MemoryMap& memory,
                                    const QDateTime& end);
  QByteArray state_line() const;

  QString path_;
  QByteArray identity_;
  QFile file_;
  std::optional<State> state_;
  int channels_ = 1;
  bool of_another_ = false;
  bool placed_by_time_ = false;
  std::map<int, QByteArray> blocks_;  // answers by position
};
