#include "base/contrast.h"
#include "monitor/Frmwarn.h"
#include "support/recordings.h"
#include "support/simulated_window.h"
#include "views/frmdate.h"
#include "views/frmdisplay.h"

namespace {

void accept_or_leave(QDialog& dialog) {
  press(dialog.findChild<QPushButton*>("Command1"));
  dialog.reject();
}

QString copied(QAbstractItemView* view) {
  view->setFocus();
  QTest::keySequence(view, QKeySequence::Copy);
  return QGuiApplication::clipboard()->text();
}

}  // namespace

class TestDisplay : public QObject {
  Q_OBJECT

  SimulatedWindow world_;
  frmmdi& shell_ = *world_.main.window;
  QStringList& messages_ = world_.main.messages.shown;
  frmdisplay* window_ = nullptr;

  void open(int samples, int channels) {
    User::reset_display_limits();
    fill(User::recording, samples, channels);
    shell_.unload_display();
    shell_.show_display();
    window_ = shell_.loaded_display();
    resize(1001, 760);
  }
  void resize(int width, int height) {
    shell_.resize(width, height);
    QCoreApplication::processEvents();
  }
  void click_graph(int x) { QTest::mouseClick(window_->Pic1, Qt::RightButton, {}, {x, 9}); }

 private Q_SLOTS:
  void list_and_sheet() {
    open(3, 1);
    window_->lv1->selectAll();
    QCOMPARE(copied(window_->lv1).replace(u'\n', u'|').replace(u'\t', u'='),
             "Title=Cold store|Recorder Name=Logger 4|Channels=1|Length=3|"
             "Start Time=2026-03-01 08:00:00|End Time=2026-03-01 08:02:00|Interval Time=00-01-00|"
             "Channel No.=1|Channel Name=Air|Unit=C|Max.=2.00|Min.=0.00|Average=1.00");
    window_->SSTab1->setCurrentIndex(1);
    QTableView& sheet = *window_->MSFlG1;
    QCOMPARE(sheet.model()->headerData(2, Qt::Horizontal).toString(), "Air(C)");
    sheet.selectRow(2);
    sheet.selectionModel()->select(sheet.model()->index(0, 2), QItemSelectionModel::Select);
    QCOMPARE(copied(&sheet), "\t\t0.00\n3\t2026-03-01 08:02:00\t2.00");
    sheet.actions().last()->trigger();
    QVERIFY(QGuiApplication::clipboard()->text().startsWith("Number\tTime\tAir(C)\n\t\t0.00\n"));
    // The Tab key leaves the sheet instead of moving from cell to cell.
    QTest::keyClick(&sheet, Qt::Key_Tab);
    QVERIFY(!sheet.hasFocus());
  }

  void view() {
    open(1001, 2);
    for (const int angle : {150, 90, 120, -120}) {
      QWheelEvent event({9, 9}, {9, 9}, {}, {0, angle}, {}, {}, Qt::NoScrollPhase, false);
      QApplication::sendEvent(window_->Pic1, &event);
    }
    QCOMPARE(User::recording.ViewCount, 641);
    for (int k = 0; k < 30; ++k) QTest::mouseClick(window_->cmd[1], Qt::LeftButton);
    window_->Slider1->setValue(100);
    // Only the samples in view count for the scales.
    QCOMPARE(window_->Label4[9]->text() + window_->Label4[17]->text(), "209.00195.00");
    QCOMPARE(User::AxisHigh[0] - User::AxisLow[0], 109.0F - 95.0F);
    window_->Slider1->setValue(1000);
    // After zooming out the slider stays, and the view remains inside the Recording.
    QTest::mouseClick(window_->cmd[0], Qt::LeftButton);
    QCOMPARE(window_->Label1->text(), User::recording.SampleTimes(995));
  }

  void cursor() {
    open(101, 2);
    const int last = window_->Pic1->width() - 1;
    click_graph(last / 2);
    QCOMPARE(window_->Pic1->value().text, "2026-03-01 08:50:00; Air C 50; Humidity %RH 150");
    // The cursor keeps its place when the view changes.
    window_->cmd_Click(1);
    window_->Slider1->setValue(10);
    QCOMPARE(window_->Label3[8]->text(), "50");
    QCOMPARE(window_->Line2->x(), last / 2);
    window_->cmd_Click(0);
    User::recording.SampleValues(100, 0) = 0.1F;
    click_graph(last);
    QCOMPARE(window_->Label3[8]->text(), "0.1");
    QVERIFY(window_->Pic1->rect().contains(window_->Label5->geometry()));
    QString at;
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Right, Qt::Key_PageUp, Qt::Key_PageDown,
                              Qt::Key_Left, Qt::Key_End, Qt::Key_Right, Qt::Key_PageUp}) {
      QTest::keyClick(window_->Pic1, key);
      at += window_->Label3[9]->text() + u' ';
    }
    QCOMPARE(at, "100 101 100 110 109 200 200 190 ");
  }

  // The view follows the cursor to any sample of the Recording, and so does the sheet's row.
  void cursor_leads_the_view() {
    open(101, 1);
    QVERIFY(!window_->MSFlG1->selectionModel()->hasSelection());
    for (int k = 0; k < 7; ++k) QTest::keyClick(window_->Pic1, Qt::Key_Plus);
    QCOMPARE(User::recording.ViewCount, 22);
    QString seen;
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Home, Qt::Key_PageUp, Qt::Key_PageDown}) {
      QTest::keyClick(window_->Pic1, key);
      seen += QString::number(window_->ViewStart) + u'/' + window_->Label3[8]->text() + u' ';
    }
    for (int k = 0; k < 20; ++k) QTest::keyClick(window_->Pic1, Qt::Key_Right);
    seen += QString::number(window_->ViewStart) + u'/' + window_->Label3[8]->text();
    QCOMPARE(seen, "79/100 0/0 0/0 0/2 1/22");
    QCOMPARE(window_->MSFlG1->currentIndex().row(), 22);
    window_->MSFlG1->selectRow(90);
    QCOMPARE(window_->Label3[8]->text(), "90");
    QCOMPARE(window_->ViewEnd, 90);
    for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_PageDown, Qt::Key_PageUp}) {
      QTest::keyClick(window_->Slider1, key);
    }
    QCOMPARE(window_->ViewStart, 71);
    // Even from the handle's last place an arrow key moves the view at once.
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Left}) QTest::keyClick(window_->Slider1, key);
    QCOMPARE(window_->ViewStart, 78);
    // A cell chosen outside the view is the only one selected.
    QTest::keyClick(window_->Pic1, Qt::Key_End);
    window_->MSFlG1->setFocus();
    window_->MSFlG1->setCurrentIndex(window_->MSFlG1->model()->index(5, 2));
    QCOMPARE(window_->MSFlG1->selectionModel()->selectedIndexes().size(), 1);
    QTest::keyClick(window_->Pic1, Qt::Key_Minus);
    QCOMPARE(User::recording.ViewCount, 28);
  }

  // A stamp can be empty; the cursor still shows its sample.
  void cursor_without_a_time() {
    open(3, 1);
    User::recording.SampleTimes(1).clear();
    click_graph(window_->Pic1->width() / 2);
    QVERIFY(window_->Line2->isVisible() && !window_->Label5->isVisible());
    QFont large = window_->font();
    large.setPointSizeF(large.pointSizeF() * 2);
    window_->Label5->setFont(large);
    click_graph(window_->Pic1->width() - 1);
    QVERIFY(window_->Label5->width() >= window_->Label5->minimumSizeHint().width());
    QVERIFY(window_->Pic1->rect().contains(window_->Label5->geometry()));
  }

  // Keys and legend bring a channel forward and back; the copy is the graph with its scales.
  void channel_brought_forward() {
    open(50, 2);
    const QImage before = window_->Pic1->grab().toImage();
    const auto forward = [&] { return window_->Pic1->chosen().value_or(-1); };
    QTest::keyClick(window_->Pic1, Qt::Key_3);
    QCOMPARE(forward(), -1);
    QTest::keyClick(window_->Pic1, Qt::Key_2);
    QCOMPARE(forward(), 1);
    QVERIFY(window_->Pic1->grab().toImage() != before);
    QTest::keyClick(window_->Pic1, Qt::Key_Escape);
    window_->lv1->setFocus();
    QTest::mouseClick(window_->Label3[4], Qt::LeftButton);
    QCOMPARE(forward(), 0);
    QTest::keyClick(shell_.focusWidget(), Qt::Key_1);
    QCOMPARE(window_->Pic1->grab().toImage(), before);
    window_->Pic1->setFocus();
    QTest::keySequence(window_->Pic1, QKeySequence::Copy);
    const QSize copied = QGuiApplication::clipboard()->image().size();
    QVERIFY(copied.width() > before.width() && copied.height() > before.height());
  }

  // Every text has enough contrast on light and on dark; the focus hides nothing of the picture.
  void look() {
    open(50, 4);
    const QPalette before = QApplication::palette();
    for (const QColor& window : {QColor(239, 239, 239), QColor(49, 54, 59)}) {
      QApplication::setPalette(QPalette(window));
      const auto colour = [&](const QLabel* label, QPalette::ColorRole role) {
        return label->palette().color(role);
      };
      for (const QLabel* label : window_->findChildren<QLabel*>()) {
        QVERIFY(contrast(colour(label, QPalette::WindowText), colour(label, QPalette::Window)) >=
                4.5);
      }
    }
    QApplication::setPalette(before);
    QWidget& page = *window_->Pic1->parentWidget();
    window_->lv1->setFocus();
    const QImage without = page.grab(window_->Pic1->geometry()).toImage();
    window_->Pic1->setFocus();
    QCOMPARE(page.grab(window_->Pic1->geometry()).toImage(), without);
  }

  void read_to_those_who_do_not_see() {
    open(30, 2);
    QAccessibleInterface* graph = QAccessible::queryAccessibleInterface(window_->Pic1);
    QCOMPARE(graph->role(), QAccessible::SpinBox);
    QCOMPARE(graph->text(QAccessible::Name), "Graph");
    for (const int wanted : {0, 99, 8}) graph->valueInterface()->setCurrentValue(wanted);
    QCOMPARE(graph->valueInterface()->currentValue().toInt(), 8);
    QCOMPARE(graph->textInterface()->text(0, 99), "2026-03-01 08:07:00; Air C 7; Humidity %RH 107");
    // Announcements are notifications beside the labels, which keep their own names.
    QLabel& panel = *shell_.Sts1[1];
    QAccessible::queryAccessibleInterface(&panel);
    for (const auto text : {"Link Ok", "", "Link Error"}) shell_.set_panel(2, text);
    QCoreApplication::processEvents();
    const auto* said = shell_.findChild<QWidget*>("announcer", Qt::FindDirectChildrenOnly);
    QVERIFY(said);
    const auto of = [](const QWidget* widget) {
      return QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
    };
    QCOMPARE(of(said)->role(), QAccessible::Notification);
    QCOMPARE(of(said)->text(QAccessible::Name), "Link Ok. Link Error");
    shell_.set_progress(30, "30%");
    QCoreApplication::processEvents();
    QCOMPARE(of(said)->text(QAccessible::Name), "30%");
    QCOMPARE(of(&panel)->text(QAccessible::Name), "Link Error");
    const auto look = when_shown<Frmwarn>([&of](Frmwarn& dialog) {
      QCOMPARE(of(dialog.Text1[2])->text(QAccessible::Name), "Up Limit, Channel 2: Humidity");
      dialog.reject();
    });
    window_->cmd2_Click();
  }

  // The commands are available before the window exists; they load it.
  void commands_load_the_window() {
    for (const auto& [command, name] :
         {std::pair{"in", ""}, {"out", ""}, {"limit", "Frmwarn"}, {"setdisplaytime", "frmdate"}}) {
      open(20, 1);
      shell_.unload_display();
      QString shown;
      const auto leave = when_shown<QDialog>([&shown](QDialog& dialog) {
        shown = dialog.objectName();
        dialog.reject();
      });
      world_.main.run(command);
      QVERIFY(shell_.loaded_display());
      QCOMPARE(shown, name);
      QCOMPARE(User::recording.ViewCount, command == QByteArray("in") ? 16 : 20);
    }
  }

  // If a scale is beyond single precision, the grid is empty and the scale has no labels.
  void scale_without_end() {
    open(20, 2);
    User::DisplayLimitAuto[1] = 0;
    User::DisplayLimit[2] = 3e38F;
    User::DisplayLimit[3] = -3e38F;
    window_->RedrawGraph();
    QCOMPARE(window_->Label4[0]->text(), "24.00");
    for (const std::size_t label : {9, 13, 17}) QCOMPARE(window_->Label4[label]->text(), "");
    QVERIFY(!window_->Line2->isVisible());
  }

  void limits() {
    open(100, 2);
    User::DisplayLimit[0] = 19.126F;
    const auto edit = when_shown<Frmwarn>([this](Frmwarn& dialog) {
      QCOMPARE(dialog.Text1[0]->text(), "19.13");
      for (const std::size_t box : {2, 3}) QVERIFY(!dialog.Text1[box]->isEnabled());
      dialog.Check1[1]->setChecked(false);
      QTest::keyClicks(dialog.Text1[2], "\b\b\b\b\b\b150");
      QTest::keyClicks(dialog.Text1[3], "\b\b\b\b\b\b-2");
      // Even a disabled box must hold a number.
      for (const auto text : {"", "high", "1e39", "1e2"}) {
        QVERIFY(dialog.isVisible() && User::DisplayLimit[2] == 120);
        dialog.Text1[7]->setText(text);
        press(dialog.Command1);
      }
      dialog.reject();
    });
    QTest::mouseClick(window_->cmd2, Qt::LeftButton);
    QCOMPARE(messages_, QStringList(3, "Corvane: Input Error,Please Retry"));
    QCOMPARE(window_->Label4[0]->text() + window_->Label4[9]->text(), "104.00150.00");
    QCOMPARE(window_->Label4[17]->text(), "-2.00");
    QCOMPARE(User::DisplayLimit[0] + User::DisplayLimit[7], 119.13F);
  }

  void segments() {
    using Row = std::tuple<QTime, QTime, int, int>;
    open(100, 1);
    for (const auto& [start, end, first, last] :
         {Row({8, 9, 30}, {8, 30}, 10, 29), Row({8, 10}, {8, 30, 1}, 10, 30),
          Row({8, 10}, {8, 10}, 10, 14), Row({22, 0}, {23, 0}, 95, 99)}) {
      const auto choose = when_shown<frmdate>([&, start = start, end = end](frmdate& dialog) {
        QVERIFY(window_->Label1->text().endsWith(dialog.DTP2[1]->text()));
        QVERIFY(window_->Label2->text().endsWith(dialog.DTP2[3]->text()));
        dialog.DTP2[1]->setTime(start);
        for (const QTime at : {QTime(7, 59, 59), end}) {
          dialog.DTP2[3]->setTime(at);
          press(dialog.Command1);
        }
        dialog.reject();
      });
      QTest::mouseClick(window_->Cmd6, Qt::LeftButton);
      QCOMPARE(messages_.takeLast(), "Corvane: Start Time>End Time");
      QCOMPARE(window_->ViewStart, first);
      QCOMPARE(window_->ViewEnd, last);
    }
  }

  // The computer's clock was set back during the recording, so that it ends before it begins: the
  // end limits no picker.
  void segment_of_a_clock_set_back() {
    open(9, 1);
    User::recording.SampleTimes(8) = "2026-02-27 08:00:00";
    const auto look = when_shown<frmdate>([](frmdate& dialog) {
      QCOMPARE(dialog.DTP2[0]->minimumDate(), QDate(2026, 3, 1));
      QVERIFY(dialog.DTP2[2]->maximumDate() > QDate(2026, 3, 1));
      dialog.reject();
    });
    window_->Cmd6_Click();
  }

  // As when a download ends meanwhile; the choice then applies to the new window.
  void window_goes_under_an_open_dialog() {
    for (const auto command : {&frmdisplay::cmd2_Click, &frmdisplay::Cmd6_Click}) {
      open(300, 1);
      const QPointer<frmdisplay> old = window_;
      window_->Slider1->setValue(299);
      const auto act = when_shown<QDialog>([&](QDialog& dialog) {
        open(200, 1);
        window_->cmd_Click(1);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (auto* end = dialog.findChild<QDateTimeEdit*>("DTP2(3)")) end->setTime(QTime(9, 0));
        press(dialog.findChild<QPushButton*>("Command1"));
      });
      ((*old).*command)();
      // The old window, whose slider is at its end, has not drawn again.
      QCOMPARE(User::AxisLow[0], -5.0F);
      QTRY_VERIFY(!old);
    }
    QCOMPARE(window_->Label2->text(), "2026-03-01 08:59:00");
  }

  // What a failed opening of a file can leave behind, and the shortest Recordings.
  void broken_recordings() {
    for (const auto& [samples, channels] :
         {std::pair{0, 2}, {2000000000, 2}, {-3, 2}, {40, 9}, {40, -1}, {1, 1}, {2, 1}}) {
      open(samples, channels);
      for (const int zoom : {1, 0}) window_->cmd_Click(zoom);
      window_->Slider1->setValue(window_->Slider1->maximum() / 2);
      click_graph(100);
      QTest::keyClick(window_->Pic1, Qt::Key_End);
      copied(window_->MSFlG1);
      const auto limits = when_shown<QDialog>(accept_or_leave);
      window_->cmd2_Click();
      const auto segment = when_shown<QDialog>(accept_or_leave);
      window_->Cmd6_Click();
      if (samples == 2) QCOMPARE(User::recording.ViewCount, 2);
      QCOMPARE(window_->lv1->topLevelItemCount(), samples ? 7 + 6 * std::clamp(channels, 0, 4) : 0);
      const QAbstractItemModel* sheet = window_->MSFlG1->model();
      QCOMPARE(sheet ? sheet->rowCount() : 0, std::clamp(samples, 0, 30001));
      QCOMPARE(window_->Pic1->value().text.isEmpty(), samples != 2 && samples != 40);
    }
  }
};

const int registered = register_test<TestDisplay>();
#include "test_window.moc"
