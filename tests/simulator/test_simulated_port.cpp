#include <QTest>

#include "app/errors.h"
#include "support/runner.h"
#include "support/simulated_port.h"

class TestSimulatedPort : public QObject {
  Q_OBJECT
  // Sends a status request and gives what arrives within a second.
  QByteArray ask_status(SimulatedPort& port, const char* address = "9600,M,8,1",
                        const char* request = "9600,S,8,1");

  ScriptedClock clock_;

 private Q_SLOTS:
  void answers_arrive_in_time();
  void parity_tells_the_address();
  void ports_without_recorder_or_device();
  void unplugged();
};

QByteArray TestSimulatedPort::ask_status(SimulatedPort& port, const char* address,
                                         const char* request) {
  port.set_settings(QString::fromLatin1(address));
  port.write(QByteArray(1, '\0'));
  clock_.sleep(10);
  port.set_settings(QString::fromLatin1(request));
  port.write(QByteArray(3, '\0'));
  const qint64 end = clock_.elapsed() + 1000;
  while (port.bytes_waiting() < 14 && clock_.elapsed() < end) clock_.wait(1000);
  return port.read_all();
}

void TestSimulatedPort::answers_arrive_in_time() {
  for (const bool paced : {false, true}) {
    simulator::Recorder recorder({}, clock_.now());
    SimulatedPort port(clock_, paced);
    port.recorders[1] = &recorder;
    port.open();
    int woken = 0;
    port.on_activity = [&] {
      ++woken;
      clock_.wake();
    };
    const qint64 begin = clock_.elapsed();
    QCOMPARE(ask_status(port).size(), 14);
    // After the pause of 10 ms; 3 + 14 bytes of 11 bits at 9600 baud are 19.5 ms.
    QCOMPARE(clock_.elapsed() - begin, paced ? 35 : 15);
    QCOMPARE(woken, paced ? 14 : 1);
  }
}

void TestSimulatedPort::parity_tells_the_address() {
  simulator::Recorder recorder({}, clock_.now());
  SimulatedPort port(clock_);
  port.recorders[1] = &recorder;
  port.open();
  QCOMPARE(ask_status(port, "9600,S,8,1").size(), 0);
  QCOMPARE(ask_status(port, "9600,M,8,1", "9600,M,8,1").size(), 0);
  QCOMPARE(ask_status(port, "9600,M,8,1", "9600,N,8,1").size(), 0);
  QCOMPARE(ask_status(port).size(), 14);
}

void TestSimulatedPort::ports_without_recorder_or_device() {
  SimulatedPort port(clock_);
  port.recorders[2] = nullptr;
  QVERIFY_THROWS_EXCEPTION(PortError, port.open());
  port.set_port_number(2);
  port.open();
  QVERIFY_THROWS_EXCEPTION(PortError, port.set_port_number(1));
  QCOMPARE(ask_status(port).size(), 0);
  port.close();
  QVERIFY_THROWS_EXCEPTION(PortError, port.write("x"));
}

void TestSimulatedPort::unplugged() {
  simulator::Settings settings;
  settings.faults = {{simulator::FaultKind::Unplug, 1}};
  simulator::Recorder recorder(settings, clock_.now());
  SimulatedPort port(clock_);
  port.recorders[1] = &recorder;
  port.open();
  QCOMPARE(ask_status(port).size(), 7);
  QVERIFY(port.is_open());
  QVERIFY_THROWS_EXCEPTION(PortError, ask_status(port));
  port.close();
  QVERIFY_THROWS_EXCEPTION(PortError, port.open());
  port.recorders[1] = &recorder;
  port.open();
  QCOMPARE(ask_status(port).size(), 14);
}

namespace {
const int registered = register_test<TestSimulatedPort>();
}

#include "test_simulated_port.moc"
