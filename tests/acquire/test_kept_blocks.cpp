#include <QTemporaryDir>

#include "acquire/download_engine.h"
#include "acquire/kept_blocks.h"
#include "device/device_table.h"
#include "support/runner.h"
#include "support/simulated_port.h"

namespace {

struct Later {
  const char* name;
  simulator::Settings settings;
  int seconds;  // between the two downloads
  int asked;    // blocks that the second one asks for, of 8
  int set = 0;  // seconds by which the computer's clock is set meanwhile
};

}  // namespace
Q_DECLARE_METATYPE(Later)

// A download whose blocks are kept, and a later one that uses them. The recorder goes on recording
// in between.
class TestKeptBlocks : public QObject {
  Q_OBJECT

  struct World {
    explicit World(const simulator::Settings& settings) : recorder(settings, clock.now()) {
      port.recorders[1] = &recorder;
      port.open();
    }
    QString file() const { return folder.filePath("run.part"); }
    // Returns the Recording; `asked` becomes the number of blocks asked for.
    Recording read(KeptBlocks* kept, int set = 0) {
      DownloadEngine engine(link, [] { return false; });
      const RecorderProperties properties = *engine.read_properties();
      const MemoryMap& memory = engine.map(properties, 2);
      engine.choose(memory.segment_count - 8, memory.segment_count - 1);
      if (kept) {
        kept->align(properties, memory, clock.now().addSecs(set));
        kept->begin();
        engine.keep_in(*kept);
      }
      port.log.clear();
      const bool complete = engine.read_blocks([](int) {});
      asked = static_cast<int>(port.log.filter("write 01 01").size());
      Recording recording;
      if (complete) engine.store({{}, 0, {0, 1}}, DeviceTable(), recording);
      return recording;
    }

    QTemporaryDir folder;
    ScriptedClock clock;
    SimulatedPort port{clock};
    simulator::Recorder recorder;
    RecorderLink link{port, clock};
    int asked = 0;
  };

 private Q_SLOTS:
  void later_download_data() {
    const simulator::Settings stops{.channels = 2, .mask = 3, .readings = 1024, .interval_s = 10};
    simulator::Settings wraps = stops;
    wraps.wrap = true;
    simulator::Settings full = wraps;
    full.readings = simulator::Memory::capacity;
    simulator::Settings quick = full;
    quick.interval_s = 2;
    simulator::Settings still = full;
    still.running = false;
    // Only the newest readings stay the same, or all of them do.
    simulator::Settings steady = full;
    steady.signal = [](auto n, int channel) {
      return simulator::demo_signal(std::min<std::int64_t>(n, 15'700), channel);
    };
    simulator::Settings same = full;
    same.signal = [](auto, int) { return 1024; };
    add_rows<Later>({{"at once", stops, 0, 1},
                     {"goes on", stops, 300, 2},
                     {"full, drops the oldest", full, 300, 2},
                     {"full, many new blocks", full, 3000, 6},
                     {"too quick to be certain", quick, 20, 8},
                     {"clock set, not full", wraps, 300, 2, 20},
                     {"clock set by two intervals", steady, 300, 9, 20},
                     {"clock set by half an interval", steady, 300, 8, 5},
                     {"too steady for a proof", same, 300, 8},
                     {"stopped", still, 300, 1}});
  }
  // The later download gives what it would give without the kept blocks.
  void later_download() {
    QFETCH(Later, row);
    // Both worlds are the same up to the later download.
    World w(row.settings);
    World twin(row.settings);
    for (World* one : {&w, &twin}) {
      KeptBlocks kept(one->file(), "one");
      one->read(&kept);
      QCOMPARE(one->asked, 8);
      one->clock.sleep(row.seconds * 1000);
    }
    KeptBlocks kept(w.file(), "one");
    const Recording resumed = w.read(&kept, row.set);
    QCOMPARE(w.asked, row.asked);
    const Recording whole = twin.read(nullptr);
    QCOMPARE(resumed.SampleCount, whole.SampleCount);
    for (int at = 0; at < 2 * whole.SampleCount; ++at) {
      QCOMPARE(resumed.SampleTimes(at / 2), whole.SampleTimes(at / 2));
      QCOMPARE(resumed.SampleValues(at / 2, at % 2), whole.SampleValues(at / 2, at % 2));
    }
  }

  // Files of another recording, with other readings in a block, and cut off within a line.
  void doubtful_files() {
    World w({.channels = 2, .mask = 3, .readings = 1024, .interval_s = 10});
    KeptBlocks first(w.file(), "one");
    w.read(&first);
    KeptBlocks other(w.file(), "another");
    QVERIFY(other.empty());
    KeptBlocks same(w.file(), "one");
    w.read(&same);
    QCOMPARE(w.asked, 1);
    for (int block = 0; block < 8; ++block) same.keep(block, QByteArray(260, '\1'));
    KeptBlocks wrong(w.file(), "one");
    w.read(&wrong);
    QCOMPARE(w.asked, 9);
    QFile file(w.file());
    QVERIFY(file.resize(file.size() - 100));
    KeptBlocks cut(w.file(), "one");
    w.read(&cut);
    QCOMPARE(w.asked, 2);
  }
};

const int registered = register_test<TestKeptBlocks>();

#include "test_kept_blocks.moc"
