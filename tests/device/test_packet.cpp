#include "app/user.h"
#include "base/errors.h"
#include "base/interval_timer.h"
#include "device/packet.h"
#include "support/runner.h"
#include "support/simulated_port.h"

namespace {

const QByteArray good = hex("ff 00 01 02 04 08 10 1f");
const QByteArray bad = hex("ff 00 01 02 04 08 10 1e");

const auto limits_of_1 = [] { return Packet::BuildReadLimits(1); };

}  // namespace

class TestPacket : public QObject {
  Q_OBJECT

  // Makes a new clock and an open port that gives this answer, and builds the request for limits.
  void start(const QByteArray& answer = {}, const QTime& time = QTime(10, 0)) {
    link_.reset();
    clock_ = std::make_unique<ScriptedClock>(time);
    port_ = std::make_unique<SimulatedPort>(*clock_);
    port_->answer = answer;
    link_ = std::make_unique<RecorderLink>(*port_, *clock_);
    Packet::attach(*link_);
    port_->open();
    limits_of_1();
  }
  // What is received when this answer comes after more stale bytes than the driver's buffer holds;
  // empty if it is refused.
  QByteArray received(const QByteArray& answer) {
    start(answer);
    port_->deliver(QByteArray(12'000, 'x'));
    const bool answered = Packet::Exchange(8);
    return answered && !Packet::CommBusy() ? Packet::ReceiveBuffer.left(8) : QByteArray();
  }

  std::unique_ptr<ScriptedClock> clock_;
  std::unique_ptr<SimulatedPort> port_;
  std::unique_ptr<RecorderLink> link_;

 private Q_SLOTS:
  void requests() {
    using namespace Packet;
    start();
    User::RecorderType = 0;
    User::DeviceTable.set_text(2, 0, "3");
    const auto built = [](int length) {
      return QByteArray::number(length) + ' ' + SendBuffer.toHex();
    };
    QCOMPARE(built(BuildStatusRequest()), "12 000000");
    QCOMPARE(built(BuildReadBlock(5)), "260 01010505");
    QCOMPARE(built(BuildCommand07(1)), "5 07010107");
    // Ties to even.
    QCOMPARE(built(BuildWriteLimits(2, "0.001953125", "0.005859375")), "5 0b060200020000000d");
    const QByteArray before = SendBuffer;
    for (const char* channels : {"", "0", "5"}) {
      User::DeviceTable.set_text(2, 0, channels);
      QVERIFY_THROWS_EXCEPTION(ConversionError, BuildStatusRequest());
    }
    QVERIFY_THROWS_EXCEPTION(ConversionError, BuildReadBlock(256));
    QVERIFY_THROWS_EXCEPTION(ConversionError, BuildWriteLimits(1, "300", "0"));
    QCOMPARE(BuildWriteLimits(3, "warm", "cold"), 0);
    QCOMPARE(BuildWriteLimits(4, "1", ""), 0);
    QCOMPARE(SendBuffer, before);
  }

  void answers() {
    QCOMPARE(received(good), good);
    QCOMPARE(clock_->sleeps, std::vector<int>({10, 10}));
    QCOMPARE(port_->log.join(' '),
             "open settings 9600,M,8,1 write 00 settings 9600,S,8,1 write 0a 01 01 0a");
    QCOMPARE(received("{" + good.mid(1)), "{" + good.mid(1));  // any lead byte
    QCOMPARE(received(good + "abc"), good);
    // After one extra byte in front, the rest is accepted without a check.
    for (const QByteArray& sound : {good, bad}) QCOMPARE(received("\x55" + sound), sound);
    // The last one is cut off where the check happens to be right.
    for (const QByteArray& spoilt :
         {bad, "\x55\x66" + good, good.left(7), QByteArray(), hex("ff 01 02 03")}) {
      QCOMPARE(received(spoilt), QByteArray());
    }
    // The wait lasts its second, besides the two pauses, and no longer.
    QCOMPARE(clock_->elapsed(), 1020);
  }

  // Once the clock has wrapped at midnight, the deadline is a day ahead: only bytes, or the end of
  // the program, end the wait.
  void waits() {
    const auto wait = [this](const QTime& time, int moment, const std::function<void()>& event) {
      start({}, time);
      clock_->after(moment, event);
      const bool answered = Packet::request(limits_of_1, {.await_late_answers = true}).has_value();
      const auto sent = port_->log.count("write 0a 01 01 0a");
      return QStringLiteral("%1 %2 %3").arg(answered).arg(clock_->elapsed()).arg(sent);
    };
    const auto deliver = [this] { port_->deliver(good); };
    const auto stop = [this] { clock_->stop(); };
    const QTime morning(10, 0), midnight(23, 59, 59, 500);
    QCOMPARE(wait(morning, 700, deliver), "1 710 1");
    // An answer comes at the second try; then the missing one is awaited for 2 s.
    QCOMPARE(wait(morning, 1500, deliver), "1 3510 2");
    QCOMPARE(wait(midnight, 5000, deliver), "1 5010 1");
    QCOMPARE(wait(midnight, 4000, stop), "0 4000 1");
    // After the answer to the third try the link awaits those to the first two.
    const auto deliver_three = [&] {
      for (const int later : {300, 700}) clock_->after(later, deliver);
      deliver();
    };
    QCOMPARE(wait(morning, 2200, deliver_three), "1 2900 3");
    // A day later the same happens inside that wait: only the outer wait goes on.
    const auto next_midnight = [&] {
      clock_->set(clock_->now().addSecs(86'400 - 4));
      QVERIFY(!Packet::Exchange(8));
      deliver();
    };
    QCOMPARE(wait(midnight, 4000, next_midnight), "1 5130 2");
    start();
    clock_->after(1500, deliver);
    QVERIFY(Packet::request(limits_of_1));
    QCOMPARE(clock_->elapsed(), 1510);
    QVERIFY(!Packet::request(limits_of_1, {.tries = 2, .pause_ms = 7, .pause_after_last = true}));
    QCOMPARE(clock_->sleeps.back(), 7);
  }

  // QTimer does not fire while its handler runs, but IntervalTimer still ticks. With an interval of
  // 0 it does not tick.
  void ticks_during_a_handler() {
    IntervalTimer timer(1);
    int ticks = 0;
    connect(&timer, &IntervalTimer::tick, this, [&] {
      if (++ticks == 1) QTRY_VERIFY(ticks > 2);
    });
    timer.set_enabled(true);
    QTRY_VERIFY(ticks > 2);
    timer.set_interval(0);
    QCoreApplication::processEvents();
    ticks = 0;
    QTest::qWait(5);
    QCOMPARE(ticks, 0);
  }

  void nested_exchange_is_delayed() {
    start();
    bool inner = false;
    clock_->after(100, [&] {
      port_->answer = good;
      inner = Packet::Exchange(8);
    });
    QVERIFY(!Packet::Exchange(8));  // its answer never came
    QVERIFY(inner && !Packet::CommBusy());
    QCOMPARE(clock_->sleeps, std::vector<int>({10, 100, 10, 10, 10}));

    auto& log = Packet::PacketLog().frames;
    for (auto& slot : log) slot.fill(0xEE);
    Packet::PacketCounter() = 0;
    for (int i = 0; i < 128; ++i) Packet::Exchange(8);
    // 256 frames in slots 0..253: the last request is in slot 0 again, its answer in slot 1.
    QCOMPARE(QList<int>({Packet::PacketCounter(), log[0][0], log[1][7], log[1][8], log[254][0]}),
             QList<int>({2, 0x0A, 0x1F, 0xEE, 0xEE}));
  }
};

const int registered = register_test<TestPacket>();

#include "test_packet.moc"
