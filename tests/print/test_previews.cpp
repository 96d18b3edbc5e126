#include <QGuiApplication>
#include <QTest>
#include <QWheelEvent>

#include "app/user.h"
#include "print/Frmprint.h"
#include "print/frmDataView.h"
#include "print/frmGraphView.h"
#include "print/print_commands.h"
#include "print/sample_recording.h"
#include "support/dialogs.h"
#include "support/fake_shell.h"
#include "support/main_window.h"
#include "support/runner.h"
#include "views/frmdisplay.h"

namespace {

const QString printer_error = QStringLiteral("Corvane: Default Printer Error");

}  // namespace

class TestPreviews : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void cleanup();
  void page_sizes_data();
  void page_sizes();
  void preview_and_printout_are_the_same_page();
  void scrolling();
  void bars_vanish_when_the_page_fits();
  void repaints_while_it_stands();
  void sheet_paging();
  void sheet_prints_all_its_pages();
  void printer_faults_data();
  void printer_faults();
  void print_view_data();
  void print_view();
  void print_data();
  void print();
  void a_failing_printer_is_asked_once();
  void the_view_of_the_historical_graph_is_printed();
  void closing_the_program_under_a_preview();

 private:
  // Answers Print Set with this number of pages.
  void print_set(int pages, bool graph);

  std::unique_ptr<FakeShell> shell_;
  std::unique_ptr<QTimer> script_;
};

void TestPreviews::init() {
  shell_ = std::make_unique<FakeShell>();
  User::recording = Recording();
  fill_recording(User::recording, 100, 4);
  User::AxisHigh = {30, 40, 50, 60, 0};
  User::AxisLow = {10, 20, 30, 40, 0};
  User::PrintChannels = {1, 1, 1, 1, 1};
}

void TestPreviews::cleanup() {
  QVERIFY(!QGuiApplication::overrideCursor());
}

void TestPreviews::print_set(int pages, bool graph) {
  script_ = when_shown<Frmprint>([pages, graph](Frmprint& dialog) {
    dialog.Combo1->setEditText(QString::number(pages));
    if (graph) dialog.Option1[1]->click();
    press(dialog.Cmd1);
  });
}

void TestPreviews::page_sizes_data() {
  QTest::addColumn<int>("orientation");
  QTest::addColumn<QSize>("size");
  QTest::addColumn<int>("scroll");
  QTest::newRow("portrait") << 1 << QSize(794, 1123) << 5;
  QTest::newRow("landscape") << 2 << QSize(1123, 794) << 0;
  QTest::newRow("no printer") << 0 << QSize(794, 1123) << 5;
}

void TestPreviews::page_sizes() {
  QFETCH(int, orientation);
  QFETCH(QSize, size);
  QFETCH(int, scroll);
  ScriptedPrinter& printer = shell_->scripted_printer;
  if (orientation == 0) {
    printer.fault = QStringLiteral("none");
  } else {
    printer.present = static_cast<Orientation>(orientation);
  }
  frmGraphView graph(*shell_);
  graph.show();
  QCOMPARE(graph.area->Pic->size(), size);
  QCOMPARE(graph.area->HScroll1->value(), scroll);
  QVERIFY(graph.Timer1->isActive());
  frmDataView sheet(*shell_);
  sheet.show();
  QCOMPARE(sheet.area->Pic->size(), size);
}

void TestPreviews::preview_and_printout_are_the_same_page() {
  for (const auto orientation : {Orientation::portrait, Orientation::landscape}) {
    shell_->scripted_printer.present = orientation;
    shell_->scripted_printer.pages.clear();
    frmGraphView graph(*shell_);
    graph.show();
    press(graph.cmdPrint);
    frmDataView sheet(*shell_);
    sheet.show();
    press(sheet.cmdPrint);
    const auto& pages = shell_->scripted_printer.pages;
    QCOMPARE(pages.size(), orientation == Orientation::portrait ? std::size_t{4} : std::size_t{5});
    QCOMPARE(pages[0], graph.area->picture());
    press(sheet.cmdNext);
    QCOMPARE(pages[2], sheet.area->picture());
    QVERIFY(pages[2] != pages[1]);
  }
}

void TestPreviews::scrolling() {
  frmGraphView preview(*shell_);
  preview.resize(400, 500);
  preview.show();
  QVERIFY(QTest::qWaitForWindowActive(&preview));
  PageArea& area = *preview.area;
  QVERIFY(area.HScroll1->isVisible());
  QVERIFY(area.VScroll1->isVisible());
  QCOMPARE(area.Pic->pos(), QPoint(-5, 0));

  area.HScroll1->setValue(area.HScroll1->maximum());
  area.VScroll1->setValue(area.VScroll1->maximum());
  QCOMPARE(area.Pic->geometry().bottomRight(), area.Picture2->rect().bottomRight());

  // The keys scroll although a button has the focus.
  preview.cmdPrint->setFocus();
  QTest::keyClick(preview.cmdPrint, Qt::Key_Up);
  QVERIFY(area.VScroll1->value() < area.VScroll1->maximum());
  QTest::keyClick(preview.cmdPrint, Qt::Key_Left);
  QVERIFY(area.HScroll1->value() < area.HScroll1->maximum());
  QTest::keyClick(preview.cmdPrint, Qt::Key_Home);
  QCOMPARE(area.Pic->y(), 0);
  QVERIFY(preview.cmdPrint->hasFocus());

  const QPointF middle = area.Picture2->rect().center();
  QWheelEvent wheel(middle, area.Picture2->mapToGlobal(middle), {}, {0, -120}, Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(area.Picture2, &wheel);
  QVERIFY(area.Pic->y() < 0);
}

void TestPreviews::bars_vanish_when_the_page_fits() {
  frmGraphView preview(*shell_);
  preview.resize(1000, 1300);
  preview.show();
  QVERIFY(!preview.area->HScroll1->isVisible());
  QVERIFY(!preview.area->VScroll1->isVisible());
  QCOMPARE(preview.area->HScroll1->value(), 5);
  QCOMPARE(preview.area->Pic->pos(), QPoint(0, 0));
  preview.resize(1000, 700);
  QVERIFY(!preview.area->HScroll1->isVisible());
  QVERIFY(preview.area->VScroll1->isVisible());
}

// What becomes of the Recording meanwhile shows with the next tick, unless there is no view.
void TestPreviews::repaints_while_it_stands() {
  frmGraphView preview(*shell_);
  preview.show();
  QCOMPARE(preview.Timer1->interval(), 1000);
  const auto tick_and_grab = [&] {
    Q_EMIT preview.Timer1->timeout({});
    return preview.area->Pic->grab().toImage();
  };
  const QImage before = tick_and_grab();
  User::recording.Title = QStringLiteral("another one");
  const QImage after = tick_and_grab();
  QVERIFY(after != before);
  User::recording.ViewCount = 0;
  QCOMPARE(tick_and_grab(), after);
}

void TestPreviews::sheet_paging() {
  frmDataView preview(*shell_);
  preview.show();
  QVERIFY(QTest::qWaitForWindowActive(&preview));
  QCOMPARE(preview.Label1->text(), "Page 1 / 3");
  QVERIFY(!preview.cmdFirst->isEnabled() && !preview.cmdPrevious->isEnabled());
  press(preview.cmdLast);
  QCOMPARE(preview.page(), 2);
  QVERIFY(!preview.cmdLast->isEnabled() && !preview.cmdNext->isEnabled());
  press(preview.cmdPrevious);
  QCOMPARE(preview.page(), 1);
  press(preview.cmdFirst);
  QCOMPARE(preview.page(), 0);

  QTest::keyClick(preview.area, Qt::Key_PageDown);
  QCOMPARE(preview.page(), 1);
  QTest::keyClick(preview.area, Qt::Key_End);
  QCOMPARE(preview.Label1->text(), "Page 3 / 3");
  QTest::keyClick(preview.area, Qt::Key_PageUp);
  QTest::keyClick(preview.area, Qt::Key_Home);
  QCOMPARE(preview.page(), 0);
  QTest::keyClick(&preview, Qt::Key_Escape);
  QVERIFY(!preview.isVisible());
}

void TestPreviews::sheet_prints_all_its_pages() {
  frmDataView preview(*shell_);
  preview.show();
  QVERIFY(QTest::qWaitForWindowActive(&preview));
  preview.show_page(2);
  QTest::keyClick(&preview, Qt::Key_P, Qt::ControlModifier);
  QCOMPARE(shell_->scripted_printer.log,
           QStringList({"a4", "start Cold store 7", "page", "page", "end"}));
  QCOMPARE(preview.page(), 2);
}

void TestPreviews::printer_faults_data() {
  QTest::addColumn<bool>("graph");
  QTest::addColumn<QString>("fault");
  QTest::newRow("graph, no printer") << true << "none";
  QTest::newRow("graph, no document") << true << "start";
  QTest::newRow("graph, not sent") << true << "end";
  QTest::newRow("sheet, no printer") << false << "none";
  QTest::newRow("sheet, no second page") << false << "page";
  QTest::newRow("sheet, not sent") << false << "end";
}

void TestPreviews::printer_faults() {
  QFETCH(bool, graph);
  QFETCH(QString, fault);
  std::unique_ptr<Preview> preview;
  if (graph) {
    preview = std::make_unique<frmGraphView>(*shell_);
  } else {
    preview = std::make_unique<frmDataView>(*shell_);
  }
  preview->show();
  shell_->scripted_printer.fault = fault;
  // The message stands without the hourglass over it.
  bool hourglass = true;
  shell_->scripted_messages.meanwhile = [&] {
    hourglass = QGuiApplication::overrideCursor() != nullptr;
  };
  press(preview->cmdPrint);
  QCOMPARE(shell_->scripted_messages.shown, QStringList{printer_error});
  QVERIFY(!hourglass);
  QVERIFY(preview->isVisible());
  QVERIFY(shell_->scripted_printer.pages.empty());
  QCOMPARE(shell_->scripted_printer.log.last(), "abort");
  QCOMPARE(shell_->scripted_printer.pointer, std::optional(Qt::WaitCursor));

  // The next try prints.
  shell_->scripted_printer.fault.clear();
  press(preview->cmdPrint);
  QCOMPARE(shell_->scripted_messages.shown.size(), 1);
  QVERIFY(!shell_->scripted_printer.pages.empty());
}

void TestPreviews::print_view_data() {
  QTest::addColumn<int>("pages");
  QTest::addColumn<bool>("graph");
  QTest::addColumn<QString>("shown");
  QTest::newRow("graph") << 1 << true << "frmGraphView";
  QTest::newRow("sheet") << 1 << false << "frmDataView";
  QTest::newRow("nothing") << 0 << true << "";
}

void TestPreviews::print_view() {
  QFETCH(int, pages);
  QFETCH(bool, graph);
  QFETCH(QString, shown);
  QString seen;
  print_set(pages, graph);
  const auto quit = when_shown<Preview>([&](Preview& preview) {
    seen = preview.objectName();
    QVERIFY(preview.isModal());
    press(preview.Command2);
  });
  printview_Click(*shell_);
  QCOMPARE(seen, shown);
  QVERIFY(shell_->scripted_printer.pages.empty());
}

void TestPreviews::print_data() {
  QTest::addColumn<int>("pages");
  QTest::addColumn<bool>("graph");
  QTest::addColumn<QString>("done");
  QTest::newRow("three graphs") << 3 << true << "start,end,start,end,start,end";
  QTest::newRow("two pages of the sheet") << 2 << false << "start,page,end";
  QTest::newRow("more pages than there are") << 9 << false << "start,page,page,end";
  QTest::newRow("nothing") << 0 << true << "";
  QTest::newRow("less than nothing") << -2 << false << "";
}

void TestPreviews::print() {
  QFETCH(int, pages);
  QFETCH(bool, graph);
  QFETCH(QString, done);
  print_set(pages, graph);
  printdata_Click(*shell_);
  QStringList log = shell_->scripted_printer.log;
  log.removeAll(QStringLiteral("a4"));
  log.replaceInStrings(QStringLiteral("start Cold store 7"), QStringLiteral("start"));
  QCOMPARE(log.join(u','), done);
}

void TestPreviews::a_failing_printer_is_asked_once() {
  shell_->scripted_printer.fault = QStringLiteral("end");
  print_set(100, true);
  printdata_Click(*shell_);
  QCOMPARE(shell_->scripted_messages.shown, QStringList{printer_error});
}

void TestPreviews::the_view_of_the_historical_graph_is_printed() {
  ScriptedPort port;
  ScriptedClock clock;
  MainWindow main(port, clock);
  main.window->enable_data_commands(true);
  // The window that holds the view is opened where it is not.
  QImage whole;
  print_set(1, true);
  auto look = when_shown<frmGraphView>([&](frmGraphView& preview) {
    whole = preview.area->picture();
    preview.close();
  });
  main.run(QStringLiteral("printview"));
  frmdisplay* display = main.window->loaded_display();
  QVERIFY(display);

  display->cmd_Click(1);
  display->Slider1->setValue(display->Slider1->maximum());
  const PrintedView view = printed_view(*main.window);
  QCOMPARE(view.start, 20);
  QCOMPARE(view.recording.ViewCount, 80);
  QCOMPARE(view.high[1], User::AxisHigh[1]);
  QCOMPARE(view.low[1], User::AxisLow[1]);
  print_set(1, true);
  look = when_shown<frmGraphView>([&](frmGraphView& preview) {
    QVERIFY(preview.area->picture() != whole);
    preview.close();
  });
  main.run(QStringLiteral("printview"));
}

void TestPreviews::closing_the_program_under_a_preview() {
  ScriptedPort port;
  ScriptedClock clock;
  MainWindow main(port, clock);
  main.window->enable_data_commands(true);
  print_set(1, true);
  bool stood = false;
  const auto quit = when_shown<frmGraphView>([&](frmGraphView&) {
    stood = true;
    main.window->close();
  });
  main.window->toolbar_button(4)->trigger();
  QVERIFY(stood);
  QVERIFY(!QApplication::activeModalWidget());
  QVERIFY(!main.window->isVisible());
}

const int registered_previews = register_test<TestPreviews>();

#include "test_previews.moc"
