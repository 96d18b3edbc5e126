#include "support/recordings.h"
#include "support/simulated_window.h"

namespace {

const QDateTime start(QDate(2026, 2, 1), QTime(8, 0), Qt::UTC);

simulator::Settings memory(int readings, unsigned mask = 0x03) {
  return {.mask = mask, .readings = readings, .interval_s = 30, .start = start, .title = "Cold"};
}

QString difference(int mask, int count, int first = 0) {
  return Measured{unsigned(mask), start, 30}.difference(User::recording, count, first);
}

}  // namespace

// Read Data in the real main window, from a recorder in software.
class TestDownload : public QObject {
  Q_OBJECT

  // Makes a world in which the port and the Real-time Data window are open on the recorder.
  void open(const simulator::Settings& settings) {
    w_ = std::make_unique<SimulatedWindow>();
    User::RecorderType = 3;
    User::recording = Recording();
    w_->plug_in(settings);
    w_->port.open();
    w_->main.run("realtime");
    w_->realtime()->live().Timer1->set_enabled(true);
  }
  // Runs Read Data and returns the messages that it has shown.
  QString read(const std::function<void(frmhistorytime&)>& choose = {}) {
    w_->main.read(choose);
    return w_->main.told().join('|');
  }

  std::unique_ptr<SimulatedWindow> w_;

 private Q_SLOTS:
  // A short oldest block; blocks of two and four channels; a full memory; three of the segments.
  // Segment 0 is the oldest, but the recorder numbers its blocks from the newest.
  void readings_arrive_as_recorded() {
    for (const auto& [mask, readings, from, to, first, count] :
         {std::array{0x04, 200, 0, 1, 0, 200},
          {0x0A, 1000, 0, 7, 0, 500},
          {0x0F, 516, 0, 4, 0, 129},
          {0x0F, 32000, 0, 249, 0, 8000},
          {0x03, 1000, 2, 4, 52 + 64, 192}}) {
      open(memory(readings, unsigned(mask)));
      const QString messages = read([&, chosen = std::pair(from, to)](frmhistorytime& dialog) {
        QCOMPARE(dialog.Combo2->currentIndex(), (readings + 127) / 128 - 1);
        dialog.Combo1->setCurrentIndex(chosen.first);
        dialog.Combo2->setCurrentIndex(chosen.second);
      });
      QCOMPARE(messages + difference(mask, count, first), "");
      // The download sets 128; the window that opens on the Recording then shows all of it.
      QCOMPARE(User::recording.ViewCount, count);
      QVERIFY(w_->main.window->loaded_display());
      QVERIFY(w_->main.window->menu_entry("save")->isEnabled());
    }
  }

  void header_and_progress() {
    open(memory(256, 0x0A));
    QStringList seen;
    connect(w_->main.window->Text1, &QLineEdit::textChanged, this, [&](const QString& text) {
      seen << text + ' ' + QString::number(w_->main.window->PrgB1->value());
    });
    read([&](frmhistorytime& dialog) { seen << dialog.Text1->toPlainText(); });
    const QString message =
        QStringLiteral("  Recorder's Historical Data Is Form%1To%2，Please Select Data Segment")
            .arg(general_date_time_text(start), general_date_time_text(start.addSecs(30 * 128)));
    QCOMPARE(seen, QStringList({message, "1% 1", "51% 51", " 0"}));
    // A pause after each of two blocks, in ms.
    QCOMPARE(std::ranges::count(w_->clock.sleeps, 100), 2);
    const Recording& got = User::recording;
    QStringList header = {got.Title, got.RecorderName};
    for (const auto& row : got.ChannelInfo) header << row[0] << row[1];
    QCOMPARE(header.join('|'), "Cold|Four|2|4|Damp|Wall|%RH|C||");
  }

  void nothing_to_read() {
    for (const bool marked : {true, false}) {
      open(memory(marked ? 0 : 100));
      for (QCheckBox* box : w_->realtime()->setup().Check1) box->setChecked(marked);
      w_->main.window->set_panel(2, "Link Ok");
      QCOMPARE(read(), "Corvane: No Data");
      QCOMPARE(w_->main.window->Sts1[0]->text() + w_->main.window->Sts1[1]->text(), "Read Data");
      QVERIFY(!w_->realtime()->live().Timer1->enabled());
    }
  }

  // After Cancel polling is on, even if it was off before.
  void wrong_order_keeps_the_dialog() {
    open(memory(1000));
    w_->realtime()->pause_polling();
    read([&](frmhistorytime& dialog) {
      dialog.Combo1->setCurrentIndex(3);
      dialog.Combo2->setCurrentIndex(2);
      press(dialog.Command1);
      QCOMPARE(w_->main.messages.shown.join('|'), "Corvane: Start Time>End Time");
      QVERIFY(dialog.isVisible() && dialog.Combo1->count() == 8);
      press(dialog.Command2);
    });
    QVERIFY(User::recording.SampleCount == 0 && w_->realtime()->live().Timer1->enabled());
    w_->main.window->unload_realtime();
    QCOMPARE(read(), "");
    QCOMPARE(difference(0x03, 500), "");
    QVERIFY(w_->realtime() && !w_->realtime()->isVisible());
  }

  // Escape and Exit come in the wait for the properties, at the segment dialog and at the message
  // of a failure.
  void ends_before_the_first_block() {
    for (const bool quits : {false, true}) {
      for (const QString place : {"wait", "dialog", "message"}) {
        open(memory(1000));
        const auto end = [&] {
          if (quits) return void(w_->main.window->close());
          QTest::keyClick(w_->main.window.get(), Qt::Key_Escape);
        };
        if (place == "message") w_->main.messages.meanwhile = end;
        if (place == "wait") w_->clock.after(500, end);
        if (place != "dialog") w_->plug_in(memory(1000), "silent:command=02");
        const QString said = read([&](frmhistorytime& dialog) {
          if (quits) return end();
          dialog.reject();
        });
        QCOMPARE(said, place == "message" ? "Warnning: Link Timeout!" : "");
        QCOMPARE(w_->realtime()->live().Timer1->enabled(), !quits);
        QCOMPARE(int(w_->port.log.filter("write 01 01").size()), 0);
      }
    }
  }

  // Each command comes in the middle of the wait for a block.
  void survives_what_the_user_does() {
    for (const QString command : {"unlink", "close", "read", "link", "Quit", "Properties Set",
                                  "polling", "Escape", "unmark", "Escape in the graph"}) {
      open(memory(1000));
      w_->main.messages.answers = {true};
      bool done = false;
      const auto act = [&] {
        if (command == "read") read();
        if (command == "Properties Set") w_->realtime()->setup().Command4->click();
        if (command == "unmark") w_->realtime()->setup().Check1[1]->click();
        if (command == "polling") Q_EMIT w_->realtime()->live().Timer1->tick();
        QVERIFY(QGuiApplication::overrideCursor());
        if (command == "Escape in the graph") {
          GraphSurface& graph = *w_->realtime()->live().Pic1;
          w_->main.window->activateWindow();
          QVERIFY(QTest::qWaitForWindowActive(w_->main.window.get()));
          graph.setFocus();
          for (const auto key : {Qt::Key_1, Qt::Key_Escape}) QTest::keyClick(&graph, key);
          QVERIFY(!graph.chosen());
        }
        if (command == "Escape") QTest::keyClick(w_->main.window.get(), Qt::Key_Escape);
        if (w_->main.window->menu_entry(command) && command != "read") w_->main.run(command);
        done = User::recording.SampleCount == 0;
      };
      QCOMPARE(read([&](frmhistorytime&) { w_->clock.after(450, act); }), "");
      QVERIFY(done);
      if (auto* window = w_->realtime()) QCOMPARE(window->live().monitor().buffer.LiveCount(), 0);
      const bool ends = command == "Quit" || command == "Escape";
      QVERIFY(!QGuiApplication::overrideCursor());
      if (command == "Escape") {
        QCOMPARE(w_->main.window->Sts1[0]->text() + w_->main.window->Text1->text(), "");
        QVERIFY(w_->realtime()->live().Timer1->enabled());
      }
      QCOMPARE(command + difference(0x03, ends ? 0 : 500), command);
      QCOMPARE(User::recording.Title, ends ? "" : "Cold");
    }
  }
};

const int registered = register_test<TestDownload>();

#include "test_download.moc"
