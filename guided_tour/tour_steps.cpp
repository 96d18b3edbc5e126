// The main job, end to end: link, download everything, save, close, open again.
#include <QFileDialog>
#include <QFileInfo>
#include <QTest>

#include <bit>

#include "acquire/frmhistorytime.h"
#include "app/user.h"
#include "device/frmport.h"
#include "guided_tour/tour.h"

namespace {

constexpr int automatic = 4;
constexpr int open_button = 1;

Recording downloaded;

QString same_samples(const Recording& a, const Recording& b) {
  for (int n = 0; n < a.SampleCount; ++n) {
    if (a.SampleTimes(n) != b.SampleTimes(n)) return QStringLiteral("time of sample %1").arg(n);
    for (int c = 0; c < a.ChannelCount; ++c) {
      if (std::bit_cast<quint32>(a.SampleValues(n, c)) !=
          std::bit_cast<quint32>(b.SampleValues(n, c))) {
        return QStringLiteral("value of sample %1, channel %2").arg(n).arg(c + 1);
      }
    }
  }
  return {};
}

// The first difference between two Recordings; empty if all that a data file holds is the same, bit
// for bit.
QString difference(const Recording& a, const Recording& b) {
  if (a.Title != b.Title) return QStringLiteral("the title");
  if (a.RecorderName != b.RecorderName) return QStringLiteral("the recorder's name");
  if (a.ChannelCount != b.ChannelCount) return QStringLiteral("the number of channels");
  if (a.SampleCount != b.SampleCount) return QStringLiteral("the number of samples");
  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t c = 0; c < static_cast<std::size_t>(a.clamped_channel_count()); ++c) {
      if (a.ChannelInfo[row][c] != b.ChannelInfo[row][c]) {
        return QStringLiteral("the description of channel %1").arg(c + 1);
      }
    }
  }
  return same_samples(a, b);
}

void start(Tour& tour) {
  tour.step(QStringLiteral("start"), QStringLiteral("The main window; no recorder is linked."));
}

void link(Tour& tour) {
  tour.in_dialog<frmport>([&tour](frmport& dialog) {
    tour.click(dialog.Option1[automatic]);
    tour.step(QStringLiteral("select-port"),
              QStringLiteral("Ctrl+L asks for the port and the type; \"Auto\" is chosen."));
    tour.click(dialog.Command1);
  });
  tour.press(Qt::Key_L);
  tour.require(tour.window().menu_entry(QStringLiteral("read"))->isEnabled(),
               QStringLiteral("the recorder is linked"));
  tour.step(QStringLiteral("linked"),
            QStringLiteral("Ok links; the Real-time Data window shows the recorder's properties."));
}

void download(Tour& tour) {
  tour.in_dialog<frmhistorytime>([&tour](frmhistorytime& dialog) {
    tour.step(QStringLiteral("segments"),
              QStringLiteral("Ctrl+R asks which of the stored readings to read: all of them."));
    tour.click(dialog.Command1);
  });
  tour.when([&tour] { return tour.window().PrgB1->value() >= 50; },
            [&tour] {
              tour.step(QStringLiteral("reading"),
                        QStringLiteral("Half of the readings have come in at 9600 baud."));
            });
  tour.press(Qt::Key_R);
  downloaded = User::recording;
  const int count = downloaded.SampleCount;
  tour.require(count > 0, QStringLiteral("readings have come"));
  tour.step(QStringLiteral("downloaded"), QStringLiteral("The readings are the Recording."));
  tour.tell(QStringLiteral("%1 samples of %2 channels, %3 to %4")
                .arg(count)
                .arg(downloaded.ChannelCount)
                .arg(downloaded.SampleTimes(0), downloaded.SampleTimes(count - 1)));
}

void save(Tour& tour) {
  const QString file = tour.work_file(QStringLiteral("cellar.qlx"));
  tour.in_dialog<QFileDialog>([&tour, file](QFileDialog& dialog) {
    tour.type_name(dialog, file);
    tour.step(QStringLiteral("save"), QStringLiteral("Ctrl+S asks for a name."));
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
  });
  tour.press(Qt::Key_S);
  tour.require(QFileInfo::exists(file), QStringLiteral("the data file is written"));
  tour.keep(file);
}

void close(Tour& tour) {
  tour.choose(QStringLiteral("file"), QStringLiteral("close"));
  tour.require(User::recording.SampleCount == 0 &&
                   !tour.window().menu_entry(QStringLiteral("save"))->isEnabled(),
               QStringLiteral("the Recording is closed"));
  // Opening must then fill the Recording from the file alone.
  User::recording = Recording();
  tour.step(QStringLiteral("closed"), QStringLiteral("File > Close puts the Recording away."));
}

void open(Tour& tour) {
  tour.in_dialog<QFileDialog>([&tour](QFileDialog& dialog) {
    tour.type_name(dialog, tour.work_file(QStringLiteral("cellar.qlx")));
    tour.step(QStringLiteral("open"), QStringLiteral("The toolbar's Open File asks for a name."));
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
  });
  tour.click_toolbar(open_button);
  tour.step(QStringLiteral("opened"), QStringLiteral("The data file is the Recording again."));
  const QString differing = difference(downloaded, User::recording);
  tour.require(differing.isEmpty(),
               QStringLiteral("what was opened is what was downloaded; but not ") + differing);
  tour.tell(QStringLiteral("The reopened data equals the downloaded, bit for bit."));
}

}  // namespace

const std::vector<TourStep>& tour_steps() {
  static const std::vector<TourStep> steps = {start,          link,
                                              download,       save,
                                              close,          open,
                                              zoom_graph,     set_limits,
                                              choose_segment, show_sheet,
                                              print_graph,    print_sheet,
                                              export_text,    export_with_office,
                                              set_properties, poll_readings,
                                              stop_polling};
  return steps;
}
