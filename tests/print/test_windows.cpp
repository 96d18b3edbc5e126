// Print Set, the previews and the two commands, before a scripted printer.
#include <QWheelEvent>

#include "print/Frmprint.h"
#include "print/print_commands.h"
#include "print/print_world.h"
#include "support/main_window.h"
#include "views/frmdisplay.h"

class TestWindows : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init() { world_ = std::make_unique<PrintWorld>(); }
  void cleanup() { QVERIFY(!QGuiApplication::overrideCursor()); }

  void print_set_channels() {
    fill_recording(User::recording, 10, 2);
    User::recording.ChannelInfo[1][0] = "In & out";
    Frmprint dialog(world_->shell);
    QStringList boxes;
    for (const QCheckBox* box : dialog.Check1) {
      boxes << box->text() + (box->isEnabled() ? u'e' : u'd') + (box->isChecked() ? u'c' : u'-');
    }
    QCOMPARE(boxes.join(u' '), "趋势合并打印ec 4(In && out)ec 3(Damp)ec d- d-");
    QVERIFY(dialog.Combo1->count() == 14 && world_->printer.log == QStringList{"a4"});
    dialog.show();
    for (const std::size_t i : {1, 2}) dialog.Check1[i]->setChecked(false);
    press(dialog.Cmd1);
    QCOMPARE(world_->messages, QStringList{"Corvane: Please Select Channel"});
    QVERIFY(dialog.isVisible() && User::PrintPages == 0 && User::PrintChannels[1] == 1);
    for (const std::size_t i : {0, 2}) dialog.Check1[i]->setChecked(i == 2);
    QTest::mouseClick(dialog.Option1[1], Qt::LeftButton);
    press(dialog.Cmd1);
    QVERIFY(!dialog.isVisible() && User::PrintGraph && !dialog.Option1[0]->isChecked());
    QCOMPARE(User::PrintChannels, (std::array<std::int16_t, 5>{0, 0, 1, 0, 0}));
  }

  void print_set_pages() {
    const auto pages = [&](const char* typed, const std::function<void(Frmprint&)>& answer) {
      User::PrintPages = 7;
      Frmprint dialog(world_->shell);
      dialog.show();
      dialog.Combo1->setEditText(typed);
      answer(dialog);
      return dialog.isVisible() ? -1 : int{User::PrintPages};
    };
    const auto ok = [](Frmprint& dialog) { press(dialog.Cmd1); };
    QCOMPARE(pages("20", ok), 20);
    QCOMPARE(pages("abc", ok), 1);
    QCOMPARE(pages("", ok), 1);
    QCOMPARE(pages("2.5", ok), 2);
    QCOMPARE(pages("32768", ok), -1);
    QCOMPARE(pages("3", [](Frmprint& dialog) { press(dialog.Cmd2); }), 0);
    QCOMPARE(pages("3", [](Frmprint& dialog) { dialog.close(); }), 0);
  }

  void printer_set() {
    ScriptedPrinter& printer = world_->printer;
    const auto log = [&](const char* fault, std::optional<Orientation> chosen) {
      printer.log.clear();
      printer.present = Orientation::landscape;
      printer.fault = fault;
      printer.chosen = chosen;
      Frmprint dialog(world_->shell);
      dialog.show();
      press(dialog.Cmd3);
      return printer.log.join(dialog.isVisible() ? ", " : "closed");
    };
    QCOMPARE(log("", Orientation::portrait), "a4, setup 2, orientation 1");
    QCOMPARE(log("", {}), "a4, setup 2");
    QCOMPARE(log("none", Orientation::portrait), "");
    QVERIFY(world_->messages.isEmpty());
  }

  void scrolling() {
    frmGraphView preview(world_->shell);
    PageArea& area = *preview.area;
    const auto bars = [&] { return area.HScroll1->isVisible() + 2 * area.VScroll1->isVisible(); };
    preview.resize(400, 500);
    preview.show();
    QVERIFY(bars() == 3 && area.Pic->pos() == QPoint(-5, 0));
    area.HScroll1->setValue(area.HScroll1->maximum());
    area.VScroll1->setValue(area.VScroll1->maximum());
    const QPoint end = area.Pic->pos();
    QCOMPARE(area.Pic->geometry().bottomRight(), area.Picture2->rect().bottomRight());
    // The keys scroll although a button has the focus.
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Left}) QTest::keyClick(preview.cmdPrint, key);
    QVERIFY(area.Pic->x() > end.x() && area.Pic->y() > end.y());
    QTest::keyClick(preview.cmdPrint, Qt::Key_Home);
    QCOMPARE(area.Pic->y(), 0);
    QWheelEvent wheel({9, 9}, {9, 9}, {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(area.Picture2, &wheel);
    QVERIFY(area.Pic->y() < 0);
    preview.resize(1000, 700);
    QCOMPARE(bars(), 2);
    preview.resize(1000, 1300);
    QVERIFY(bars() == 0 && area.Pic->pos() == QPoint(0, 0));
  }

  // What becomes of the Recording meanwhile shows with the next tick, unless there is no view.
  void repaints_while_it_stands() {
    frmGraphView preview(world_->shell);
    preview.show();
    QVERIFY(preview.Timer1->isActive() && preview.Timer1->interval() == 1000);
    const auto tick = [&](const char* title, int shown) {
      User::recording.Title = title;
      User::recording.ViewCount = shown;
      Q_EMIT preview.Timer1->timeout({});
      return preview.area->Pic->grab().toImage();
    };
    const QImage before = tick("one", 100);
    const QImage after = tick("another", 100);
    QVERIFY(after != before && tick("third", 0) == after);
  }

  void sheet_paging() {
    frmDataView preview(world_->shell);
    preview.show();
    QVERIFY(QTest::qWaitForWindowActive(&preview));
    const QList buttons = {preview.cmdFirst, preview.cmdPrevious, preview.cmdNext, preview.cmdLast};
    QString seen;
    const auto look = [&] {
      seen += preview.Label1->text().mid(5, 1);
      for (const QPushButton* button : buttons) seen += button->isEnabled() ? u'+' : u'-';
    };
    for (const int i : {2, 1, 3, 0}) {
      press(buttons[i]);
      look();
    }
    for (const int key : {Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_End, Qt::Key_Home}) {
      QTest::keyClick(preview.area, Qt::Key(key));
      look();
    }
    QCOMPARE(seen, "2++++1--++3++--1--++2++++1--++3++--1--++");
    QTest::keyClick(&preview, Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(world_->printer.log.join(u','), "a4,start Cold store 7,page,page,end");
    QTest::keyClick(&preview, Qt::Key_Escape);
    QVERIFY(!preview.isVisible());
  }

  // The message stands without the hourglass over it, the preview under it; the next try prints.
  void printer_faults() {
    ScriptedPrinter& printer = world_->printer;
    frmGraphView graph(world_->shell);
    frmDataView sheet(world_->shell);
    bool hourglass = true;
    world_->shell.scripted_messages.meanwhile = [&] {
      hourglass = QGuiApplication::overrideCursor();
    };
    for (const char* fault : {"none", "start", "end", "page"}) {
      Preview& preview = *fault == 'p' ? static_cast<Preview&>(sheet) : graph;
      preview.show();
      printer.fault = fault;
      printer.pages.clear();
      world_->messages.clear();
      press(preview.cmdPrint);
      QCOMPARE(world_->messages, printer_error);
      QVERIFY(!hourglass && preview.isVisible() && printer.pages.empty());
      QVERIFY(printer.log.last() == "abort" && printer.pointer == Qt::WaitCursor);
      printer.fault.clear();
      press(preview.cmdPrint);
      QVERIFY(world_->messages == printer_error && !printer.pages.empty());
    }
  }

  void commands() {
    QStringList& log = world_->printer.log;
    const auto done = [&](void (*command)(Shell&), int pages, bool graph) {
      log.clear();
      const auto set = print_set(pages, graph);
      const auto quit = when_shown<Preview>([&](Preview& preview) {
        log << preview.objectName();
        press(preview.Command2);
      });
      command(world_->shell);
      log.removeAll("a4");
      return log.join(u',').remove(" Cold store 7");
    };
    QCOMPARE(done(printview_Click, 1, true), "frmGraphView");
    QCOMPARE(done(printview_Click, 1, false), "frmDataView");
    QCOMPARE(done(printview_Click, 0, true), "");
    QCOMPARE(done(printdata_Click, 3, true), "start,end,start,end,start,end");
    QCOMPARE(done(printdata_Click, 2, false), "start,page,end");
    QCOMPARE(done(printdata_Click, 9, false), "start,page,page,end");
    QCOMPARE(done(printdata_Click, 0, true), "");
    QCOMPARE(done(printdata_Click, -2, false), "");
    // A failing printer is asked once.
    world_->printer.fault = "end";
    QCOMPARE(done(printdata_Click, 100, true), "start,abort");
  }

  // In the real main window, which opens the one that holds the view, and ends under a preview.
  void the_view_of_the_historical_graph_is_printed() {
    ScriptedPort port;
    ScriptedClock clock;
    MainWindow main(port, clock);
    main.window->enable_data_commands(true);
    QList<QImage> pages;
    const auto view_page = [&](QWidget* closed) {
      const auto set = print_set(1, true);
      const auto look = when_shown<frmGraphView>([&](frmGraphView& preview) {
        pages << preview.area->picture();
        (closed ? closed : &preview)->close();
      });
      main.window->toolbar_button(4)->trigger();
    };
    view_page(nullptr);
    main.window->loaded_display()->cmd_Click(1);
    main.window->loaded_display()->Slider1->setValue(99);
    const PrintedView view = printed_view(*main.window);
    QVERIFY(view.start == 20 && view.recording.ViewCount == 80 &&
            view.high[1] == User::AxisHigh[1]);
    view_page(main.window.get());
    QVERIFY(pages.size() == 2 && pages[0] != pages[1]);
    QVERIFY(!QApplication::activeModalWidget() && !main.window->isVisible());
  }

 private:
  // Answers Print Set with this number of pages.
  static std::unique_ptr<QTimer> print_set(int pages, bool graph) {
    return when_shown<Frmprint>([=](Frmprint& dialog) {
      dialog.Combo1->setEditText(QString::number(pages));
      if (graph) dialog.Option1[1]->click();
      press(dialog.Cmd1);
    });
  }

  std::unique_ptr<PrintWorld> world_;
};

const int registered_windows = register_test<TestWindows>();

#include "test_windows.moc"
