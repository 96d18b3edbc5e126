// The controls of the set-up pane and their layout.
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QVBoxLayout>

#include "base/read_only.h"
#include "base/spoken.h"
#include "monitor/setup_pane.h"
#include "monitor/time_picker.h"

namespace {

// The sizes, in characters, of the fields in which title and description are sent.
constexpr int title_length = 8;
constexpr int description_length = 24;

QGridLayout* tight_grid(QWidget* box) {
  auto* grid = new QGridLayout(box);
  grid->setContentsMargins(8, 4, 8, 6);
  grid->setVerticalSpacing(4);
  return grid;
}

// The place of a caption and its control; the control spans `columns` columns of the grid.
struct Place {
  int row;
  int column;
  int columns = 1;
};

// Adds a caption and, beside it, the control that it names.
void add_row(QGridLayout& grid, const Place& at, const QString& caption, QWidget* control) {
  auto* label = new QLabel(caption);
  label->setBuddy(control);
  control->setAccessibleName(caption);
  grid.addWidget(label, at.row, 2 * at.column);
  grid.addWidget(control, at.row, 2 * at.column + 1, 1, at.columns);
}

QLineEdit* text_box(const QString& name, QWidget* parent, bool read_only = false) {
  auto* box = new QLineEdit(parent);
  box->setObjectName(name);
  box->setReadOnly(read_only);
  if (read_only) look_read_only(*box);
  return box;
}

}  // namespace

// The pane is only as high as its tallest part: the live pane gets the rest of the window.
void SetupPane::build() {
  auto* left = new QVBoxLayout;
  left->addWidget(build_status(), 1);
  left->addWidget(build_description());
  QGroupBox* middle = build_pattern();
  auto* right = new QVBoxLayout;
  right->addWidget(build_channels());
  Command4 = new QPushButton(QStringLiteral("Properties Set"), this);
  Command4->setObjectName(QStringLiteral("Command4"));
  work_label = new QLabel(this);
  work_label->setObjectName(QStringLiteral("work_label"));
  work_label->setTextFormat(Qt::PlainText);
  work_label->setAlignment(Qt::AlignCenter);
  right->addStretch();
  right->addWidget(work_label);
  right->addWidget(Command4);
  auto* all = new QHBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->addLayout(left, 3);
  all->addWidget(middle, 5);
  all->addLayout(right, 2);
}

QGroupBox* SetupPane::build_status() {
  auto* box = new QGroupBox(QStringLiteral("Recorder Status"), this);
  QGridLayout* grid = tight_grid(box);
  Text6 = text_box(QStringLiteral("Text6"), box);
  Text6->setMaxLength(title_length);
  Text5 = text_box(QStringLiteral("Text5"), box, true);
  Text4 = text_box(QStringLiteral("Text4"), box, true);
  Text2 = text_box(QStringLiteral("Text2"), box, true);
  add_row(*grid, {0, 0}, QStringLiteral("Title"), Text6);
  add_row(*grid, {1, 0}, QStringLiteral("Name"), Text5);
  add_row(*grid, {2, 0}, QStringLiteral("Voltage"), Text4);
  add_row(*grid, {3, 0}, QStringLiteral("State"), Text2);
  return box;
}

QGroupBox* SetupPane::build_pattern() {
  auto* box = new QGroupBox(QStringLiteral("Recorder Pattern"), this);
  QGridLayout* grid = tight_grid(box);
  Combo2 = new QComboBox(box);
  Combo2->setObjectName(QStringLiteral("Combo2"));
  Combo2->addItems(
      {QStringLiteral("Start up"), QStringLiteral("Delay Start up"), QStringLiteral("Stop!")});
  Text3 = text_box(QStringLiteral("Text3"), box, true);
  Text3->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("2000-00-00  00:00:00")) +
                         fontMetrics().height());
  DTP2 = make_time_picker(QStringLiteral("DTP2"), box);
  DTP1 = make_time_picker(QStringLiteral("DTP1"), box);
  Text12 = text_box(QStringLiteral("Text12"), box, true);
  Text12->hide();
  Text13 = text_box(QStringLiteral("Text13"), box, true);
  Text13->hide();
  Combo3 = new QComboBox(box);
  Combo3->setObjectName(QStringLiteral("Combo3"));
  Combo3->addItems({QStringLiteral("When buffer is full,Stop record"),
                    QStringLiteral("When buffer is full,Wrap buffer!")});
  for (QComboBox* list : {Combo2, Combo3}) speak_choice(*list);
  Text11 = text_box(QStringLiteral("Text11"), box, true);
  Text14 = text_box(QStringLiteral("Text14"), box);
  add_row(*grid, {0, 0}, QStringLiteral("Startup Type"), Combo2);
  add_row(*grid, {1, 0}, QStringLiteral("Startup  Delay(s)"), DTP2);
  add_row(*grid, {2, 0}, QStringLiteral("Record Interval(s)"), DTP1);
  add_row(*grid, {3, 0, 3}, QStringLiteral("Stop Type"), Combo3);
  add_row(*grid, {0, 1}, QStringLiteral("Startup Time"), Text3);
  add_row(*grid, {1, 1}, QStringLiteral("Historical Sampling"), Text11);
  add_row(*grid, {2, 1}, QStringLiteral("All Data"), Text14);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 1);
  // The Tab key goes row by row, as the user reads.
  const std::array row_by_row =
      std::to_array<QWidget*>({Combo2, Text3, DTP2, Text11, DTP1, Text14, Combo3});
  for (std::size_t i = 1; i < row_by_row.size(); ++i) setTabOrder(row_by_row[i - 1], row_by_row[i]);
  return box;
}

QGroupBox* SetupPane::build_description() {
  auto* box = new QGroupBox(QStringLiteral("Recorder Description"), this);
  QGridLayout* grid = tight_grid(box);
  Text15 = text_box(QStringLiteral("Text15"), box);
  Text15->setMaxLength(description_length);
  Text15->setAccessibleName(box->title());
  grid->addWidget(Text15, 0, 0);
  return box;
}

QTabWidget* SetupPane::build_channels() {
  SSTab1 = new QTabWidget(this);
  SSTab1->setObjectName(QStringLiteral("SSTab1"));
  SSTab1->setAccessibleName(QStringLiteral("Channels"));
  SSTab1->setUsesScrollButtons(false);
  for (int c = 0; c < 4; ++c) {
    auto* page = new QWidget(SSTab1);
    QGridLayout* grid = tight_grid(page);
    const std::array captions = {QStringLiteral("Up Limit"), QStringLiteral("Down Limit")};
    for (int which = 0; which < 2; ++which) {
      const int index = 2 * c + which;
      QLineEdit* limit = text_box(QStringLiteral("Text1(%1)").arg(index), page);
      Text1[static_cast<std::size_t>(index)] = limit;
      add_limit_mark(static_cast<std::size_t>(index));
      add_row(*grid, {which, 0}, captions[static_cast<std::size_t>(which)], limit);
      limit->setAccessibleName(
          QStringLiteral("%1, channel %2").arg(limit->accessibleName()).arg(c + 1));
    }
    auto* check = new QCheckBox(QStringLiteral("Startup"), page);
    check->setObjectName(QStringLiteral("Check1(%1)").arg(c));
    grid->addWidget(check, 2, 1);
    Check1[static_cast<std::size_t>(c)] = check;
    SSTab1->addTab(page, QStringLiteral("Tab %1").arg(c));
  }
  return SSTab1;
}

void SetupPane::add_limit_mark(std::size_t index) {
  QLineEdit* box = Text1[index];
  QAction* mark = box->addAction(style()->standardIcon(QStyle::SP_MessageBoxWarning),
                                 QLineEdit::TrailingPosition);
  mark->setVisible(false);
  limit_marks_[index] = mark;
  connect(box, &QLineEdit::textChanged, this, [this, index] { mark_limit(index); });
  connect(box, &QLineEdit::textChanged, this, &SetupPane::limits_changed);
}
