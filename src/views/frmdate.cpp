#include "views/frmdate.h"

#include <QDateTimeEdit>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

#include "app/user.h"
#include "base/date_picker.h"
#include "base/errors.h"
#include "base/message_box.h"
#include "base/mnemonics.h"
#include "base/ok_cancel.h"
#include "base/times.h"
#include "views/date_segment.h"

namespace {

// The time of a sample's stamp. Throws if there is no such sample or its stamp is not a time.
QDateTime sample_time(std::int64_t sample) {
  QDateTime time = date_time_of(User::recording.SampleTimes(sample));
  if (!time.isValid()) throw ConversionError("not a time stamp");
  return time;
}

// If the clock was set back, a Recording can end before it begins. Its end is then no limit.
void set_latest(QDateTimeEdit& picker, QDate date) {
  if (date >= picker.minimumDate()) picker.setMaximumDate(date);
}

}  // namespace

frmdate::frmdate(MessageBox& messages, std::int32_t view_start,
                 std::function<void(std::int32_t)> show, QWidget* parent)
    : QDialog(parent), messages_(messages), show_(std::move(show)) {
  build();
  Form_Load(view_start);
}

void frmdate::build() {
  setObjectName(QStringLiteral("frmdate"));
  setWindowTitle(QStringLiteral("Select Date Segment"));
  auto* grid = new QGridLayout;
  const auto add_row = [&](int row, const QString& caption, const QString& name) {
    auto* label = new QLabel(caption, this);
    label->setObjectName(name);
    const auto index = static_cast<std::size_t>(2 * row);
    DTP2[index] = new DatePicker(this);
    DTP2[index + 1] = new QDateTimeEdit(this);
    DTP2[index + 1]->setDisplayFormat(QStringLiteral("HH:mm:ss"));
    name_picker(index, caption + QStringLiteral(": date"));
    name_picker(index + 1, caption + QStringLiteral(": time of day"));
    label->setBuddy(DTP2[index]);
    give_letter(*label, caption.front());
    give_letter(*DTP2[index + 1], row == 0 ? u'T' : u'M');
    grid->addWidget(label, row, 0);
    grid->addWidget(DTP2[index], row, 1);
    grid->addWidget(DTP2[index + 1], row, 2);
    return label;
  };
  Label1 = add_row(0, QStringLiteral("Start Time"), QStringLiteral("Label1"));
  Label2 = add_row(1, QStringLiteral("End Time"), QStringLiteral("Label2"));

  const auto [ok, cancel, buttons] = make_ok_cancel(*this);
  Command1 = ok;
  Command2 = cancel;
  connect(Command1, &QPushButton::clicked, this, &frmdate::Command1_Click);

  auto* all = new QVBoxLayout(this);
  all->addLayout(grid);
  all->addLayout(buttons);
  all->setSizeConstraint(QLayout::SetFixedSize);
}

void frmdate::name_picker(std::size_t index, const QString& name) {
  DTP2[index]->setObjectName(QStringLiteral("DTP2(%1)").arg(index));
  DTP2[index]->setAccessibleName(name);
  DTP2[index]->setTimeSpec(Qt::UTC);
}

void frmdate::Form_Load(std::int32_t view_start) {
  const Recording& recording = User::recording;
  const std::int64_t last = std::int64_t{recording.SampleCount} - 1;
  const std::int64_t view_end = std::int64_t{view_start} + recording.ViewCount - 1;
  const auto [start_date, start_time, end_date, end_time] = DTP2;
  for (QDateTimeEdit* picker : {start_date, end_date}) {
    skip_on_error([&] { picker->setMinimumDate(sample_time(0).date()); });
    skip_on_error([&] { set_latest(*picker, sample_time(last).date()); });
  }
  skip_on_error([&, picker = start_date] { picker->setDate(sample_time(view_start).date()); });
  skip_on_error([&, picker = start_time] { picker->setTime(sample_time(view_start).time()); });
  skip_on_error([&, picker = end_date] { picker->setDate(sample_time(view_end).date()); });
  skip_on_error([&, picker = end_time] { picker->setTime(sample_time(view_end).time()); });
}

void frmdate::Command1_Click() {
  stop_at_first_failure([this] {
    const auto chosen = [this](std::size_t index) {
      return stamp_text(QDateTime(DTP2[index]->date(), DTP2[index + 1]->time(), Qt::UTC));
    };
    const QString start = chosen(0);
    const QString end = chosen(2);
    if (start > end) {
      messages_.show(QStringLiteral("Start Time>End Time"));
      DTP2[0]->setFocus();
      return;
    }
    const DateSegment segment = date_segment(User::recording, start, end);
    User::recording.ViewCount = segment.count;
    show_(segment.first);
    accept();
  });
}
