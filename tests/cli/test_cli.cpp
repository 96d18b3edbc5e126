#include <csignal>
#include <unistd.h>

#include "tests/cli/cli_process.h"

namespace {

struct Usage {
  const char* name;
  const char* words;
  int status;
  const char* error;  // part of the sentence
};

struct Line {
  const char* name;
  const char* options;  // of the simulated recorder
  const char* words;
  int status;
  const char* verdict;  // part of the sentence
};

// Two channels. The readings are 5 minutes apart, the last ones 30 minutes.
const char* const readings =
    "\"Store\"\r\n\"Two\"\r\n2\r\n\"1\"\r\n\"Air\"\r\n\"C\"\r\n\"3\"\r\n\"Soil, "
    "dry\"\r\n\"F\"\r\n5\r\n"
    "\"2026-03-01 23:50:00\"\r\n20\r\n50\r\n\"2026-03-01 23:55:00\"\r\n30\r\n50\r\n"
    "\"2026-03-02 00:00:00\"\r\n20\r\n50\r\n\"2026-03-02 00:30:00\"\r\n30.5\r\n50\r\n"
    "\"2026-03-02 01:00:00\"\r\n-2.25\r\n50\r\n";

}  // namespace
Q_DECLARE_METATYPE(Usage)
Q_DECLARE_METATYPE(Line)

class TestCli : public QObject {
  Q_OBJECT
  CliWorld w_;

 private Q_SLOTS:
  void cleanup() { w_.unplug(); }

  void needs_no_widgets() {
    const QString libraries = w_.shell("ldd corvane-cli").out;
    QVERIFY(libraries.contains("libQt6Core"));
    QVERIFY2(!libraries.contains("Widgets") && !libraries.contains("PrintSupport"),
             qPrintable(libraries));
  }

  // A refusal is one sentence on standard error and nothing on standard output.
  void refuses_data() {
    add_rows<Usage>({
        {"no command", "", 1, "no command"},
        {"no output", "download", 1, "(-o)"},
        {"port", "identify --port 9", 1, "\"9\" is not a port"},
        {"type", "identify --type Six", 1, "One, Two, Three, Four"},
        {"type without channels", "identify --type Broken", 3, "no number of channels"},
        {"interval", "watch --interval 0", 1, "\"0\" is not a number from 0.1"},
        {"time", "download -o a.qlx --from 2026-02-30", 1, "is not a time"},
        {"span", "download -o a.qlx --from 2026-02-03 --to 2026-02-02", 1, "later than"},
        {"limit", "stats store.qlx --limit 1:9", 1, "CHANNEL:UP:DOWN"},
        {"limits crossed", "stats store.qlx --limit 1:2:8", 1, "below its down"},
        {"limit's channel", "stats store.qlx --limit 2:8:2", 1, "does not have"},
        {"form", "export store.qlx -o a.ods", 1, "does not end in"},
        {"no readings", "stats empty.qlx", 3, "empty.qlx has no readings"},
        {"no channels", "stats bare.qlx", 3, "bare.qlx has no readings"},
        {"missing file", "stats none.qlx", 3, "none.qlx does not exist"},
        {"no data file", "stats device.txt", 3, "is not a data file"},
        {"folder", "download -o missing/a.qlx", 3, "missing/a.qlx cannot be written"},
        {"device", "export store.qlx -o /dev/null/a.csv", 3, "cannot be written"},
        {"no port", "identify --port 8", 2, "COM8 does not exist"},
    });
  }
  void refuses() {
    QFETCH(Usage, row);
    make_file(w_.path("store.qlx"), readings);
    make_file(w_.path("bare.qlx"), "\"\"\r\n\"\"\r\n0\r\n1\r\n\"2026-03-01 23:50:00\"\r\n");
    make_file(w_.path("empty.qlx"), QByteArray(readings).replace("\r\n5\r\n", "\r\n0\r\n"));
    const Ran ran = w_.run(row.words);
    QCOMPARE(ran.out, "");
    QVERIFY2(ran.errors.contains(row.error) && ran.errors.startsWith("corvane-cli: ") &&
                 ran.errors.count('\n') == 1,
             qPrintable(ran.errors));
    QCOMPARE(ran.status, row.status);
  }

  // By hand: with 83.144 kJ/mol and 8.3144 J/(mol K) the kinetic temperature of 20 and 30 degrees
  // is 10000 / (10000 / 303.15 + ln 2 - ln(1 + exp(10000 / 303.15 - 10000 / 293.15))) - 273.15
  // = 26.26.
  void figures() {
    make_file(w_.path("store.qlx"), readings);
    make_file(w_.path("two.qlx"), QByteArray(readings).replace("\r\n5\r\n", "\r\n2\r\n"));
    const auto channel = [&](const QString& words, int status, int slot) {
      const Ran ran = w_.run("stats --json " + words);
      if (ran.status != status) return QJsonObject();
      const QJsonObject all = QJsonDocument::fromJson(ran.out.toUtf8()).object();
      return all["channels"].toArray()[slot].toObject();
    };
    const QJsonObject two = channel("two.qlx", 0, 0);
    QCOMPARE(qRound(two["mean_kinetic_temperature"].toDouble() * 1000), 26260);
    QCOMPARE(qRound(channel("two.qlx --activation-energy 100", 0, 0)["mean_kinetic_temperature"]
                        .toDouble() *
                    1000),
             26501);
    QCOMPARE(channel("two.qlx", 0, 1)["mean_kinetic_temperature"].toDouble(), 50.0);

    const QJsonObject air = channel("store.qlx --limit 1:30:-2 --limit 3:50:50", 4, 0);
    QCOMPARE(air["count"].toInt(), 5);
    QCOMPARE(air["maximum"].toDouble(), 30.5);
    QCOMPARE(air["minimum"].toDouble(), -2.25);
    QCOMPARE(air["average"].toDouble(), 19.65);
    QCOMPARE(air["seconds_out_of_range"].toInt(), 3600);
    QStringList found;
    for (const QJsonValue& one : air["excursions"].toArray()) {
      found << one["start"].toString() + ' ' + one["end"].toString() + ' ' +
                   one["side"].toString() + ' ' + QString::number(one["extreme"].toDouble());
    }
    QCOMPARE(found, QStringList({"2026-03-02T00:30:00 2026-03-02T01:00:00 above 30.5",
                                 "2026-03-02T01:00:00 2026-03-02T01:30:00 below -2.25"}));
    const Ran text = w_.run("stats store.qlx --limit 1:29:");
    QCOMPARE(text.status, 4);
    QVERIFY2(text.out.contains("Time out of range         0:35:00") &&
                 text.out.contains(
                     "2026-03-01 23:55:00 to 2026-03-02 00:00:00, 0:05:00, highest 30.00 C"),
             qPrintable(text.out));
    // The live buffer's stamps have the system's form. This one is earlier than the one before it.
    make_file(w_.path("live.qlx"),
              QByteArray(readings).replace("2026-03-02 00:00:00", "28.02.26 00:00:00"));
    const Ran live = w_.shell(
        "export LC_ALL=de_DE.UTF-8; ./corvane-cli stats live.qlx; ./corvane-cli export live.qlx -o "
        "live.csv; cat live.csv");
    QVERIFY(live.errors.contains("run backwards at reading 3;"));
    QVERIFY(live.out.contains("\n2026-02-28T00:00:00,"));
  }

  void comma_separated() {
    make_file(w_.path("store.qlx"), readings);
    QCOMPARE(w_.run("export store.qlx -o out.csv").status, 0);
    QCOMPARE(
        w_.contents("out.csv"),
        "Time,Air(C),\"Soil, dry(F)\"\r\n2026-03-01T23:50:00,20,50\r\n2026-03-01T23:55:00,30,50\r\n"
        "2026-03-02T00:00:00,20,50\r\n2026-03-02T00:30:00,30.5,50\r\n2026-03-02T01:00:00,-2.25,"
        "50\r\n");
    QCOMPARE(w_.run("export store.qlx -o out.pdf").errors, "");
    QVERIFY(w_.contents("out.pdf").startsWith("%PDF-") && w_.contents("out.pdf").size() > 5000);
    // Without room for the new file only the older one stays.
    const QByteArray before = w_.contents("out.csv");
    make_file(w_.path("long.qlx"), QByteArray(readings).replace("Air", QByteArray(3000, 'a')));
    const Ran full = w_.shell("ulimit -f 1; ./corvane-cli export long.qlx -o out.csv");
    QVERIFY2(full.status == 3 && full.errors.contains("cannot be written: File too large"),
             qPrintable(full.errors));
    QCOMPARE(w_.contents("out.csv"), before);
    QCOMPARE(w_.files("*out.csv*"), QStringList{"out.csv"});
    const QString again = "chmod 640 out.csv; ./corvane-cli export store.qlx -o out.csv; ";
    QCOMPARE(w_.shell(again + "stat -c %a out.csv").out, "640\n");
  }

  // A signal ends an export between two pages. It cleans up even after a second signal.
  void interrupted_export() {
    const QByteArray row = "\"2026-03-01 23:50:00\"\r\n20\r\n50\r\n";
    make_file(w_.path("long.qlx"),
              QByteArray(readings).replace("\r\n5\r\n", "\r\n20005\r\n" + row.repeated(20000)));
    QProcess process;
    w_.start(process, "export long.qlx -o long.pdf");
    QVERIFY(process.waitForStarted());
    const QString pid = QString::number(process.processId());
    const QString catches = QString("grep 'SigCgt.*[2367abef]$' /proc/%1/status").arg(pid);
    QTRY_COMPARE_WITH_TIMEOUT(w_.shell(catches).status, 0, 20'000);
    w_.shell(QString("kill -INT %1; kill -INT %1").arg(pid));
    QCOMPARE(CliWorld::end(process).errors, "corvane-cli: interrupted\n");
    QCOMPARE(w_.files("long.pdf*"), QStringList());
  }

  void identifies() {
    QVERIFY(
        w_.plug_in("--channels 2 --readings 700 --title Cellar --battery 2 --limits 2:-10.5:25 "
                   "--description \x1b[2J "
                   "--interval 90 --stopped"));
    const Ran ran = w_.run("identify --type Two --json");
    const QJsonObject all = QJsonDocument::fromJson(ran.out.toUtf8()).object();
    QCOMPARE(all["title"].toString() + all["port"].toString(), "CellarCOM1");
    QVERIFY(!all["battery_ok"].toBool(true) && !all["recording"].toBool(true));
    QCOMPARE(all["record_interval_s"].toInt() + all["readings_held"].toInt(), 790);
    QCOMPARE(all["channels"].toArray()[1].toObject()["down_limit"].toDouble(), -10.5);
    QCOMPARE(w_.run("identify --type Four").status, 2);
    QVERIFY(
        w_.run("identify --type Two --port 1").out.contains("Battery              2.00 V, Error"));
  }

  void checks_data() {
    add_rows<Line>({
        {"good", "", "", 0, "A Four answers all 20 requests"},
        {"extra byte", "--fault extra:first=2", "", 0, "a byte too many in front of 2"},
        {"silent", "--fault silent", "", 2, "Nobody answers"},
        {"noisy", "--fault check:first=3", "", 2, "check byte is wrong in 3 of 20"},
        {"garbage", "--fault garbage:request=2", "", 2, "check byte is wrong in 1 of 20"},
        {"flood", "--fault garbage:bytes=3000", "", 2, "not one right answer"},
        {"loose", "--fault silent:request=4", "", 2, "answers in 19 of 20 only"},
        {"late", "--fault late:request=2,ms=1100", "", 2, "too late in 1 of 20"},
        {"all late", "--fault late", "", 2, "What answers, answers too late"},
        {"another type", "--channels 2", "", 2, "A recorder with 2 channels answers"},
        {"unplugged", "--fault unplug:request=5", "", 2, "failed in the middle"},
        {"absent", "", "--port 2", 2, "COM2 does not exist"},
        {"no serial port", "", "--port 3", 2, "is no serial port"},
    });
  }
  void checks() {
    QFETCH(Line, row);
    QFile::link(w_.path("device.txt"), w_.path("com3"));
    QVERIFY(w_.plug_in(QString("--unpaced ") + row.options));
    const QString port = QByteArray(row.words).isEmpty() ? "--port 1" : row.words;
    const Ran ran = w_.run("check --type Four --log check.log " + port);
    QVERIFY2(ran.out.section("Verdict: ", 1).contains(row.verdict),
             qPrintable(ran.out + ran.errors));
    QCOMPARE(ran.status, row.status);
    QCOMPARE(QString::fromUtf8(w_.contents("check.log")), ran.out);
    QCOMPARE(ran.errors, "");
    QFile::remove(w_.path("com3"));
  }

  void tells_who_keeps_the_port() {
    QVERIFY(w_.plug_in("--unpaced"));
    const auto verdict = [&](const QString& script) { return w_.shell(script).out; };
    // Another program is found by Qt's lock file, a lock on the device, or its open device.
    QProcess watch;
    w_.start(watch, "watch --type Four");
    QVERIFY(watch.waitForReadyRead(20'000));
    for (const char* const command : {"./corvane-cli check --port 1", "./corvane-cli ports"}) {
      const QString told = verdict(command);
      QVERIFY2(told.contains("corvane-cli (process " + QString::number(watch.processId()) + ')') &&
                   told.contains("lock file"),
               qPrintable(told));
    }
    watch.terminate();
    QCOMPARE(CliWorld::end(watch).status, 0);
    QVERIFY(verdict("flock com1 ./corvane-cli check --port 1").contains("it is locked (flock)"));
    QVERIFY(verdict("sleep 60 <>com1 & ./corvane-cli ports; kill $!").contains("in use by sleep"));
    if (geteuid() != 0) QSKIP("only root can become another user");
    const QString other =
        "chmod 755 .; setpriv --reuid 65534 --regid 65534 --clear-groups ./corvane-cli ";
    for (const char* const command : {"check --port 1", "identify --type Four 2>&1"}) {
      const QString told = verdict(other + command);
      QVERIFY2(told.contains("may not be opened: permission denied"), qPrintable(told));
    }
  }

  void watches() {
    QVERIFY(w_.plug_in("--channels 2 --limits 2:0:10"));
    const Ran csv = w_.run("watch --type Two --interval 0.2 --count 3 --csv");
    const QStringList lines = csv.out.split("\r\n");
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines[0], "Time,Air(C),Damp(%RH),Out Of Range");
    QVERIFY(lines[3].endsWith(",Damp") && lines[3][10] == 'T');
    QCOMPARE(csv.status, 4);
    QVERIFY(w_.run("watch --type Two --count 1 --json").out.contains("\"alarm\":true"));
    QVERIFY(w_.run("watch --type Two --count 1").out.contains("DampOut Of Range"));
    const QString nohup = "trap '' HUP; ./corvane-cli watch --type Two --interval 0.3 --count 5 & ";
    QCOMPARE(w_.shell(nohup + "sleep 0.8; kill -HUP $!; wait $!").out.count('\n'), 5);
    // A reader that closes the pipe.
    const Ran piped =
        w_.shell("set -o pipefail; ./corvane-cli watch --type Two --interval 0.1 | head -n 1");
    QCOMPARE(piped.errors, "");
    QCOMPARE(piped.status, 4);
  }

  void takes_a_lost_recorder_up_again() {
    QVERIFY(w_.plug_in("--fault unplug:request=12"));
    QProcess watch;
    w_.start(watch, "watch --type Four --interval 0.2 --json --count 12");
    QByteArray told;
    QTRY_VERIFY_WITH_TIMEOUT((told += watch.readAllStandardError()).contains("gives no readings"),
                             20'000);
    // The adapter comes back as another port.
    QVERIFY(w_.plug_in({}, "com2"));
    const Ran ran = CliWorld::end(watch);
    QVERIFY2(ran.errors.contains("COM2"), qPrintable(ran.errors));
    QCOMPARE(ran.out.count('\n'), 12);
    QCOMPARE(ran.status, 0);
  }
};

const int registered = register_test<TestCli>();

#include "test_cli.moc"
