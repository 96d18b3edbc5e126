// Print Set, the previews and the two commands, with a scripted printer.
#include "print/Frmprint.h"
#include "print/print_commands.h"
#include "print/print_world.h"
#include "views/frmdisplay.h"

class TestPrintWindows : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init() {
    world_ = std::make_unique<PrintWorld>();
    world_->printer.print_to_file("/dev/null");
  }
  void cleanup() { QVERIFY(!QGuiApplication::overrideCursor()); }

  void print_set() {
    PrintWorld(10, 2);
    User::recording.ChannelInfo[1][0] = "In & out";
    Frmprint dialog(world_->shell);
    QString boxes;
    for (const QCheckBox* box : dialog.Check1) {
      boxes += box->text() + (box->isEnabled() ? u'e' : u'd') + (box->isChecked() ? "c " : "- ");
    }
    QCOMPARE(boxes, "趋势合并打印ec 4(In && out)ec 3(Humidity)ec d- d- ");
    dialog.show();
    // The printer's dialog: cancelled, confirmed, without a printer.
    press(dialog.Cmd3);
    world_->printer.chosen = Orientation::landscape;
    press(dialog.Cmd3);
    world_->printer.fault = "none";
    press(dialog.Cmd3);
    QCOMPARE(world_->printer.log.join(u','), "a4,setup,setup");
    QVERIFY(world_->printer.orientation() == Orientation::landscape);
    for (const std::size_t i : {1, 2}) dialog.Check1[i]->setChecked(false);
    press(dialog.Cmd1);
    QCOMPARE(world_->messages, QStringList{"Corvane: Please Select Channel"});
    QVERIFY(dialog.isVisible() && User::PrintPages == 0 && User::PrintChannels[1] == 1);
    for (const std::size_t i : {0, 2}) dialog.Check1[i]->setChecked(i == 2);
    press(dialog.Cmd1);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(User::PrintChannels, (std::array<std::int16_t, 5>{0, 0, 1, 0, 0}));
  }

  void graph_preview() {
    frmGraphView preview(world_->shell);
    PageArea& area = *preview.area;
    // As wide as a page and its bar, so that no second bar is needed.
    preview.show();
    preview.resize(794 + area.VScroll1->sizeHint().width(), 500);
    QVERIFY(!area.HScroll1->isVisible() && area.VScroll1->isVisible());
    preview.resize(794, 500);  // the bar down takes of that
    QVERIFY(area.HScroll1->isVisible());
    preview.resize(400, 500);
    QVERIFY(area.HScroll1->isVisible() && area.VScroll1->isVisible() && area.Pic->x() == -5);
    // The keys scroll although a button has the focus.
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Right}) QTest::keyClick(preview.cmdPrint, key);
    QCOMPARE(area.Pic->geometry().bottom(), area.Picture2->rect().bottom());
    QVERIFY(area.Pic->x() < -5);
    preview.resize(1000, 1300);
    QVERIFY(!area.HScroll1->isVisible() && !area.VScroll1->isVisible());
    QCOMPARE(area.Pic->pos(), QPoint(0, 0));
    // The next tick shows a change of the view, unless the view is empty.
    QVERIFY(preview.Timer1->isActive() && preview.Timer1->interval() == 1000);
    QList<QImage> seen;
    for (const int shown : {100, 50, 0}) {
      User::recording.ViewCount = shown;
      Q_EMIT preview.Timer1->timeout({});
      seen << area.Pic->grab().toImage();
    }
    QVERIFY(seen[1] != seen[0] && seen[2] == seen[1]);
  }

  void sheet_preview() {
    User::PrintPages = 2;
    frmDataView preview(world_->shell);
    preview.show();
    QVERIFY(QTest::qWaitForWindowActive(&preview));
    QString seen;
    for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_End, Qt::Key_PageUp, Qt::Key_Home}) {
      QTest::keyClick(preview.area, key);
      seen += preview.Label1->text().mid(5, 1) + (preview.cmdFirst->isEnabled() ? u'<' : u'|') +
              (preview.cmdPrevious->isEnabled() ? u'<' : u'|') +
              (preview.cmdNext->isEnabled() ? u'>' : u'|') +
              (preview.cmdLast->isEnabled() ? u'>' : u'|');
    }
    QCOMPARE(seen, "2<<>>3<<||2<<>>1||>>");
    QVERIFY(preview.Label2->text().contains("all 3 pages") &&
            preview.Label2->text().endsWith(": 2."));
    QTest::keyClick(&preview, Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(world_->printer.log.join(u','), "a4,start Cold store,page,page,end");
    world_->printer.fault = "end";
    press(preview.cmdPrint);
    QVERIFY(preview.isVisible() && world_->messages == printer_error);
    QTest::keyClick(&preview, Qt::Key_Escape);
    QVERIFY(!preview.isVisible());
  }

  // Both commands, first with a printer that fails: the document is discarded, the message appears
  // without the hourglass, and the graph's next copy is tried all the same.
  void commands() {
    QStringList& log = world_->printer.log;
    const auto done = [&](void (*command)(Shell&), const char* pages, bool graph) {
      log.clear();
      const auto set = answer(pages, graph);
      const auto quit = when_shown<Preview>([&](Preview& preview) {
        log << preview.objectName();
        press(preview.Command2);
      });
      command(world_->shell);
      log.removeAll("a4");
      return log.join(u',').remove(" Cold store");
    };
    world_->main.messages.meanwhile = [&] {
      log << (QGuiApplication::overrideCursor() ? "hourglass" : world_->messages.takeLast());
    };
    const QString told = ",abort," + printer_error[0];
    world_->printer.fault = "end";
    QCOMPARE(done(printdata_Click, "2", true), "start" + told + ",start" + told);
    world_->printer.fault = "page";
    QCOMPARE(done(printdata_Click, "100", false), "start" + told);
    world_->printer.fault = "none";
    QCOMPARE(done(printdata_Click, "2", true), told.mid(1) + told);
    world_->printer.fault.clear();
    QVERIFY(!log.contains("end") && world_->shell.loaded_display());
    QCOMPARE(done(printview_Click, "1", true), "frmGraphView");
    QCOMPARE(done(printview_Click, "1", false), "frmDataView");
    QCOMPARE(done(printdata_Click, "3", true), "start,end,start,end,start,end");
    QCOMPARE(done(printdata_Click, "9", false), "start,page,page,end");
    QCOMPARE(done(printdata_Click, "abc", true), "start,end");
    for (const char* nothing : {"0", "-2", "Cancel", "close box"}) {
      QCOMPARE(done(printdata_Click, nothing, false), "");
    }
    QCOMPARE(done(printview_Click, "32768", true), "stayed open");
  }

  void the_view_of_the_historical_graph_is_printed() {
    world_->shell.show_display();
    world_->shell.loaded_display()->cmd_Click(1);
    world_->shell.loaded_display()->Slider1->setValue(99);
    const PrintedView view = printed_view(world_->shell);
    QVERIFY(view.start == 20 && view.recording.ViewCount == 80);
    QVERIFY(view.high[1] == User::AxisHigh[1] && view.low[1] == User::AxisLow[1]);
  }

  void the_program_ends_under_a_preview() {
    frmmdi& window = *world_->main.window;
    window.enable_data_commands(true);
    const auto set = answer("1", true);
    const auto end = when_shown<Preview>([&](Preview&) { window.close(); });
    window.toolbar_button(4)->trigger();
    QVERIFY(!end->isActive() && !QApplication::activeModalWidget() && !window.isVisible());
  }

 private:
  // Answers Print Set with this number of pages, or with "Cancel" or "close box".
  std::unique_ptr<QTimer> answer(const QString& how, bool graph) {
    return when_shown<Frmprint>([=, this](Frmprint& dialog) {
      dialog.Combo1->setEditText(how);
      if (graph) dialog.Option1[1]->click();
      if (how == "close box") return void(dialog.close());
      press(how == "Cancel" ? dialog.Cmd2 : dialog.Cmd1);
      if (dialog.isVisible()) world_->printer.log << "stayed open";
      dialog.close();
    });
  }

  std::unique_ptr<PrintWorld> world_;
};

const int registered_windows = register_test<TestPrintWindows>();

#include "test_windows.moc"
