// The controls of the live pane and their layout.
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QVBoxLayout>

#include "base/eliding_label.h"
#include "monitor/channel_status.h"
#include "monitor/following_table.h"
#include "monitor/live_graph.h"
#include "monitor/live_pane.h"
#include "views/copy_selection.h"

namespace {

constexpr int channel_count = 4;

QString element(const char* name, int index) {
  return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

// Plain text only, so that a text from a recorder or a device file is never read as markup.
template <class Label = QLabel>
Label* text_label(const QString& name, QWidget* parent) {
  auto* label = new Label(parent);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  return label;
}

FollowingTable* sheet(const char* name, const char* caption, QAbstractItemModel& model,
                      QWidget* parent) {
  auto* table = new FollowingTable(model, parent);
  table->setObjectName(QLatin1String(name));
  table->setAccessibleName(QLatin1String(caption));
  copy_selection_on_request(*table);
  return table;
}

}  // namespace

void LivePane::build() {
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(4);
  all->addWidget(build_readings());
  all->addWidget(build_tabs(), 1);
  saved_label = text_label<ElidingLabel>(QStringLiteral("saved_label"), this);
  saved_label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  saved_label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  saved_label->hide();
  all->addWidget(saved_label);
}

QWidget* LivePane::build_readings() {
  auto* box = new QFrame(this);
  box->setFrameShape(QFrame::StyledPanel);
  auto* grid = new QGridLayout(box);
  grid->setContentsMargins(8, 3, 8, 3);
  grid->setVerticalSpacing(1);
  for (int which = 0; which < labels_per_channel; ++which) {
    auto* caption = new QLabel(channel_captions()[static_cast<std::size_t>(which)], box);
    grid->addWidget(caption, 0, which);
    grid->setColumnStretch(which, which == name_label || which == last_alarm_label ? 2 : 1);
    for (int c = 0; c < channel_count; ++c) {
      const int index = labels_per_channel * c + which;
      QLabel* label = text_label<ElidingLabel>(element("Label4", index), box);
      // Keeps a new text from moving its neighbours.
      label->setMinimumWidth(1);
      label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
      grid->addWidget(label, c + 1, which);
      Label4[static_cast<std::size_t>(index)] = label;
    }
  }
  stale_label = text_label<ElidingLabel>(QStringLiteral("stale_label"), box);
  stale_label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  stale_label->hide();
  grid->addWidget(stale_label, channel_count + 1, 0, 1, labels_per_channel);
  return box;
}

QTabWidget* LivePane::build_tabs() {
  SSTab3 = new QTabWidget(this);
  SSTab3->setObjectName(QStringLiteral("SSTab3"));
  SSTab3->setAccessibleName(QStringLiteral("Live data"));
  SSTab3->addTab(build_graph_page(), QStringLiteral("Data Graph"));
  MSFlG1 = sheet("MSFlG1", "Live readings", monitor_.live_sheet, SSTab3);
  SSTab3->addTab(MSFlG1, QStringLiteral("Data Sheet"));
  MSFlG2 = sheet("MSFlG2", "Alarms", monitor_.alarm_sheet, SSTab3);
  MSFlG2->horizontalHeader()->setStretchLastSection(true);
  SSTab3->addTab(MSFlG2, QStringLiteral("Warn Sheet"));
  MSFlG2->viewport()->installEventFilter(this);
  connect(&monitor_.alarm_sheet, &QAbstractItemModel::rowsInserted, this, &LivePane::tell_alarm);
  connect(SSTab3, &QTabWidget::currentChanged, this, &LivePane::RedrawGraph);
  return SSTab3;
}

QWidget* LivePane::build_graph_page() {
  auto* page = new QWidget(SSTab3);
  // Built first because it is above the graph: the Tab key follows the order of creation.
  QLayout* legend = build_legend(page);
  Pic1 = new GraphSurface(page);
  Pic1->setObjectName(QStringLiteral("Pic1"));
  Pic1->setAccessibleName(QStringLiteral("Live graph"));
  Pic1->setMinimumHeight(80);
  connect(Pic1, &GraphSurface::resized, this, &LivePane::place_cursor);
  connect(Pic1, &GraphSurface::MouseDown, this, &LivePane::Pic1_MouseDown);
  connect(Pic1, &GraphSurface::cursor_step, this, &LivePane::Pic1_KeyDown);
  connect(Pic1, &GraphSurface::sample_wanted, this, &LivePane::move_cursor);
  connect(Pic1, &GraphSurface::zoom_step, this, [this](bool in) { cmd_Click(in ? 1 : 0); });
  connect(Pic1, &GraphSurface::copy_wanted, page, [page] {
    QList<QWidget*> parts = page->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    parts.removeIf([](const QWidget* part) {
      return part->inherits("QAbstractButton") || part->inherits("QAbstractSlider") ||
             part->inherits("QFocusFrame");
    });
    copy_picture(parts);
  });
  for (int c = 0; c < channel_count; ++c) {
    Pic1->add_legend(*Line1[static_cast<std::size_t>(c)], c);
    Pic1->add_legend(*Label3[static_cast<std::size_t>(c)], c);
  }
  build_cursor();

  Label1 = text_label(QStringLiteral("Label1"), page);
  Label2 = text_label(QStringLiteral("Label2"), page);
  Label2->setAlignment(Qt::AlignRight);
  Slider1 = new QSlider(Qt::Horizontal, page);
  Slider1->setObjectName(QStringLiteral("Slider1"));
  Slider1->setAccessibleName(QStringLiteral("Position of the graph"));
  Slider1->setRange(0, 100);
  Slider1->installEventFilter(this);
  connect(Slider1, &QSlider::valueChanged, this, &LivePane::RedrawGraph);
  auto* below = new QHBoxLayout;
  below->setSpacing(8);
  below->addWidget(Label1);
  below->addWidget(Slider1, 1);
  below->addWidget(Label2);

  // The margins centre the scale's first and last labels on the graph's edges.
  auto* graph = new QVBoxLayout;
  const int half_label = fontMetrics().height() / 2;
  graph->setContentsMargins(0, half_label, 0, half_label);
  graph->addWidget(Pic1);

  auto* grid = new QGridLayout(page);
  grid->addLayout(legend, 0, 1);
  grid->addWidget(build_scale(page), 1, 0);
  grid->addLayout(graph, 1, 1);
  grid->addLayout(below, 2, 1);
  grid->setContentsMargins(6, 4, 8, 4);
  grid->setRowStretch(1, 1);
  grid->setVerticalSpacing(2);
  return page;
}

// Each channel's line and name, followed by the zoom buttons.
QLayout* LivePane::build_legend(QWidget* page) {
  auto* legend = new QHBoxLayout;
  legend->setSpacing(4);
  for (int c = 0; c < channel_count; ++c) {
    const auto channel = static_cast<std::size_t>(c);
    auto* line = new QFrame(page);
    line->setObjectName(element("Line1", c));
    line->setFixedSize(24, 5);
    line->setFrameShape(QFrame::Box);
    QPalette colours;
    colours.setColor(QPalette::Window, QColor(curve_colours[channel]));
    colours.setColor(QPalette::WindowText, QColor(curve_colours[channel]).darker());
    line->setPalette(colours);
    line->setAutoFillBackground(true);
    Line1[channel] = line;
    Label3[channel] = text_label<ElidingLabel>(element("Label3", c), page);
    legend->addWidget(line);
    legend->addWidget(Label3[channel]);
    legend->addSpacing(12);
  }
  legend->addStretch();
  const std::array captions = {QStringLiteral("Zoom Out"), QStringLiteral("Zoom In")};
  for (int index = 0; index < 2; ++index) {
    const auto button = static_cast<std::size_t>(index);
    cmd[button] = new QPushButton(captions[button], page);
    cmd[button]->setObjectName(element("cmd", index));
    connect(cmd[button], &QPushButton::clicked, this, [this, index] { cmd_Click(index); });
    legend->addWidget(cmd[button]);
  }
  return legend;
}

// The fixed scale beside the graph, with a value at every fourth line of the grid.
QWidget* LivePane::build_scale(QWidget* page) {
  auto* scale = new QWidget(page);
  auto* column = new QVBoxLayout(scale);
  column->setContentsMargins(0, 0, 0, 0);
  constexpr float step = (live_graph_high - live_graph_low) / 4;
  for (float value = live_graph_high; value >= live_graph_low; value -= step) {
    auto* label = new QLabel(QString::number(value), scale);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    if (value < live_graph_high) column->addStretch();
    column->addWidget(label);
  }
  return scale;
}

void LivePane::build_cursor() {
  Line2 = new QFrame(Pic1);
  Line2->setObjectName(QStringLiteral("Line2"));
  Line2->setAttribute(Qt::WA_TransparentForMouseEvents);
  Line2->setAutoFillBackground(true);
  Line2->setBackgroundRole(QPalette::WindowText);
  Label5 = text_label(QStringLiteral("Label5"), Pic1);
  Label7 = text_label(QStringLiteral("Label7"), Pic1);
  for (QLabel* label : {Label5, Label7}) {
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    label->setAutoFillBackground(true);
    label->setBackgroundRole(QPalette::ToolTipBase);
    label->setForegroundRole(QPalette::ToolTipText);
    label->setMargin(2);
    label->setWordWrap(true);
  }
  for (QWidget* part : std::initializer_list<QWidget*>{Line2, Label5, Label7}) part->hide();
}
