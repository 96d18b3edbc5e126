#include <csignal>

#include "base/clock.h"
#include "device/qt_serial_port.h"
#include "tests/cli/cli_process.h"

namespace {

struct Break {
  const char* name;
  const char* options;  // of the recorder at the first download
  int signal;           // sent to the program; 0: a fault of the recorder breaks the download
  const char* later;    // further options of the recorder at the second download
  int blocks;           // of the second recorder
  int new_blocks;       // of these, the ones that the first recorder did not have
};

}  // namespace
Q_DECLARE_METATYPE(Break)

class TestCliDownload : public QObject {
  Q_OBJECT
  CliWorld w_;

  bool plug_in(const QString& options) {
    return w_.plug_in("--unpaced --interval 3600 --title Cold " + options);
  }

 private Q_SLOTS:
  void cleanup() { w_.unplug(); }

  // The desktop program downloads, saves and exports the same readings, with the same bytes.
  void same_bytes_as_the_desktop_program() {
    for (const QString options : {"--readings 700 --mask 2,4", "--channels 3 --readings 700"}) {
      const bool three = options.contains("channels");
      QVERIFY(plug_in(options));
      QCOMPARE(
          w_.run(three ? "download -o cli.qlx --type Three" : "download -o cli.qlx --type Four")
              .errors,
          "");
      QCOMPARE(w_.run("export cli.qlx -o cli.txt").status, 0);
      SystemClock clock;
      QtSerialPort port;
      MainWindow desktop(port, clock);
      QFile::link(QFileInfo(w_.path("com1")).symLinkTarget(), desktop.folder.filePath("com1"));
      desktop.link(0, three ? "Three" : "Four");
      desktop.read();
      const QString name = desktop.folder.filePath("desktop");
      desktop.files.choices = {name, name};
      for (const char* command : {"save", "outputs"}) desktop.run(command);
      QCOMPARE(desktop.told(), QStringList());
      for (const char* const ending : {".qlx", ".txt"}) {
        QFile saved(name + ending);
        QVERIFY(saved.open(QIODevice::ReadOnly));
        QCOMPARE(w_.contents(QString("cli") + ending), saved.readAll());
      }
    }
  }

  void only_the_wanted_time() {
    QVERIFY(w_.plug_in(
        "--unpaced --channels 1 --readings 700 --interval 30 --start \"2026-02-01 08:00:00\""));
    QVERIFY(w_.run("download -o all.qlx --type One").out.contains("700 samples of 1 channel,"));
    const QList<QByteArray> all = w_.contents("all.qlx").split('\n');
    const auto stamp = [&](int n) { return all[7 + 2 * n].mid(1, 19); };
    const QString span = QString("--from \"%1\" --to \"%2\"").arg(stamp(100), stamp(299));
    QVERIFY(w_.run("download -o some.qlx --type One " + span).out.contains("200 samples"));
    const QList<QByteArray> some = w_.contents("some.qlx").split('\n');
    QCOMPARE(some.mid(7), all.mid(7 + 200, 400) + QList<QByteArray>{""});
    // A time before all readings, and one between two readings. The existing file stays.
    for (const char* const none :
         {"2001-01-01", "\"2026-02-01 08:00:20\" --from 2026-02-01T08:00:10"}) {
      const Ran ran = w_.run(QString("download -o some.qlx --type One --to ") + none);
      QVERIFY(ran.status == 2 && ran.errors.contains("no readings of that time"));
      QCOMPARE(w_.contents("some.qlx").split('\n'), some);
    }
  }

  // However a download breaks off, the next one fetches only the missing blocks, and its file is
  // bit for bit that of an unbroken download.
  void broken_off_data() {
    add_rows<Break>({
        {"program killed", "--readings 1000", SIGKILL, "", 8, 0},
        {"interrupted", "--readings 1000", SIGINT, "", 8, 0},
        {"recorder unplugged", "--readings 1000 --fault unplug:block=4", 0, "", 8, 0},
        {"silent block", "--readings 1000 --fault silent:block=4", 0, "", 8, 0},
        {"three channels", "--channels 3 --readings 1000 --fault silent:block=4", 0, "", 8, 0},
        {"more readings since", "--readings 1000 --fault silent:block=4", 0, "--readings 1040", 9,
         1},
        {"another recording", "--readings 1000 --fault silent:block=4", 0, "--interval 31", 8, 8},
    });
  }
  void broken_off() {
    QFETCH(Break, row);
    const QString type =
        QString(row.options).contains("channels 3") ? " --type Three" : " --type Four";
    const auto plugged = [&](const QString& options) {
      return plug_in("--start \"2026-02-01 08:00:00\" " + options);
    };
    for (const QString& name : w_.files("run.qlx*")) QFile::remove(w_.path(name));
    QVERIFY(plugged(row.options));
    QProcess broken;
    w_.start(broken, "download -o run.qlx" + type);
    if (row.signal != 0) {
      QTRY_VERIFY_WITH_TIMEOUT(w_.contents("run.qlx.part").count("block ") >= 3, 20'000);
      kill(static_cast<pid_t>(broken.processId()), row.signal);
    }
    const Ran ran = CliWorld::end(broken);
    QVERIFY2(row.signal == SIGKILL || ran.errors.contains("the same command fetches the rest"),
             qPrintable(ran.errors));
    QCOMPARE(ran.status, row.signal == SIGKILL ? -1 : row.signal == SIGINT ? 130 : 2);
    QVERIFY(!QFile::exists(w_.path("run.qlx")));
    const auto kept = static_cast<int>(w_.contents("run.qlx.part").count("block "));
    QVERIFY(kept >= 3);

    QVERIFY(plugged(QString(row.options).section(" --fault", 0, 0) + ' ' + row.later + " --log " +
                    w_.path("log")));
    const Ran resumed = w_.run("download -o run.qlx" + type);
    const bool same = row.new_blocks < row.blocks;
    QCOMPARE(resumed.errors.contains("now called run.qlx.part.old"), !same);
    QCOMPARE(w_.contents("run.qlx.part.old").count("block "), same ? 0 : kept);
    // One kept block is fetched again to verify the others.
    const int fetched = static_cast<int>(w_.contents("log").count("> 01 01 "));
    QCOMPARE(fetched, same ? row.blocks - kept + row.new_blocks + 1 : row.blocks);
    QVERIFY(!QFile::exists(w_.path("run.qlx.part")));
    QVERIFY(w_.run("download -o whole.qlx" + type).out.contains(" 0 of "));
    QCOMPARE(w_.contents("run.qlx"), w_.contents("whole.qlx"));
  }
};

const int registered = register_test<TestCliDownload>();

#include "test_download.moc"
