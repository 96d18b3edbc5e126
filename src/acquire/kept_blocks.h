// The blocks that a broken-off download leaves for the next one, in a file of their own.
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

// What tells a recording from the others that a recorder makes, on one line.
QByteArray recording_identity(const RecorderProperties& properties, const RecorderTexts& texts);

// A recorder counts its blocks from the newest reading, so their numbers change while it records,
// and one that wraps drops its oldest readings. Here a block is known by the position behind its
// newest reading; positions count from a reading that never moves.
class KeptBlocks {
 public:
  // Takes what the file `path` keeps of the recording `identity`. A file of another recording gives
  // nothing; of a damaged one counts what comes before the damage.
  KeptBlocks(QString path, QByteArray identity);
  // The file is there, and not of this recording: begin() would overwrite it.
  bool of_another_recording() const { return of_another_; }

  // Works out how many readings have come since the blocks were kept: the readings held tell it
  // until a wrapping recorder drops its oldest, from then on the time does, `now` in real UTC when
  // the properties came. Drops all blocks where neither can tell: the recorder gives its newest
  // reading's age in whole seconds, too coarse for an interval below three.
  void align(const RecorderProperties& properties, const MemoryMap& memory, const QDateTime& now);

  // Writes the file with what is kept, for the blocks to come. Throws FileError.
  void begin();
  // Adds the answer to the request for block `block`; it is on the disk when this returns. Throws
  // FileError.
  void keep(int block, const QByteArray& answer);
  // The answer that the recorder would give for block `block`, from its length byte on; nothing
  // unless all its readings are kept.
  std::optional<QByteArray> find(int block) const;
  // How many different samples that answer has: the more, the better it proves that the blocks
  // are in their right places. 0 where it is not kept.
  int different_samples(int block) const;
  // How many the proof needs. A clock that was set puts blocks in wrong places, and a recorder
  // whose readings stay the same, or alternate, sends the same block from there.
  int samples_for_proof() const { return placed_by_time_ ? 4 : 1; }
  // Whether two answers have the same readings.
  static bool same_readings(const QByteArray& one, const QByteArray& other);

  bool empty() const { return blocks_.empty(); }
  // Drops all blocks, in the file too. Throws FileError.
  void start_over();
  // Removes the file, when the download is complete.
  void remove();

 private:
  // Of the recorder when the blocks were kept.
  struct State {
    int newest = 0;  // position behind the newest reading
    int held = 0;    // readings in the memory
    bool recording = false;
    QDateTime end;  // time of the newest reading, real UTC
  };

  void load();
  bool take_line(const QByteArray& line);
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
