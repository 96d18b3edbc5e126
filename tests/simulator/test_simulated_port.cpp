#include <QTest>

#include "app/errors.h"
#include "support/runner.h"
#include "support/simulated_port.h"

class TestSimulatedPort : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void answers_arrive_in_time();
  void ports_without_recorder_or_device();
  void unplugged();
};

namespace {

simulator::Settings with_fault(const char* text) {
  simulator::Settings settings;
  if (text) settings.faults.push_back(*simulator::fault_from_text(QString::fromLatin1(text)));
  return settings;
}

void ask_status(SimulatedPort& port, ScriptedClock& clock) {
  port.write(QByteArray(1, '\0'));
  clock.sleep(10);
  port.write(QByteArray(3, '\0'));
}

}  // namespace

void TestSimulatedPort::answers_arrive_in_time() {
  for (const bool paced : {false, true}) {
    ScriptedClock clock;
    simulator::Recorder recorder(with_fault(nullptr), clock.now());
    SimulatedPort port(clock, paced);
    port.recorders[1] = &recorder;
    port.open();
    int woken = 0;
    port.on_activity = [&] {
      ++woken;
      clock.wake();
    };
    ask_status(port, clock);
    QCOMPARE(port.bytes_waiting(), 0);
    const qint64 sent = clock.elapsed();
    while (port.bytes_waiting() < 14 && clock.elapsed() < sent + 1000) clock.wait(1000);
    // 3 + 14 bytes of 11 bits at 9600 baud are 19.5 ms.
    QCOMPARE(clock.elapsed() - sent, paced ? 25 : 5);
    QCOMPARE(woken, paced ? 14 : 1);
    QCOMPARE(port.read_all().size(), 14);
    ask_status(port, clock);
    clock.sleep(100);
    QCOMPARE(port.bytes_waiting(), 14);
    port.close();
    clock.wait(100);
    port.open();
    QCOMPARE(port.bytes_waiting(), 0);
  }
}

void TestSimulatedPort::ports_without_recorder_or_device() {
  ScriptedClock clock;
  SimulatedPort port(clock);
  port.recorders[2] = nullptr;
  QVERIFY_THROWS_EXCEPTION(PortError, port.open());
  port.set_port_number(2);
  port.open();
  QVERIFY_THROWS_EXCEPTION(PortError, port.set_port_number(1));
  ask_status(port, clock);
  clock.wait(5000);
  QCOMPARE(port.bytes_waiting(), 0);
  port.close();
  QVERIFY_THROWS_EXCEPTION(PortError, port.write("x"));
}

void TestSimulatedPort::unplugged() {
  ScriptedClock clock;
  simulator::Recorder recorder(with_fault("unplug:first=1"), clock.now());
  SimulatedPort port(clock);
  port.recorders[1] = &recorder;
  port.open();
  ask_status(port, clock);
  clock.wait(50);
  QVERIFY(port.is_open());
  QCOMPARE(port.read_all().size(), 7);
  QVERIFY_THROWS_EXCEPTION(PortError, port.set_settings("9600,M,8,1"));
  QVERIFY_THROWS_EXCEPTION(PortError, port.write("x"));
  port.close();
  QVERIFY_THROWS_EXCEPTION(PortError, port.open());
  port.recorders[1] = &recorder;
  port.open();
  ask_status(port, clock);
  clock.wait(50);
  QCOMPARE(port.read_all().size(), 14);
}

namespace {
const int registered = register_test<TestSimulatedPort>();
}

#include "test_simulated_port.moc"
