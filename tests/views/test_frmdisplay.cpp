#include <QClipboard>
#include <QScrollBar>
#include <QTest>

#include "app/user.h"
#include "monitor/Frmwarn.h"
#include "support/dialogs.h"
#include "support/fake_shell.h"
#include "support/runner.h"
#include "views/filled_recording.h"
#include "views/frmdate.h"
#include "views/frmdisplay.h"

class TestDisplay : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void cleanup();
  void an_empty_window_is_harmless();
  void channels_that_are_there_data();
  void channels_that_are_there();
  void list_and_sheet();
  void whole_recording_at_first();
  void slider_and_zoom();
  void zoom_out_of_all_does_not_redraw();
  void scales_follow_the_view();
  void cursor_by_mouse();
  void cursor_by_keys();
  void cursor_stays_when_the_view_changes();
  void wheel_zooms();
  void picture_survives();
  void limits_apply_at_once();
  void segment_by_time();
  void window_goes_under_an_open_dialog();
  void broken_recordings_data();
  void broken_recordings();
  void one_and_two_samples();
  void every_input_has_an_accessible_name();

 private:
  frmdisplay& open(int samples, int channels);
  // The picture as it is painted, without the marks in it.
  QImage picture();
  QString scale(std::size_t slot) const;

  std::unique_ptr<FakeShell> shell_;
  std::unique_ptr<frmdisplay> window_;
};

namespace {

void accept_or_leave(frmdate& dialog) {
  press(dialog.Command1);
  if (dialog.isVisible()) dialog.reject();
}

}  // namespace

void TestDisplay::init() {
  shell_ = std::make_unique<FakeShell>();
  User::recording = Recording();
  User::reset_display_limits();
}

void TestDisplay::cleanup() {
  window_.reset();
  shell_.reset();
  User::recording = Recording();
}

frmdisplay& TestDisplay::open(int samples, int channels) {
  fill(User::recording, samples, channels);
  window_ = std::make_unique<frmdisplay>(*shell_);
  shell_->display_window = window_.get();
  window_->resize(1000, 640);
  window_->show();
  QCoreApplication::processEvents();
  return *window_;
}

QImage TestDisplay::picture() {
  QImage image(window_->Pic1->size(), QImage::Format_RGB32);
  window_->Pic1->render(&image, {}, {}, QWidget::RenderFlags());
  return image;
}

QString TestDisplay::scale(std::size_t slot) const {
  QStringList texts;
  for (std::size_t k = 0; k < 9; ++k) texts << window_->Label4[9 * slot + k]->text();
  return texts.join(u',');
}

// Whatever a closed Recording has left behind.
void TestDisplay::an_empty_window_is_harmless() {
  fill(User::recording, 50, 3);
  User::recording.SampleCount = 0;
  User::recording.ChannelStats[0][0] = 77;
  window_ = std::make_unique<frmdisplay>(*shell_);
  window_->show();
  const QImage before = picture();
  window_->cmd_Click(1);
  window_->cmd_Click(0);
  window_->RedrawGraph();
  QTest::mouseClick(window_->Pic1, Qt::LeftButton, {}, QPoint(40, 40));
  QTest::keyClick(window_->Pic1, Qt::Key_End);
  QTest::keyClick(window_->Slider1, Qt::Key_Right);
  QTest::keySequence(window_->MSFlG1, QKeySequence::Copy);
  QTest::keySequence(window_->lv1, QKeySequence::Copy);
  const auto limits = when_shown<Frmwarn>([](Frmwarn& dialog) { press(dialog.Command1); });
  window_->cmd2_Click();
  QCOMPARE(shell_->log, QStringList());
  const auto segment = when_shown<frmdate>(accept_or_leave);
  window_->Cmd6_Click();
  QCOMPARE(window_->lv1->topLevelItemCount(), 0);
  QCOMPARE(window_->Label5->text(), QString());
  QCOMPARE(User::recording.ChannelStats[0][0], 77.0);
  QCOMPARE(picture(), before);
}

void TestDisplay::channels_that_are_there_data() {
  QTest::addColumn<int>("channels");
  for (int channels = 1; channels <= 4; ++channels) QTest::addRow("%d", channels) << channels;
}

void TestDisplay::channels_that_are_there() {
  QFETCH(int, channels);
  open(100, channels);
  for (std::size_t c = 0; c < 4; ++c) {
    const bool there = static_cast<int>(c) < channels;
    const QString title =
        User::recording.ChannelInfo[1][c] + u' ' + User::recording.ChannelInfo[2][c];
    QCOMPARE(window_->Line1[c]->isVisibleTo(window_.get()), there);
    for (std::size_t k = 0; k < 9; ++k) {
      QCOMPARE(window_->Label4[9 * c + k]->isVisibleTo(window_.get()), there);
    }
    for (const std::size_t label : {c, c + 4, c + 8}) {
      QCOMPARE(window_->Label3[label]->isVisibleTo(window_.get()), there);
      if (there && label < 8) QCOMPARE(window_->Label3[label]->text(), title);
    }
  }
}

void TestDisplay::list_and_sheet() {
  open(300, 2);
  QCOMPARE(window_->lv1->topLevelItemCount(), 19);
  const QTreeWidgetItem* average = window_->lv1->topLevelItem(18);
  QCOMPARE(average->text(0), QString());
  QCOMPARE(average->text(1), "Average");
  QCOMPARE(average->text(2), "249.50");
  QCOMPARE(User::recording.ChannelStats[2][1], 249.5);
  window_->lv1->setCurrentItem(window_->lv1->topLevelItem(1));
  QTest::keySequence(window_->lv1, QKeySequence::Copy);
  QCOMPARE(QGuiApplication::clipboard()->text(), "Recorder Name\tLogger 4");

  const QAbstractItemModel& sheet = *window_->MSFlG1->model();
  QCOMPARE(sheet.rowCount(), 300);
  QCOMPARE(sheet.columnCount(), 4);
  QVERIFY(window_->MSFlG1->columnWidth(1) >= 2000 / 15);
  window_->SSTab1->setCurrentIndex(1);
  window_->MSFlG1->setFocus();
  window_->MSFlG1->selectRow(299);
  QTest::keySequence(window_->MSFlG1, QKeySequence::Copy);
  QCOMPARE(QGuiApplication::clipboard()->text(), "300\t2026-03-01 12:59:00\t299.00\t399.00");
}

void TestDisplay::whole_recording_at_first() {
  open(30001, 2);
  QCOMPARE(User::recording.ViewCount, 30001);
  QCOMPARE(window_->ViewStart, 0);
  QCOMPARE(window_->ViewEnd, 30000);
  QCOMPARE(window_->Slider1->value(), 0);
  QCOMPARE(window_->Slider1->maximum(), 30000);
  QCOMPARE(window_->Label1->text(), User::recording.SampleTimes(0));
  QCOMPARE(window_->Label2->text(), User::recording.SampleTimes(30000));
  QCOMPARE(window_->Line2->x(), 0);
  QCOMPARE(window_->Label5->text(), User::recording.SampleTimes(0));
  QCOMPARE(window_->Label3[8]->text(), "0");
  QCOMPARE(window_->Label3[9]->text(), "100");
}

void TestDisplay::slider_and_zoom() {
  open(1001, 1);
  QTest::mouseClick(window_->cmd[1], Qt::LeftButton);
  QCOMPARE(User::recording.ViewCount, 801);
  QCOMPARE(window_->Label2->text(), User::recording.SampleTimes(800));
  for (int k = 0; k < 30; ++k) window_->cmd_Click(1);
  QCOMPARE(User::recording.ViewCount, 5);
  window_->Slider1->setValue(500);
  QCOMPARE(window_->Label1->text(), User::recording.SampleTimes(500));
  window_->Slider1->setValue(1000);
  QCOMPARE(window_->ViewStart, 996);
  QCOMPARE(window_->Label2->text(), User::recording.SampleTimes(1000));
  // Out again the slider stays, and the view is held inside the Recording.
  QTest::mouseClick(window_->cmd[0], Qt::LeftButton);
  QCOMPARE(User::recording.ViewCount, 6);
  QCOMPARE(window_->ViewStart, 995);
  QCOMPARE(window_->Slider1->value(), 1000);
}

void TestDisplay::zoom_out_of_all_does_not_redraw() {
  open(100, 1);
  window_->Label1->setText(QStringLiteral("untouched"));
  window_->cmd_Click(0);
  QCOMPARE(window_->Label1->text(), "untouched");
  window_->RedrawGraph();
  QCOMPARE(window_->Label1->text(), User::recording.SampleTimes(0));
}

// Only what is in view counts.
void TestDisplay::scales_follow_the_view() {
  open(1001, 2);
  QCOMPARE(User::AxisHigh[0], 1005.0F);
  QCOMPARE(User::AxisLow[1], 95.0F);
  User::recording.ViewCount = 11;
  window_->Slider1->setValue(100);
  QCOMPARE(scale(0), "115.00,112.50,110.00,107.50,105.00,102.50,100.00,97.50,95.00");
  QCOMPARE(User::AxisHigh[1], 215.0F);
  QCOMPARE(User::AxisLow[1], 195.0F);
}

void TestDisplay::cursor_by_mouse() {
  open(101, 2);
  GraphSurface& graph = *window_->Pic1;
  QTest::mouseClick(&graph, Qt::RightButton, Qt::ShiftModifier, QPoint((graph.width() - 1) / 2, 9));
  QCOMPARE(window_->Label3[8]->text(), "50");
  QCOMPARE(window_->Label3[9]->text(), "150");
  QCOMPARE(window_->Label5->text(), User::recording.SampleTimes(50));
  QCOMPARE(window_->Line2->x(), (graph.width() - 1) / 2);
  QVERIFY(std::abs(window_->Label5->x() - window_->Line2->x()) <= 1);
  QCOMPARE(graph.accessibleDescription(), "2026-03-01 08:50:00; Air C 50; Humidity %RH 150");

  User::recording.SampleValues(100, 0) = 0.1F;
  QTest::mouseClick(&graph, Qt::LeftButton, {}, QPoint(graph.width() - 1, 9));
  QCOMPARE(window_->Label3[8]->text(), "0.1");
  QCOMPARE(window_->Label5->text(), User::recording.SampleTimes(100));
  QCOMPARE(window_->Line2->x(), graph.width() - 1);
  QCOMPARE(window_->Label5->x(), qRound((graph.width() * 15 - 1530.9) / 15));
  QVERIFY(window_->Label5->geometry().right() < graph.width());
}

void TestDisplay::cursor_by_keys() {
  open(101, 1);
  GraphSurface& graph = *window_->Pic1;
  const auto after = [&](Qt::Key key) {
    QTest::keyClick(&graph, key);
    return window_->Label3[8]->text().toInt();
  };
  QCOMPARE(after(Qt::Key_Right), 1);
  QCOMPARE(after(Qt::Key_PageDown), 11);
  QCOMPARE(after(Qt::Key_Left), 10);
  QCOMPARE(after(Qt::Key_End), 100);
  QCOMPARE(after(Qt::Key_Right), 100);
  QCOMPARE(after(Qt::Key_PageUp), 90);
  QCOMPARE(after(Qt::Key_Home), 0);
  QCOMPARE(window_->Line2->x(), 0);
  for (int step = 1; step <= 100; ++step) QCOMPARE(after(Qt::Key_Up), step);
}

// The cursor keeps its place in the picture and shows the sample that is there now.
void TestDisplay::cursor_stays_when_the_view_changes() {
  open(1001, 1);
  QTest::mouseClick(window_->Pic1, Qt::LeftButton, {}, QPoint((window_->Pic1->width() - 1) / 2, 9));
  const int place = window_->Line2->x();
  QCOMPARE(window_->Label3[8]->text(), "500");
  window_->cmd_Click(1);
  QCOMPARE(window_->Line2->x(), place);
  QCOMPARE(window_->Label3[8]->text(), "400");
  window_->Slider1->setValue(100);
  QCOMPARE(window_->Label3[8]->text(), "500");
  QCOMPARE(window_->Label5->text(), User::recording.SampleTimes(500));
}

void TestDisplay::wheel_zooms() {
  open(1001, 1);
  const auto turn = [this](int angle) {
    QWheelEvent event(QPointF(9, 9), window_->Pic1->mapToGlobal(QPointF(9, 9)), {},
                      QPoint(0, angle), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(window_->Pic1, &event);
    return User::recording.ViewCount;
  };
  QCOMPARE(turn(120), 801);
  QCOMPARE(turn(60), 801);
  QCOMPARE(turn(60), 641);
  QCOMPARE(turn(-240), 1001);
}

// Resizing, hiding and colours draw the same view again, even while the Recording is being
// replaced.
void TestDisplay::picture_survives() {
  open(2000, 4);
  window_->cmd_Click(1);
  QTest::mouseClick(window_->Pic1, Qt::LeftButton, {}, QPoint(200, 9));
  const QString cursor = window_->Label5->text();
  const int place = window_->Line2->x();
  window_->setFocus();
  const QImage before = picture();
  for (int n = 0; n < 2000; ++n) User::recording.SampleValues(n, 0) = 1;
  User::recording.ViewCount = 7;
  window_->resize(700, 500);
  QCoreApplication::processEvents();
  QVERIFY(picture() != before);
  QVERIFY(window_->Line2->x() < place);
  window_->hide();
  window_->SSTab1->setCurrentIndex(1);
  window_->show();
  window_->SSTab1->setCurrentIndex(0);
  QPalette dark(QColor(40, 40, 40));
  dark.setColor(QPalette::Base, Qt::black);
  window_->setPalette(dark);
  QCOMPARE(picture().pixel(window_->Pic1->width() - 3, 3), qRgb(0, 0, 0));
  window_->setPalette({});
  window_->resize(1000, 640);
  QCoreApplication::processEvents();
  QCOMPARE(picture(), before);
  QCOMPARE(window_->Line2->x(), place);
  QCOMPARE(window_->Label5->text(), cursor);
  QCOMPARE(User::recording.ViewCount, 7);
}

void TestDisplay::limits_apply_at_once() {
  open(100, 2);
  const auto edit = when_shown<Frmwarn>([](Frmwarn& dialog) {
    dialog.Check1[1]->setChecked(false);
    dialog.Text1[2]->setText(QStringLiteral("150"));
    dialog.Text1[3]->setText(QStringLiteral("150"));
    press(dialog.Command1);
  });
  QTest::mouseClick(window_->cmd2, Qt::LeftButton);
  QCOMPARE(scale(0), "104.00,90.38,76.75,63.13,49.50,35.88,22.25,8.63,-5.00");
  QCOMPARE(scale(1), "150.50,,,,,,,,149.50");
  QCOMPARE(User::AxisHigh[1], 150.5F);
}

void TestDisplay::segment_by_time() {
  open(300, 1);
  const auto choose = when_shown<frmdate>([](frmdate& dialog) {
    dialog.DTP2[1]->setTime(QTime(9, 0));
    dialog.DTP2[3]->setTime(QTime(10, 0));
    press(dialog.Command1);
  });
  QTest::mouseClick(window_->Cmd6, Qt::LeftButton);
  QCOMPARE(User::recording.ViewCount, 60);
  QCOMPARE(window_->Slider1->value(), 60);
  QCOMPARE(window_->Label1->text(), "2026-03-01 09:00:00");
  QCOMPARE(window_->Label2->text(), "2026-03-01 09:59:00");
  QCOMPARE(window_->MSFlG1->model()->rowCount(), 300);
  // The dialog opens on what is shown, and leaves it alone when cancelled.
  QString opened;
  const auto cancel = when_shown<frmdate>([&opened](frmdate& dialog) {
    for (const QDateTimeEdit* picker : dialog.DTP2) opened += picker->text() + u' ';
    dialog.DTP2[1]->setTime(QTime(8, 0));
    press(dialog.Command2);
  });
  window_->Cmd6_Click();
  QCOMPARE(opened, "2026-03-01 09:00:00 2026-03-01 09:59:00 ");
  QCOMPARE(User::recording.ViewCount, 60);
}

// As a download that ends meanwhile does it; the choice is then for the new window.
void TestDisplay::window_goes_under_an_open_dialog() {
  open(300, 1);
  auto* old = window_.release();
  const QPointer<frmdisplay> watched = old;
  const auto limits = when_shown<Frmwarn>([&](Frmwarn& dialog) {
    old->unload();
    open(500, 1);
    press(dialog.Command1);
  });
  old->cmd2_Click();
  QVERIFY(old->unloaded());
  QCOMPARE(User::recording.ViewCount, 500);
  QTRY_VERIFY(!watched);

  old = window_.release();
  const auto segment = when_shown<frmdate>([&](frmdate& dialog) {
    old->unload();
    open(200, 1);
    dialog.DTP2[3]->setTime(QTime(9, 0));
    press(dialog.Command1);
  });
  old->Cmd6_Click();
  QCOMPARE(window_->Label2->text(), "2026-03-01 08:59:00");
}

// What a failed opening of a file can leave behind.
void TestDisplay::broken_recordings_data() {
  QTest::addColumn<int>("samples");
  QTest::addColumn<int>("channels");
  QTest::newRow("more samples than fit") << 50000 << 2;
  QTest::newRow("far more") << 2000000000 << 2;
  QTest::newRow("fewer than none") << -3 << 2;
  QTest::newRow("more channels than fit") << 40 << 9;
  QTest::newRow("no channels") << 40 << 0;
}

void TestDisplay::broken_recordings() {
  QFETCH(int, samples);
  QFETCH(int, channels);
  open(samples, channels);
  for (int k = 0; k < 3; ++k) {
    window_->Slider1->setValue(window_->Slider1->maximum() / 2);
    window_->cmd_Click(1);
    QTest::mouseClick(window_->Pic1, Qt::LeftButton, {}, QPoint(100, 9));
    QTest::keyClick(window_->Pic1, Qt::Key_End);
    window_->cmd_Click(0);
    const auto segment = when_shown<frmdate>(accept_or_leave);
    window_->Cmd6_Click();
  }
  QVERIFY(!picture().isNull());
  QVERIFY(window_->lv1->topLevelItemCount() >= 7);
}

void TestDisplay::one_and_two_samples() {
  open(2, 1);
  window_->cmd_Click(1);
  QCOMPARE(User::recording.ViewCount, 2);
  QTest::keyClick(window_->Pic1, Qt::Key_End);
  QCOMPARE(window_->Label3[8]->text(), "1");
  open(1, 1);
  QCOMPARE(window_->Label1->text(), QString());
  window_->cmd_Click(1);
  QTest::mouseClick(window_->Pic1, Qt::LeftButton, {}, QPoint(100, 9));
  QCOMPARE(window_->Label5->text(), QString());
  QCOMPARE(User::recording.ChannelStats[2][0], 0.0);
  QCOMPARE(window_->MSFlG1->model()->rowCount(), 1);
}

void TestDisplay::every_input_has_an_accessible_name() {
  open(10, 4);
  const QList<QWidget*> inputs = {window_->lv1, window_->SSTab1, window_->MSFlG1, window_->Pic1,
                                  window_->Slider1};
  for (const QWidget* input : inputs)
    QVERIFY2(!input->accessibleName().isEmpty(), qPrintable(input->objectName()));
  const QStringList captions = {window_->cmd[0]->text(), window_->cmd[1]->text(),
                                window_->cmd2->text(), window_->Cmd6->text()};
  QCOMPARE(captions, QStringList({"Zoom Out", "Zoom In", "Display Limit Set", "Display Time Set"}));
  for (int i = 0; i < 36; ++i) {
    QCOMPARE(window_->findChild<QLabel*>(QStringLiteral("Label4(%1)").arg(i)),
             window_->Label4[static_cast<std::size_t>(i)]);
  }
}

const int registered = register_test<TestDisplay>();
#include "test_frmdisplay.moc"
