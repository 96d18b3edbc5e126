#include <QTest>

#include "app/errors.h"
#include "app/user.h"
#include "device/packet.h"
#include "support/runner.h"
#include "support/scripted.h"

class TestPacket : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void requests_data();
  void requests();
  void refused_requests();
  void limits_that_are_not_numbers();
  void answers_data();
  void answers();
  void order_on_the_line();
  void stale_bytes_are_dropped();
  void late_bytes_end_the_wait();
  void midnight();
  void closed_port();
  void nested_exchange_is_delayed();
  void log_cycles();
  void retries();
  void stopping_ends_everything();

 private:
  std::unique_ptr<ScriptedClock> clock_;
  std::unique_ptr<ScriptedPort> port_;
};

namespace {

QByteArray hex(const char* text) {
  return QByteArray::fromHex(text);
}

}  // namespace

void TestPacket::init() {
  clock_ = std::make_unique<ScriptedClock>();
  port_ = std::make_unique<ScriptedPort>();
  Packet::attach(*port_, *clock_);
  Packet::PacketCounter = 0;
  Packet::ReceiveBuffer.clear();
  port_->open();
  port_->log.clear();
  User::RecorderType = 0;
  User::DeviceTable.set_text(2, 0, QStringLiteral("3"));
}

void TestPacket::requests_data() {
  QTest::addColumn<std::function<int()>>("build");
  QTest::addColumn<QByteArray>("bytes");
  QTest::addColumn<int>("length");
  using Build = std::function<int()>;
  static ScriptedMessages messages;
  const auto limits = [](const char* up, const char* down) {
    return Build([=] { return Packet::BuildWriteLimits(2, up, down, messages); });
  };
  QTest::newRow("status") << Build(Packet::BuildStatusRequest) << hex("000000") << 12;
  QTest::newRow("block 5") << Build([] { return Packet::BuildReadBlock(5); }) << hex("01010505")
                           << 260;
  QTest::newRow("properties") << Build(Packet::BuildReadProperties) << hex("020002") << 22;
  QTest::newRow("description") << Build(Packet::BuildReadDescription) << hex("080008") << 68;
  QTest::newRow("limits of 2") << Build([] { return Packet::BuildReadLimits(2); })
                               << hex("0a010209") << 8;
  QTest::newRow("start") << Build([] { return Packet::BuildCommand07(1); }) << hex("07010107") << 5;
  QTest::newRow("write limits") << limits("25.5", "-10") << hex("0b06020000f68019 60") << 5;
  QTest::newRow("write limits, ties to even")
      << limits("0.001953125", "0.005859375") << hex("0b060200020000000d") << 5;
  QTest::newRow("write properties") << Build([] {
    for (std::size_t i = 0; i < 15; ++i) User::PatternBytes[i] = static_cast<std::uint8_t>(i + 1);
    return Packet::BuildWriteProperties();
  }) << hex("050f 0102030405060708090a0b0c0d0e 05")
                                    << 5;
  QTest::newRow("write description") << Build([] {
    User::DescriptionBytes.fill(0);
    User::DescriptionBytes[0] = 0x41;
    User::DescriptionBytes[64] = 0x77;  // never sent
    return Packet::BuildWriteDescription();
  }) << hex("0940") + hex("41") + QByteArray(63, '\0') + hex("08")
                                     << 5;
}

void TestPacket::requests() {
  QFETCH(std::function<int()>, build);
  QTEST(build(), "length");
  QTEST(Packet::SendBuffer, "bytes");
}

void TestPacket::refused_requests() {
  ScriptedMessages messages;
  Packet::BuildReadProperties();
  const QByteArray before = Packet::SendBuffer;
  User::DeviceTable.set_text(2, 0, {});
  QVERIFY_THROWS_EXCEPTION(ConversionError, Packet::BuildStatusRequest());
  QVERIFY_THROWS_EXCEPTION(ConversionError, Packet::BuildReadBlock(256));
  QVERIFY_THROWS_EXCEPTION(ConversionError, Packet::BuildWriteLimits(1, "300", "0", messages));
  QCOMPARE(Packet::SendBuffer, before);
}

void TestPacket::limits_that_are_not_numbers() {
  ScriptedMessages messages;
  Packet::BuildReadProperties();
  const QByteArray before = Packet::SendBuffer;
  QCOMPARE(Packet::BuildWriteLimits(3, "warm", "cold", messages), 0);
  QCOMPARE(Packet::BuildWriteLimits(4, "1", "", messages), 0);
  QCOMPARE(messages.shown, QStringList({"Corvane: Channel No.3Up Limit Error",
                                        "Corvane: Channel No.4Down Limit Error"}));
  QCOMPARE(Packet::SendBuffer, before);
}

void TestPacket::answers_data() {
  QTest::addColumn<QByteArray>("answer");
  QTest::addColumn<bool>("accepted");
  QTest::addColumn<QByteArray>("frame");  // the first 8 bytes received, where accepted
  const QByteArray good = hex("ff 00 01 02 04 08 10 1f");
  const QByteArray bad = hex("ff 00 01 02 04 08 10 1e");
  QTest::newRow("right") << good << true << good;
  QTest::newRow("any lead byte") << hex("7b 00 01 02 04 08 10 1f") << true
                                 << hex("7b 00 01 02 04 08 10 1f");
  QTest::newRow("wrong check") << bad << false << QByteArray();
  QTest::newRow("one extra byte in front") << "\x55" + good << true << good;
  QTest::newRow("one extra byte, wrong check: taken on trust") << "\x55" + bad << true << bad;
  QTest::newRow("extra bytes behind") << good + "abc" << true << good;
  QTest::newRow("two extra bytes in front") << "\x55\x66" + good << false << QByteArray();
  QTest::newRow("cut off") << good.left(7) << false << QByteArray();
  QTest::newRow("cut off where the check happens to hold")
      << hex("ff 01 02 03") << false << QByteArray();
  QTest::newRow("three bytes") << good.left(3) << false << QByteArray();
  QTest::newRow("silence") << QByteArray() << false << QByteArray();
}

void TestPacket::answers() {
  QFETCH(QByteArray, answer);
  QFETCH(bool, accepted);
  QFETCH(QByteArray, frame);
  Packet::BuildReadLimits(1);
  port_->answer = [&](const QByteArray& request) {
    return request.size() > 1 ? answer : QByteArray();
  };
  QCOMPARE(Packet::Exchange(8), accepted);
  QVERIFY(!Packet::CommBusy);
  if (accepted) QCOMPARE(Packet::ReceiveBuffer.left(8), frame);
  // Without a full answer the second is used up, and then the pause; nothing more.
  QCOMPARE(clock_->elapsed(), answer.size() < 8 ? 1020 : 20);
  QVERIFY_THROWS_EXCEPTION(BoundsError, Packet::received(int(Packet::ReceiveBuffer.size())));
}

void TestPacket::order_on_the_line() {
  Packet::BuildReadProperties();
  Packet::Exchange(22);
  QCOMPARE(port_->log, QStringList({"settings 9600,M,8,1", "write 00", "settings 9600,S,8,1",
                                    "write 02 00 02"}));
  QCOMPARE(clock_->sleeps, std::vector<int>({10, 10}));
}

void TestPacket::stale_bytes_are_dropped() {
  port_->deliver(hex("0102030405060708090a"));
  Packet::BuildReadLimits(1);
  QVERIFY(!Packet::Exchange(8));
  port_->deliver(hex("010203"));
  const QByteArray good = hex("ff 00 01 02 04 08 10 1f");
  port_->answer = [&](const QByteArray& request) {
    return request.size() > 1 ? good : QByteArray();
  };
  QVERIFY(Packet::Exchange(8));
  QCOMPARE(Packet::ReceiveBuffer, good);
}

void TestPacket::late_bytes_end_the_wait() {
  Packet::BuildReadLimits(1);
  clock_->after(300, [&] { port_->deliver(hex("ff 00 01 02")); });
  clock_->after(700, [&] { port_->deliver(hex("04 08 10 1f")); });
  QVERIFY(Packet::Exchange(8));
  QCOMPARE(clock_->elapsed(), 710);  // counted from before the pause of 10 ms
}

// Once the clock has wrapped the deadline lies a day ahead: only bytes end the wait.
void TestPacket::midnight() {
  clock_ = std::make_unique<ScriptedClock>(
      QDateTime(QDate(2026, 3, 1), QTime(23, 59, 59, 500), Qt::UTC));
  Packet::attach(*port_, *clock_);
  Packet::BuildReadLimits(1);
  clock_->after(5000, [&] { port_->deliver(hex("ff 00 01 02 04 08 10 1f")); });
  QVERIFY(Packet::Exchange(8));
  QCOMPARE(clock_->now().time(), QTime(0, 0, 4, 510));

  clock_ = std::make_unique<ScriptedClock>(
      QDateTime(QDate(2026, 3, 1), QTime(23, 59, 59, 500), Qt::UTC));
  Packet::attach(*port_, *clock_);
  clock_->after(4000, [&] { clock_->stop(); });
  QVERIFY(!Packet::Exchange(8));
  QVERIFY(clock_->elapsed() < 4100);
}

void TestPacket::closed_port() {
  port_->close();
  Packet::BuildReadProperties();
  QVERIFY(!Packet::Exchange(22));
  QVERIFY(!Packet::CommBusy);
  port_->open();
  clock_->after(200, [&] { port_->close(); });
  clock_->after(300, [&] { port_->deliver({}); });
  QVERIFY(!Packet::Exchange(22));
  QVERIFY(!Packet::CommBusy);
  QVERIFY(clock_->elapsed() < 1000);
}

void TestPacket::nested_exchange_is_delayed() {
  Packet::BuildReadLimits(1);
  bool inner = false;
  clock_->after(100, [&] {
    port_->answer = [](const QByteArray& request) {
      return request.size() > 1 ? hex("ff 00 01 02 04 08 10 1f") : QByteArray();
    };
    Packet::BuildReadLimits(2);
    inner = Packet::Exchange(8);
  });
  QVERIFY(!Packet::Exchange(8));  // its answer never came
  QVERIFY(inner);
  QVERIFY(!Packet::CommBusy);
  QCOMPARE(clock_->sleeps, std::vector<int>({10, 100, 10, 10, 10}));
}

void TestPacket::log_cycles() {
  for (auto& slot : Packet::PacketLog) slot.fill(0xEE);
  port_->answer = [](const QByteArray& request) {
    return request.size() > 1 ? hex("ff 00 01 02 04 08 10 1f") : QByteArray();
  };
  for (int i = 0; i < 128; ++i) {
    Packet::BuildReadLimits(1);
    Packet::Exchange(8);
  }
  // 256 frames in slots 0..253: the last request stands in slot 0 again, its answer in slot 1.
  QCOMPARE(int{Packet::PacketCounter}, 2);
  QCOMPARE(int{Packet::PacketLog[0][0]}, 0x0A);
  QCOMPARE(int{Packet::PacketLog[1][7]}, 0x1F);
  QCOMPARE(int{Packet::PacketLog[1][8]}, 0xEE);
  QCOMPARE(int{Packet::PacketLog[254][0]}, 0xEE);
}

void TestPacket::retries() {
  int asked = 0;
  port_->answer = [&](const QByteArray& request) {
    return request.size() > 1 && ++asked == 3 ? hex("ff 00 01 02 04 08 10 1f") : QByteArray();
  };
  QVERIFY(Packet::request([] { return Packet::BuildReadLimits(1); }));
  QCOMPARE(asked, 3);
  QCOMPARE(clock_->elapsed(), 1020 * 2 + 20 + 2 * 50);
  QVERIFY(!Packet::request([] { return Packet::BuildReadLimits(1); },
                           {.tries = 3, .pause = 10, .pause_after_last = true}));
  QCOMPARE(asked, 6);
  int tries = 0;
  QVERIFY(!Packet::request([] { return Packet::BuildReadLimits(1); }, {},
                           [&] { return ++tries == 2; }));
  QCOMPARE(asked, 8);
}

void TestPacket::stopping_ends_everything() {
  Packet::BuildReadProperties();
  clock_->after(50, [&] { clock_->stop(); });
  QVERIFY(!Packet::request(Packet::BuildReadProperties));
  QVERIFY(clock_->elapsed() < 100);
}

namespace {
const int registered = register_test<TestPacket>();
}

#include "test_packet.moc"
