// The Real-time Data window: the recorder set and read back, ten readings, some of them alarms.
#include <QMessageBox>
#include <QTest>

#include "guided_tour/tour.h"
#include "monitor/frmrealtime.h"
#include "monitor/frmrecord.h"
#include "monitor/live_pane.h"
#include "monitor/setup_pane.h"

namespace {

constexpr int record_button = 9;
constexpr int realtime_button = 13;

// Starts polling every second, or stops polling.
void choose_polling(Tour& tour, bool on) {
  tour.in_dialog<frmrecord>([&tour, on](frmrecord& dialog) {
    if (on) {
      tour.type_time(*dialog.DTP1, QStringLiteral("00:00:01"));
    } else {
      for (std::size_t box : {1U, 2U}) QTest::keyClick(dialog.Check1[box], Qt::Key_Space);
    }
    tour.step(on ? QStringLiteral("online-record") : QStringLiteral("online-record-off"),
              on ? QStringLiteral("Record Set: a reading every second.")
                 : QStringLiteral("Record Set with neither box marked ends the polling."));
    tour.click(dialog.Command1);
  });
  tour.click_toolbar(record_button);
}

void wait_for_reading(Tour& tour, frmrealtime& window, int row) {
  tour.wait_for([&] { return window.live().MSFlG1->model()->rowCount() >= row; },
                QStringLiteral("the recorder answers"));
}

}  // namespace

void set_properties(Tour& tour) {
  tour.click_toolbar(realtime_button);
  frmrealtime& window = *tour.window().loaded_realtime();
  tour.type_over(*window.setup().Text6, QStringLiteral("冷库 2"));
  tour.type_over(*window.setup().Text15, QStringLiteral("North wall, upper shelf"));
  tour.type_over(*window.setup().Text1[0], QStringLiteral("12.5"));
  tour.type_over(*window.setup().Text1[1], QStringLiteral("-2.25"));
  tour.click_tab(*window.setup().SSTab1, 3);
  QTest::keyClick(window.setup().Check1[3], Qt::Key_Space);
  tour.type_time(*window.setup().DTP1, QStringLiteral("00:01:30"));
  tour.in_dialog<QMessageBox>([&tour](QMessageBox& question) {
    tour.step(QStringLiteral("set-question"),
              QStringLiteral("Title, description, limits, interval and channels are typed; "
                             "Properties Set asks first."));
    tour.click(question.button(QMessageBox::Yes));
  });
  tour.click(window.setup().Command4);
  tour.finish_command();
  tour.click_tab(*window.setup().SSTab1, 0);
  tour.step(QStringLiteral("set"), QStringLiteral("Yes writes them and shows what the recorder now "
                                                  "holds; its readings are gone."));
  tour.require(window.setup().Text6->text() == QStringLiteral("冷库 2") &&
                   window.setup().Text15->text() == QStringLiteral("North wall, upper shelf") &&
                   window.setup().Text1[0]->text() == QStringLiteral("12.50") &&
                   window.setup().Text1[1]->text() == QStringLiteral("-2.25") &&
                   window.setup().DTP1->text() == QStringLiteral("00:01:30") &&
                   window.setup().Check1[2]->isChecked() &&
                   !window.setup().Check1[3]->isChecked() &&
                   window.setup().Text11->text() == QStringLiteral("0"),
               QStringLiteral("the recorder holds what was typed"));
}

void poll_readings(Tour& tour) {
  frmrealtime& window = *tour.window().loaded_realtime();
  choose_polling(tour, true);
  wait_for_reading(tour, window, 5);
  tour.type_over(*window.setup().Text1[0], QStringLiteral("1"));
  wait_for_reading(tour, window, 10);
  QTest::mouseClick(window.live().Pic1, Qt::LeftButton, {}, {window.live().Pic1->width() / 32, 40});
  const QString graph = QStringLiteral(
      "Ten readings. Since channel 1's upper limit was lowered it is out of range, and red.");
  const std::array pages = {
      std::pair(QStringLiteral("live-graph"), graph),
      std::pair(QStringLiteral("live-sheet"), QStringLiteral("The same readings in the sheet.")),
      std::pair(QStringLiteral("alarms"), QStringLiteral("Those that were out of range."))};
  for (std::size_t page = 0; page < pages.size(); ++page) {
    tour.click_tab(*window.live().SSTab3, static_cast<int>(page));
    tour.step(pages[page].first, pages[page].second);
  }
  const int alarms = window.live().MSFlG2->model()->rowCount();
  tour.require(alarms > 0 && alarms < window.live().MSFlG1->model()->rowCount(),
               QStringLiteral("some readings are out of range"));
}

void stop_polling(Tour& tour) {
  frmrealtime& window = *tour.window().loaded_realtime();
  choose_polling(tour, false);
  const int readings = window.live().monitor().buffer.LiveCount();
  QTest::qWait(2500);
  tour.require(window.live().monitor().buffer.LiveCount() == readings,
               QStringLiteral("no further reading comes"));
  tour.click_tab(*window.live().SSTab3, 0);
  tour.step(QStringLiteral("stopped"), QStringLiteral("Polling has stopped; the graph stays."));
}
