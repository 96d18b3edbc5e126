// Tries every fault of the recorder in software at the first, a middle and the last request of
// everything that the program does with a recorder: once, which a retry mends, or three times.
#include "support/recordings.h"
#include "support/simulated_window.h"

namespace {

const QDateTime start(QDate(2026, 2, 1), QTime(8, 0), Qt::UTC);
constexpr int samples = 250;  // eight blocks
constexpr int polls = 5;

// Where the Recording differs from what the recorder measured.
QString difference() {
  return Measured{0x0F, start, 30}.difference(User::recording, samples);
}

}  // namespace

class TestFaultMatrix : public QObject {
  Q_OBJECT

  struct Row {
    void (TestFaultMatrix::*check)(const Row&);
    simulator::FaultKind kind;
    int request;  // the first one struck, counted from the operation's start
    int strikes;

    bool unplugs() const { return kind == simulator::FaultKind::Unplug; }
    // An extra byte is tolerated; an answer that is 1.5 s late comes in time for the second try.
    bool fails() const {
      using enum simulator::FaultKind;
      return unplugs() || (strikes == 3 && kind != Extra && kind != Late);
    }
  };

  SimulatedWindow* w_ = nullptr;

  frmrealtime& window() { return *w_->realtime(); }
  QStringList messages() { return w_->main.told(); }
  bool enabled(const QString& command) { return w_->main.window->menu_entry(command)->isEnabled(); }

  void plug_in(const Row* row = nullptr, const QString& fault = {}) {
    simulator::Settings settings = {
        .readings = 4 * samples, .interval_s = 30, .start = start, .title = "Cold"};
    settings.battery_volts = 2.5;  // just enough
    if (!fault.isEmpty()) return w_->plug_in(settings, fault);
    for (int i = 0; row && i < row->strikes; ++i) {
      settings.faults.push_back({.kind = row->kind, .request = row->request + i});
    }
    w_->plug_in(settings);
  }
  void link() { w_->main.link(); }
  void open_window() {
    w_->port.open();
    w_->main.run("realtime");
    window().live().Timer1->set_enabled(true);
  }
  void download() { w_->main.read(); }

  void check_link(const Row& row) {
    link();
    // Only the first request is the link's own; the others are its window's, which is silent.
    const bool fails = row.fails() && row.request == 1;
    QCOMPARE(messages(), fails ? QStringList("Warnning: Link Timeout!") : QStringList());
    QCOMPARE(enabled("unlink"), !fails);
    QCOMPARE(enabled("link"), fails);
    QCOMPARE(w_->port.is_open(), !fails);
    QCOMPARE(w_->realtime() != nullptr, !fails);
  }
  // Properties, texts, status, limits of channels 1 to 4: the fields after a failure stay empty.
  void check_refresh(const Row& row) {
    w_->port.open();
    w_->main.run("realtime");
    QCOMPARE(messages(), QStringList());
    const int answered = row.fails() ? row.request - 1 : 7;
    const QStringList shown = {window().setup().Text3->text(),    window().setup().Text6->text(),
                               window().setup().Text4->text(),    window().setup().Text1[0]->text(),
                               window().setup().Text1[2]->text(), window().setup().Text1[4]->text(),
                               window().setup().Text1[6]->text()};
    const QStringList expected = {"2026-2-1  8:0:0", "Cold",  "Ok",   "85.00",
                                  "85.00",           "85.00", "85.00"};
    for (int i = 0; i < 7; ++i) QCOMPARE(shown[i], i < answered ? expected[i] : QString());
  }
  void check_properties_set(const Row& row) {
    window().setup().Text6->setText("Cellar");
    w_->main.messages.answers = {true};
    window().setup().Command4->click();
    const QStringList said = messages().mid(1);
    QCOMPARE(said, row.fails() ? QStringList("Corvane: Setting is Failed") : QStringList());
    QCOMPARE(window().live().Timer1->enabled(), !row.fails());
    if (!row.fails()) QCOMPARE(w_->recorder->readings(w_->clock.now()), 0);
    if (!row.fails()) QCOMPARE(window().setup().Text6->text(), "Cellar");
  }
  void check_polling(const Row& row) {
    int missed = 0;
    for (int n = 1; n <= polls; ++n) {
      const int before = window().live().monitor().buffer.LiveCount();
      Q_EMIT window().live().Timer1->tick();
      const LiveBuffer& buffer = window().live().monitor().buffer;
      if (buffer.LiveCount() == before) ++missed;
      // Each reading was measured in one of the last four seconds.
      bool live = buffer.LiveCount() == before;
      for (int seconds_ago = 0; !live && seconds_ago < 4; ++seconds_ago) {
        const QDateTime time = w_->clock.now().addSecs(-seconds_ago);
        live = buffer.LiveValues(before, 3) ==
               static_cast<float>(Measured::value(w_->recorder->live(3, time)));
      }
      QVERIFY(live);
      w_->clock.sleep(5000);
    }
    QCOMPARE(messages(), QStringList());
    // An unplugged recorder misses every later poll too.
    QCOMPARE(missed, !row.fails() ? 0 : row.unplugs() ? polls - row.request + 1 : 1);
    QCOMPARE(w_->main.window->Sts1[1]->text(), missed > 1 ? "Link Error" : "Link Ok");
  }
  void check_download(const Row& row) {
    User::recording.Title = "Kept";
    User::recording.SampleCount = 1;
    download();
    QCOMPARE(messages(), row.fails() ? QStringList("Warnning: Link Timeout!") : QStringList());
    QCOMPARE(User::recording.Title, row.fails() ? "Kept" : "Cold");
    if (!row.fails()) QCOMPARE(difference(), QString());
    QVERIFY(window().live().Timer1->enabled());
    QCOMPARE(w_->main.window->Sts1[0]->text(), QString());
    QCOMPARE(w_->main.window->PrgB1->value(), 0);
  }

  void run(const QString& task) {
    if (task == "link") return link();
    if (task == "read") return download();
    if (task == "poll") Q_EMIT window().live().Timer1->tick();
    if (task == "set") {
      w_->main.messages.answers = {true};
      window().setup().Command4->click();
    }
  }

 private Q_SLOTS:
  void waits_without_end_data() {
    QTest::addColumn<QString>("task");
    QTest::addColumn<QString>("cause");
    for (const char* task : {"link", "read", "set", "poll"}) {
      for (const char* cause : {"midnight", "clock set back"}) {
        QTest::addRow("%s, %s", task, cause) << task << cause;
      }
    }
  }
  // No answer comes, and the wait for it has no end. After a while everything works inside it, and
  // the first bytes end it. Its own task then leaves the work of others alone.
  void waits_without_end() {
    QFETCH(QString, task);
    QFETCH(QString, cause);
    SimulatedWindow world(true);
    w_ = &world;
    User::RecorderType = 3;
    User::recording = Recording();
    plug_in();
    link();
    if (task == "link") world.main.run("unlink");
    plug_in(nullptr, "silent");
    const QDateTime midnight(QDate(2026, 3, 2), QTime(0, 0), Qt::UTC);
    if (cause == "midnight") world.clock.set(midnight.addMSecs(-300));
    world.clock.after(200, [&] {
      if (cause != "midnight") world.clock.set(world.clock.now().addSecs(-3600));
    });
    bool inside = false;
    world.clock.after(3000, [&] {
      QCOMPARE(enabled("read"), task == "poll");  // too early
      QVERIFY(!enabled("link"));
    });
    world.clock.after(9000, [&] {
      plug_in();
      QTRY_COMPARE(enabled(task == "link" ? "link" : "read"), true);
      if (task == "link") link();
      const int before = window().live().monitor().buffer.LiveCount();
      run("poll");
      QCOMPARE(window().live().monitor().buffer.LiveCount(), before + 1);
      if (task != "poll" && task != "set") run("set");
      if (task != "read") download();
      inside = true;
    });
    run(task);
    QVERIFY(inside);
    // The task that was overtaken reports its failure if another command came in between.
    const QString asked =
        "Corvane: Setting Recorder's Properties will Lose Historical Sampling，Continue?";
    const QHash<QString, QStringList> said = {{"link", {asked, "Corvane: No Data"}},
                                              {"poll", {}},
                                              {"set", {asked, "Corvane: Setting is Failed"}}};
    QCOMPARE(messages(), said.value(task, {asked, "Warnning: Link Timeout!"}));
    QVERIFY(enabled("unlink") && enabled("read") && world.port.is_open());
    QCOMPARE(world.main.window->PrgB1->value(), 0);
    User::recording = Recording();
    plug_in();
    download();
    QCOMPARE(messages(), QStringList());
    QCOMPARE(difference(), QString());
  }

  // A dialog opened while a poll waits stops neither the polling nor its report on the link.
  void dialog_during_a_poll() {
    for (const auto& [fault, readings, state] :
         {std::tuple("late:ms=900", 3, "Link Ok"), {"silent", 0, "Link Error"}}) {
      SimulatedWindow world(true);
      w_ = &world;
      User::RecorderType = 3;
      plug_in();
      open_window();
      plug_in(nullptr, fault);
      bool shown = false;
      world.clock.after(300, [&] {
        const auto script = when_shown<QDialog>([&](QDialog& about) {
          run("poll");  // the waiting poll is too young
          QCOMPARE(window().live().monitor().buffer.LiveCount(), 0);
          for (int n = 0; n < 3; ++n) {
            world.clock.sleep(5000);
            run("poll");
          }
          QCOMPARE(window().live().monitor().buffer.LiveCount(), readings);
          QCOMPARE(world.main.window->Sts1[1]->text(), state);
          shown = true;
          about.close();
        });
        world.main.run("about");
      });
      run("poll");
      QVERIFY(shown);
    }
  }

  // A Real-time Data window that is closed and opened again during a download reads the recorder
  // when it is free. The download keeps the title and channels that it began with.
  void window_opened_again_during_a_download() {
    SimulatedWindow world(true);
    w_ = &world;
    User::RecorderType = 3;
    User::recording = Recording();
    plug_in();
    open_window();
    world.clock.after(700, [&] {
      world.main.run("unlink");
      world.main.run("realtime");
      QCOMPARE(window().setup().Text6->text(), "");
      QVERIFY(!enabled("link"));
    });
    download();
    QCOMPARE(messages(), QStringList());
    QCOMPARE(User::recording.Title, "Cold");
    QCOMPARE(difference(), QString());
    QTRY_COMPARE(window().setup().Text6->text(), "Cold");
    QCOMPARE(window().setup().Text1[6]->text(), "85.00");
    QVERIFY(enabled("link"));
  }

  void outcome_data() {
    QTest::addColumn<Row>("row");
    // The first, a middle and the last request of each operation.
    for (const auto& [name, check, requests] :
         {std::tuple("link", &TestFaultMatrix::check_link, std::array{1, 4, 8}),
          {"refresh", &TestFaultMatrix::check_refresh, {1, 4, 7}},
          {"Properties Set", &TestFaultMatrix::check_properties_set, {1, 3, 6}},
          {"polling", &TestFaultMatrix::check_polling, {1, 3, polls}},
          {"download", &TestFaultMatrix::check_download, {1, 5, 9}}}) {
      for (const char* fault :
           {"silent", "check", "extra", "truncated", "late", "garbage", "unplug"}) {
        for (const int request : requests) {
          for (const int strikes : {1, 3}) {
            QTest::addRow("%s, %s at request %d, %dx", name, fault, request, strikes)
                << Row{check, simulator::fault_from_text(fault)->kind, request, strikes};
          }
        }
      }
    }
  }
  void outcome() {
    QFETCH(Row, row);
    SimulatedWindow world(true);
    w_ = &world;
    User::RecorderType = 3;
    User::recording = Recording();
    plug_in();
    const bool opens_itself =
        row.check == &TestFaultMatrix::check_link || row.check == &TestFaultMatrix::check_refresh;
    if (!opens_itself) open_window();
    plug_in(&row);
    (this->*row.check)(row);
    if (QTest::currentTestFailed()) return;

    // The recorder works again and is plugged in: all its readings can be downloaded.
    plug_in();
    if (world.port.is_open()) world.port.close();
    link();
    if (!enabled("unlink")) link();
    download();
    QCOMPARE(messages(), QStringList());
    QCOMPARE(difference(), QString());
  }
};

const int registered = register_test<TestFaultMatrix>();

#include "test_fault_matrix.moc"
