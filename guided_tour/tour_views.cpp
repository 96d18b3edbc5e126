// The Historical Data window: zoom, display limits, a date segment, the sheet.
#include <QTest>

#include "app/user.h"
#include "guided_tour/tour.h"
#include "monitor/Frmwarn.h"
#include "views/frmdate.h"
#include "views/frmdisplay.h"

namespace {

void type_stamp(Tour& tour, const frmdate& dialog, std::size_t date, const QString& stamp) {
  tour.type_time(*dialog.DTP2[date], stamp.left(10));
  tour.type_time(*dialog.DTP2[date + 1], stamp.mid(11));
}

}  // namespace

void zoom_graph(Tour& tour) {
  frmdisplay& window = *tour.window().loaded_display();
  const int whole = User::recording.ViewCount;
  tour.choose(QStringLiteral("his"), QStringLiteral("in"));
  for (int k = 0; k < 5; ++k) tour.click(window.cmd[1]);
  window.Slider1->setFocus();
  for (int k = 0; k < 3; ++k) QTest::keyClick(window.Slider1, Qt::Key_PageDown);
  QTest::mouseClick(window.Pic1, Qt::LeftButton, {}, window.Pic1->rect().center());
  tour.require(User::recording.ViewCount < whole / 3 && window.ViewStart > 0,
               QStringLiteral("a part of the Recording is in view"));
  tour.step(QStringLiteral("zoomed"),
            QStringLiteral("Zoom In six times, one page on, a click: the values at the cursor."));
}

void set_limits(Tour& tour) {
  frmdisplay& window = *tour.window().loaded_display();
  tour.in_dialog<Frmwarn>([&tour](Frmwarn& dialog) {
    QTest::keyClick(dialog.Check1[0], Qt::Key_Space);
    tour.type_over(*dialog.Text1[0], QStringLiteral("10"));
    tour.type_over(*dialog.Text1[1], QStringLiteral("0"));
    tour.step(QStringLiteral("limits"),
              QStringLiteral("Display Limit Set: channel 1 from 0 to 10, not \"Auto\"."));
    tour.click(dialog.Command1);
  });
  tour.choose(QStringLiteral("his"), QStringLiteral("limit"));
  tour.require(window.Label4[0]->text() == QStringLiteral("10.00") &&
                   window.Label4[8]->text() == QStringLiteral("0.00"),
               QStringLiteral("the scale goes from 0 to 10"));
  tour.step(QStringLiteral("limited"), QStringLiteral("Ok draws the graph with the new scale."));
}

void choose_segment(Tour& tour) {
  frmdisplay& window = *tour.window().loaded_display();
  const Recording& recording = User::recording;
  const int first = recording.SampleCount / 4;
  const int end = recording.SampleCount / 2;
  tour.in_dialog<frmdate>([&](frmdate& dialog) {
    type_stamp(tour, dialog, 0, recording.SampleTimes(first));
    type_stamp(tour, dialog, 2, recording.SampleTimes(end));
    tour.step(QStringLiteral("date-segment"),
              QStringLiteral("Display Time Set: the second quarter of the time."));
    tour.click(dialog.Command1);
  });
  tour.choose(QStringLiteral("his"), QStringLiteral("setdisplaytime"));
  tour.require(window.ViewStart == first && recording.ViewCount == end - first,
               QStringLiteral("the segment fills the graph"));
  tour.step(QStringLiteral("segment-shown"), QStringLiteral("Ok shows it, edge to edge."));
}

void show_sheet(Tour& tour) {
  frmdisplay& window = *tour.window().loaded_display();
  tour.click_tab(*window.SSTab1, 1);
  tour.require(window.MSFlG1->isVisible(), QStringLiteral("the sheet is shown"));
  tour.step(QStringLiteral("sheet"), QStringLiteral("The tab Data Sheet has every reading."));
  tour.click_tab(*window.SSTab1, 0);
}
