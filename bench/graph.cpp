// Benchmarks of the Historical Data window with the largest Recording: its picture against other
// drawings, its load and its sheet against a table filled cell by cell, and scrolling.
#include <QCoreApplication>
#include <QTableWidget>

#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <memory>

#include "app/user.h"
#include "base/numbers.h"
#include "base/times.h"
#include "graph_peers.h"
#include "graph_signal.h"
#include "suite.h"
#include "support/plain_graph.h"
#include "support/simulated_window.h"
#include "views/frmdisplay.h"
#include "views/sheet_model.h"

namespace {

constexpr QRgb white = qRgb(255, 255, 255);
constexpr PictureColours colours = {white, qRgb(0, 0, 0)};

void fill_recording(Recording& recording, bool noise) {
  recording.Title = QStringLiteral("Cold store");
  recording.ChannelCount = graph_channels;
  recording.SampleCount = graph_samples;
  for (std::size_t c = 0; c < graph_channels; ++c) {
    recording.ChannelInfo[0][c] = QString::number(c + 1);
    recording.ChannelInfo[1][c] = QStringLiteral("Temperature");
    recording.ChannelInfo[2][c] = QStringLiteral("C");
  }
  for (int n = 0; n < graph_samples; ++n) {
    recording.SampleTimes(n) = stamp_text(wall_time({2026, 3, 1, 8, n, 0}));
    for (int c = 0; c < graph_channels; ++c) {
      recording.SampleValues(n, c) = graph_value(noise, n, c);
    }
  }
}

Side timed(const std::function<void()>& work) {
  return [work] { return milliseconds(work); };
}

// A side that always gives the same time: a fixed limit.
Side always(double value) {
  return [value] { return value; };
}

void take_curves(GraphCurves& curves, int samples = graph_samples) {
  curves.copy_view(User::recording, 0, samples);
  for (GraphCurves::Channel& channel : curves.channels) {
    channel.high = graph_high;
    channel.low = graph_low;
  }
}

// A screen of this size in device pixels, with `ratio` of them to a window pixel.
struct Screen {
  QSize pixels;
  double ratio = 1;
  PictureSize picture() const {
    return picture_size((QSizeF(pixels) / ratio).toSize(), pixels, ratio);
  }
};
constexpr Screen design = {{513, 510}};
constexpr Screen large = {{3200, 2000}};
constexpr Screen large_and_fine = {{3200, 2000}, 2};

// A redraw as the window does it: it copies the values from the Recording each time.
Side redraw(const Screen& screen, int samples = graph_samples) {
  const auto picture = std::make_shared<GraphPicture>();
  const auto image = std::make_shared<QImage>(screen.pixels, QImage::Format_RGB32);
  return timed([=] {
    take_curves(picture->curves_to_fill(), samples);
    picture->draw(*image, screen.picture(), colours);
  });
}

void require_same_picture(const Screen& screen) {
  GraphPicture picture;
  take_curves(picture.curves_to_fill());
  QImage ours(screen.pixels, QImage::Format_RGB32);
  picture.draw(ours, screen.picture(), colours);
  if (ours == plain_picture(picture.curves(), screen.picture(), white)) return;
  std::puts("the graph's picture differs from the plain drawing");
  std::exit(2);
}

void picture_benchmarks(Suite& suite, const std::string& kind, bool noise, const Screen& screen) {
  require_same_picture(screen);
  const std::string name = "graph" + kind + (noise ? ": noise" : ": smooth");
  GraphCurves curves;
  take_curves(curves);
  QImage plain(screen.pixels, QImage::Format_RGB32);
  const auto draw_plainly = timed([&] {
    draw_grid_plainly(plain, screen.picture(), white);
    draw_curves_plainly(plain, curves, screen.picture());
  });
  suite.compare(name, redraw(screen), "a clipped line a pair of samples", draw_plainly,
                screen.pixels == design.pixels ? 1.0 / 15 : 0.5);
  CustomPlot custom_plot(noise, screen.pixels);
  suite.compare(
      name, redraw(screen), "QCustomPlot, fast polylines", [&] { return custom_plot.draw(); },
      screen.pixels == design.pixels ? 0.5 : 1);
  if (screen.pixels != design.pixels) return;
  QwtProcess qwt(noise);
  suite.compare(
      name, redraw(screen), "Qwt 6.1 (Qt 5), filtered points", [&] { return qwt.draw(); }, 0.1);
}

// How the time grows with the samples in view and with the picture's width.
void growth_benchmarks(Suite& suite, bool noise) {
  const std::string kind = noise ? ", noise, " : ", smooth, ";
  const std::string frame = "a frame at 120 Hz";
  for (const int samples : {1000, 3000, 10000, graph_samples}) {
    for (const Screen& screen : {large, large_and_fine}) {
      suite.compare("graph" + kind + std::to_string(samples) + " samples, 3200 px, " +
                        std::to_string(static_cast<int>(screen.ratio * 100)) + " %",
                    redraw(screen, samples), frame, always(8), screen.ratio < 2 ? 1 : 1.5);
    }
  }
  for (const int width : {400, 800, 1600}) {
    suite.compare("graph" + kind + "30001 samples, " + std::to_string(width) + " px",
                  redraw({{width, 2000}}), frame, always(8), 1);
  }
}

void fill_cell_by_cell(QTableWidget& table) {
  const Recording& recording = User::recording;
  table.setRowCount(graph_samples);
  table.setColumnCount(graph_channels + 2);
  for (int n = 0; n < graph_samples; ++n) {
    table.setItem(n, 0, new QTableWidgetItem(QString::number(n + 1)));
    table.setItem(n, 1, new QTableWidgetItem(recording.SampleTimes(n)));
    for (int c = 0; c < graph_channels; ++c) {
      table.setItem(n, c + 2, new QTableWidgetItem(fixed2(recording.SampleValues(n, c))));
    }
  }
}

// The time that `make` takes. Its result is destroyed after the measurement, and the allocator
// tidies up after the other side before it.
template <class Make>
Side timed_making(Make make) {
  return [make] {
    malloc_trim(0);
    decltype(make()) made;
    return milliseconds([&] { made = make(); });
  };
}

void load_benchmarks(Suite& suite) {
  SimulatedWindow world;
  suite.compare("Historical Data window: load", timed_making([&world] {
                  auto window = std::make_unique<frmdisplay>(*world.main.window, nullptr);
                  window->Form_Load();
                  QImage picture(window->Pic1->size(), QImage::Format_RGB32);
                  window->Pic1->render(&picture);
                  return window;
                }),
                "QTableWidget alone, cell by cell", timed_making([] {
                  auto table = std::make_unique<QTableWidget>();
                  fill_cell_by_cell(*table);
                  return table;
                }),
                0.1);
}

// The megabytes still allocated for what `make` returns.
template <class Make>
double megabytes(Make make) {
  const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
  const auto kept = make();
  return static_cast<double>(mallinfo2().uordblks + mallinfo2().hblkhd - before) / 1e6;
}

void memory_benchmarks(Suite& suite) {
  suite.compare(
      "data sheet: memory, MB for ms",
      [] {
        return megabytes([] {
          auto sheet = std::make_unique<QTableView>();
          sheet->setModel(new SheetModel(User::recording, sheet.get()));
          sheet->grab();
          return sheet;
        });
      },
      "QTableWidget, cell by cell",
      [] {
        return megabytes([] {
          auto table = std::make_unique<QTableWidget>();
          fill_cell_by_cell(*table);
          table->grab();
          return table;
        });
      },
      0.1);
}

class PaintCounter final : public QObject {
 public:
  int paints = 0;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    paints += event->type() == QEvent::Paint ? 1 : 0;
    return false;
  }
};

// From the slider's change to the painted graph; the view is the largest Recording, zoomed in by
// one step.
void scroll_benchmarks(Suite& suite, bool noise) {
  fill_recording(User::recording, noise);
  SimulatedWindow world;
  frmdisplay window(*world.main.window, nullptr);
  window.Form_Load();
  window.resize(1024, 640);
  window.show();
  window.cmd_Click(1);
  PaintCounter counter;
  window.Pic1->installEventFilter(&counter);
  constexpr int redraws = 60;
  const auto scroll = timed([&] {
    for (int k = 1; k <= redraws; ++k) {
      const int before = counter.paints;
      window.Slider1->setValue(k % 2 == 0 ? 0 : k * 50);
      while (counter.paints == before) QCoreApplication::processEvents();
    }
  });
  suite.compare(noise ? "graph: 60 scrolls, noise" : "graph: 60 scrolls, smooth", scroll,
                "a second", always(1000), 1);
}

}  // namespace

void graph_benchmarks(Suite& suite) {
  User::reset_display_limits();
  for (const bool noise : {false, true}) {
    fill_recording(User::recording, noise);
    picture_benchmarks(suite, "", noise, design);
    picture_benchmarks(suite, " 3200 x 2000", noise, large);
    growth_benchmarks(suite, noise);
  }
  for (const bool noise : {false, true}) scroll_benchmarks(suite, noise);
  load_benchmarks(suite);
  memory_benchmarks(suite);
  User::recording = Recording();
}
