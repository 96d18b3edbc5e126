#include <QTest>

#include "app/errors.h"
#include "support/runner.h"
#include "views/graph_view.h"

class TestGraphView : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void position_data();
  void position();
  void zoom_data();
  void zoom();
  void repeated_zoom();
  void cursor_data();
  void cursor();
  void cursor_and_sample_agree();
  void keys_data();
  void keys();
  void time_stays_inside();
  void scales_data();
  void scales();
  void nothing_to_divide_by();
};

void TestGraphView::position_data() {
  QTest::addColumn<QList<int>>("slider_maximum_samples_view");
  QTest::addColumn<int>("start");
  QTest::newRow("at rest") << QList<int>{0, 99, 100, 20} << 0;
  QTest::newRow("whole Recording") << QList<int>{50, 99, 100, 100} << 0;
  QTest::newRow("in the middle") << QList<int>{30, 99, 100, 20} << 30;
  QTest::newRow("last place before the end") << QList<int>{79, 99, 100, 20} << 79;
  QTest::newRow("sticks to the end") << QList<int>{85, 99, 100, 20} << 80;
  QTest::newRow("maximum") << QList<int>{99, 99, 100, 20} << 80;
  QTest::newRow("full Recording, maximum") << QList<int>{30000, 30000, 30001, 5} << 29996;
  // The slider of a window that was opened on another Recording.
  QTest::newRow("tie down to even") << QList<int>{3, 4, 7, 1} << 4;
  QTest::newRow("tie up to even") << QList<int>{1, 4, 7, 1} << 2;
  QTest::newRow("end by the number of samples") << QList<int>{5, 10, 1000, 500} << 500;
  QTest::newRow("end, one more in view") << QList<int>{5, 10, 1000, 501} << 499;
  QTest::newRow("place by one less") << QList<int>{9, 10, 1000, 100} << 899;
}

void TestGraphView::position() {
  QFETCH(QList<int>, slider_maximum_samples_view);
  const auto& in = slider_maximum_samples_view;
  QTEST(view_start(in[0], in[1], in[2], in[3]), "start");
}

void TestGraphView::zoom_data() {
  QTest::addColumn<bool>("in");
  QTest::addColumn<int>("view");
  QTest::addColumn<int>("samples");
  QTest::addColumn<int>("wanted");
  constexpr int nothing = -1;
  QTest::newRow("in") << true << 128 << 1000 << 102;
  QTest::newRow("in, at the least") << true << 5 << 1000 << 5;
  QTest::newRow("in, fewer samples than the least") << true << 2 << 2 << 2;
  QTest::newRow("in, nothing there") << true << 128 << 0 << 0;
  QTest::newRow("out") << false << 102 << 1000 << 128;
  QTest::newRow("out, tie down to even") << false << 10 << 1000 << 12;
  QTest::newRow("out, tie up to even") << false << 14 << 1000 << 18;
  QTest::newRow("out, beyond all") << false << 900 << 1000 << 1000;
  QTest::newRow("out of all") << false << 1000 << 1000 << nothing;
  QTest::newRow("out of more than all") << false << 128 << 100 << nothing;
}

void TestGraphView::zoom() {
  QFETCH(bool, in);
  QFETCH(int, view);
  QFETCH(int, samples);
  QTEST(zoomed(in ? Zoom::in : Zoom::out, view, samples).value_or(-1), "wanted");
}

void TestGraphView::repeated_zoom() {
  QList<int> views = {128};
  while (views.back() > 5) views << *zoomed(Zoom::in, views.back(), 30001);
  QCOMPARE(views.mid(0, 6), QList<int>({128, 102, 82, 66, 53, 42}));
  QCOMPARE(views.back(), 5);
  for (int k = 0; k < 100; ++k) views << zoomed(Zoom::out, views.back(), 200).value_or(200);
  QCOMPARE(views.back(), 200);
}

void TestGraphView::cursor_data() {
  QTest::addColumn<float>("x");
  QTest::addColumn<int>("view");
  QTest::addColumn<int>("sample");
  QTest::newRow("left edge") << 0.0F << 30001 << 0;
  QTest::newRow("right edge") << 8000.0F << 30001 << 30000;
  QTest::newRow("two samples, left half") << 3999.0F << 2 << 0;
  QTest::newRow("two samples, right half") << 4001.0F << 2 << 1;
  QTest::newRow("tie down to even") << 4000.0F << 6 << 2;
  QTest::newRow("tie up to even") << 4000.0F << 8 << 4;
}

void TestGraphView::cursor() {
  QFETCH(float, x);
  QFETCH(int, view);
  QTEST(cursor_sample(x, 8000.0F, view), "sample");
}

// The place of a sample leads back to it, so a cursor that is set again stays where it is.
void TestGraphView::cursor_and_sample_agree() {
  for (const float width : {7695.0F, 1005.0F, 57600.0F}) {
    for (const int view : {2, 5, 1000, 30001}) {
      for (int sample = 0; sample < view; ++sample) {
        if (cursor_sample(cursor_x(sample, width, view), width, view) != sample) {
          QFAIL(qPrintable(QStringLiteral("sample %1 of %2").arg(sample).arg(view)));
        }
      }
    }
  }
}

void TestGraphView::keys_data() {
  QTest::addColumn<int>("step");
  QTest::addColumn<int>("from");
  QTest::addColumn<int>("to");
  const auto row = [](const char* name, CursorStep step, int from, int to) {
    QTest::newRow(name) << static_cast<int>(step) << from << to;
  };
  row("back", CursorStep::sample_back, 50, 49);
  row("back at the start", CursorStep::sample_back, 0, 0);
  row("on", CursorStep::sample_on, 50, 51);
  row("on at the end", CursorStep::sample_on, 99, 99);
  row("page back", CursorStep::page_back, 50, 40);
  row("page back near the start", CursorStep::page_back, 3, 0);
  row("page on", CursorStep::page_on, 50, 60);
  row("page on near the end", CursorStep::page_on, 95, 99);
  row("start", CursorStep::start, 50, 0);
  row("end", CursorStep::end, 50, 99);
}

void TestGraphView::keys() {
  QFETCH(int, step);
  QFETCH(int, from);
  QTEST(stepped(static_cast<CursorStep>(step), from, 100), "to");
  // A tenth of a short view is a whole sample all the same.
  QCOMPARE(stepped(CursorStep::page_on, 1, 5), 2);
}

void TestGraphView::time_stays_inside() {
  QCOMPARE(time_label_left(0, 7695), 0.0F);
  QCOMPARE(time_label_left(6164, 7695), 6164.0F);
  QCOMPARE(time_label_left(6165, 7695), 6165 - 1530.9F);
  QCOMPARE(time_label_left(7695, 7695), 7695 - 1530.9F);
}

void TestGraphView::scales_data() {
  QTest::addColumn<QList<float>>("values");
  QTest::addColumn<QList<float>>("limits");  // up, down; none for automatic
  QTest::addColumn<float>("high");
  QTest::addColumn<float>("low");
  QTest::addColumn<QString>("labels");
  const QList<float> automatic;
  const QList<float> any = {1, 2, 3};
  QTest::newRow("automatic") << QList<float>{20, -3.5F, 7} << automatic << 25.0F << -8.5F
                             << "25.00,20.81,16.63,12.44,8.25,4.06,-0.13,-4.31,-8.50";
  QTest::newRow("constant") << QList<float>{20, 20, 20} << automatic << 25.0F << 15.0F
                            << "25.00,23.75,22.50,21.25,20.00,18.75,17.50,16.25,15.00";
  QTest::newRow("one sample") << QList<float>{0} << automatic << 5.0F << -5.0F
                              << "5.00,3.75,2.50,1.25,0.00,-1.25,-2.50,-3.75,-5.00";
  QTest::newRow("limits, no margin") << any << QList<float>{120, -40} << 120.0F << -40.0F
                                     << "120.00,100.00,80.00,60.00,40.00,20.00,0.00,-20.00,-40.00";
  QTest::newRow("equal limits") << any << QList<float>{20, 20} << 20.5F << 19.5F
                                << "20.50,,,,,,,,19.50";
  QTest::newRow("up below down") << any << QList<float>{10, 30} << 10.5F << 29.5F
                                 << "10.50,,,,,,,,29.50";
  QTest::newRow("just wide enough") << any << QList<float>{0.08F, 0} << 0.08F << 0.0F
                                    << "0.08,0.07,0.06,0.05,0.04,0.03,0.02,0.01,0.00";
  QTest::newRow("just too narrow")
      << any << QList<float>{0.0799F, 0} << 0.5799F << -0.5F << "0.58,,,,,,,,-0.50";
}

void TestGraphView::scales() {
  QFETCH(QList<float>, values);
  QFETCH(QList<float>, limits);
  std::optional<ScaleLimits> fixed;
  if (!limits.isEmpty()) fixed = {.up = limits[0], .down = limits[1]};
  const ChannelScale scale = channel_scale(values, fixed);
  QTEST(scale.high, "high");
  QTEST(scale.low, "low");
  const QStringList labels(scale.labels.begin(), scale.labels.end());
  QTEST(labels.join(u','), "labels");
}

void TestGraphView::nothing_to_divide_by() {
  QVERIFY_THROWS_EXCEPTION(RunTimeError, view_start(0, 0, 100, 10));
  QVERIFY_THROWS_EXCEPTION(RunTimeError, cursor_x(0, 7695, 1));
  QVERIFY_THROWS_EXCEPTION(RunTimeError, cursor_sample(0, 0, 10));
}

const int registered = register_test<TestGraphView>();
#include "test_graph_view.moc"
