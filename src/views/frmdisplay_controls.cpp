// The controls of the Historical Data window and their layout.
#include <QFrame>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QSplitter>
#include <QTabWidget>
#include <QTableView>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

#include "app/user.h"
#include "base/contrast.h"
#include "base/eliding_label.h"
#include "base/errors.h"
#include "base/slider_keys.h"
#include "views/copy_selection.h"
#include "views/frmdisplay.h"
#include "views/sheet_model.h"

namespace {

constexpr int list_width = 4875 / twips_per_pixel;
constexpr int widest_list = 420;
constexpr int least_page_height = 340;
constexpr int column_width = 960 / twips_per_pixel;
constexpr int time_column_width = 2000 / twips_per_pixel;
// Opacity, 0..255, of the background of texts inside the graph: a scale must not hide the curves
// under it.
constexpr int scale_opacity = 170;
constexpr int time_opacity = 215;
// The least share of the window's text colour in the colour of a channel's texts.
constexpr double text_share = 0.6;
constexpr int time_label_width = static_cast<int>(time_label_twips) / twips_per_pixel;

QString indexed(const QString& name, std::size_t index) {
  return QStringLiteral("%1(%2)").arg(name).arg(index);
}

template <class Label = QLabel>
Label* label(const QString& name, QWidget* parent, Qt::Alignment alignment) {
  auto* result = new Label(parent);
  result->setObjectName(name);
  result->setTextFormat(Qt::PlainText);
  result->setAlignment(alignment);
  return result;
}

// The sheet's row follows the graph's cursor. The sheet reports this to screen readers only while
// it has the focus: otherwise they would take it for the control in use.
class SheetView final : public QTableView {
 public:
  using QTableView::QTableView;

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override {
    if (hasFocus()) return QTableView::currentChanged(current, previous);
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): skips the report to screen readers
    QAbstractItemView::currentChanged(current, previous);
  }
  void selectionChanged(const QItemSelection& now, const QItemSelection& before) override {
    if (hasFocus()) return QTableView::selectionChanged(now, before);
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QAbstractItemView::selectionChanged(now, before);
  }
};

void set_colours_of(QWidget* widget, const QColor& text, const QColor& behind) {
  QPalette palette = widget->palette();
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::Window, behind);
  widget->setPalette(palette);
}

}  // namespace

void frmdisplay::build() {
  setObjectName(QStringLiteral("frmdisplay"));
  setWindowTitle(QStringLiteral("Historical Data"));
  lv1 = new QTreeWidget(this);
  lv1->setObjectName(QStringLiteral("lv1"));
  lv1->setAccessibleName(QStringLiteral("Information"));
  lv1->setRootIsDecorated(false);
  lv1->setUniformRowHeights(true);
  lv1->setAllColumnsShowFocus(true);
  lv1->setSelectionMode(QAbstractItemView::ExtendedSelection);
  lv1->setHeaderLabels({QString(), QStringLiteral("Item"), QStringLiteral("Value")});
  lv1->header()->setMinimumSectionSize(0);
  lv1->setColumnWidth(0, fontMetrics().averageCharWidth());
  lv1->setMinimumWidth(list_width * 2 / 3);
  lv1->setMaximumWidth(widest_list);
  copy_selection_on_request(*lv1);

  SSTab1 = new QTabWidget(this);
  SSTab1->setObjectName(QStringLiteral("SSTab1"));
  SSTab1->setAccessibleName(QStringLiteral("Views"));
  MSFlG1 = new SheetView(SSTab1);
  MSFlG1->setObjectName(QStringLiteral("MSFlG1"));
  MSFlG1->setAccessibleName(QStringLiteral("Data Sheet"));
  // The Tab key leaves the sheet instead of moving from cell to cell.
  MSFlG1->setTabKeyNavigation(false);
  copy_selection_on_request(*MSFlG1);
  SSTab1->addTab(build_graph_page(), QStringLiteral("Data Graph"));
  SSTab1->addTab(MSFlG1, QStringLiteral("Data Sheet"));

  auto* splitter = new QSplitter(this);
  splitter->addWidget(lv1);
  splitter->addWidget(SSTab1);
  splitter->setChildrenCollapsible(false);
  splitter->setStretchFactor(0, 1);
  splitter->setStretchFactor(1, 2);
  auto* all = new QHBoxLayout(this);
  all->addWidget(splitter);
  resize(1000, 620);
  splitter->setSizes({list_width, width() - list_width});
  set_colours();
  arrange();
}

QWidget* frmdisplay::build_graph_page() {
  auto* page = new QWidget(SSTab1);
  page->setMinimumSize(400, least_page_height);
  Pic1 = new GraphSurface(page);
  Pic1->setObjectName(QStringLiteral("Pic1"));
  Pic1->setAccessibleName(QStringLiteral("Graph"));
  connect(Pic1, &GraphSurface::MouseDown, this, &frmdisplay::Pic1_MouseDown);
  connect(Pic1, &GraphSurface::cursor_step, this, &frmdisplay::Pic1_KeyDown);
  connect(Pic1, &GraphSurface::zoom_step, this, [this](bool in) { cmd_Click(in ? 1 : 0); });
  connect(Pic1, &GraphSurface::chosen_changed, this, &frmdisplay::show_chosen);
  connect(Pic1, &GraphSurface::sample_wanted, this,
          [this](int sample) { stop_at_first_failure([&] { move_cursor(sample); }); });
  connect(Pic1, &GraphSurface::copy_wanted, this, &frmdisplay::copy_graph);
  Slider1 = new QSlider(Qt::Horizontal, page);
  Slider1->setObjectName(QStringLiteral("Slider1"));
  Slider1->setAccessibleName(QStringLiteral("Position in the Recording"));
  Slider1->setMaximum(0);
  Slider1->installEventFilter(this);
  connect(Slider1, &QSlider::valueChanged, this, &frmdisplay::RedrawGraph);
  build_graph_labels(*page);
  build_cursor();
  build_buttons(*page);
  page->installEventFilter(this);
  return page;
}

void frmdisplay::build_graph_labels(QWidget& page) {
  Label1 = label(QStringLiteral("Label1"), &page, Qt::AlignLeft | Qt::AlignVCenter);
  Label2 = label(QStringLiteral("Label2"), &page, Qt::AlignLeft | Qt::AlignVCenter);
  for (std::size_t i = 0; i < Label4.size(); ++i) {
    const std::size_t slot = i / labels_per_scale;
    const bool inside = slot >= 2;
    const auto side = slot % 2 == (inside ? 1 : 0) ? Qt::AlignRight : Qt::AlignLeft;
    Label4[i] =
        label(indexed(QStringLiteral("Label4"), i), inside ? Pic1 : &page, side | Qt::AlignVCenter);
    Label4[i]->setAttribute(Qt::WA_TransparentForMouseEvents, inside);
  }
  for (std::size_t i = 0; i < Label3.size(); ++i) {
    const bool right = i == 1 || i == 3;
    Label3[i] = label<ElidingLabel>(indexed(QStringLiteral("Label3"), i), &page,
                                    (right ? Qt::AlignRight : Qt::AlignLeft) |
                                        (i >= 4 && i < 8 ? Qt::AlignTop : Qt::AlignVCenter));
    Label3[i]->setWordWrap(i >= 4 && i < 8);
  }
  for (std::size_t c = 0; c < Line1.size(); ++c) {
    Line1[c] = new QFrame(&page);
    Line1[c]->setObjectName(indexed(QStringLiteral("Line1"), c));
    Line1[c]->setFrameShape(QFrame::Box);
    Line1[c]->setAutoFillBackground(true);
    Line1[c]->hide();
    for (QWidget* part : std::initializer_list<QWidget*>{Line1[c], Label3[c + 4], Label3[c + 8]}) {
      Pic1->add_legend(*part, static_cast<int>(c));
    }
    QFont font = Label3[c + 8]->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.2);
    Label3[c + 8]->setFont(font);
  }
}

void frmdisplay::build_cursor() {
  Line2 = new QFrame(Pic1);
  Line2->setObjectName(QStringLiteral("Line2"));
  Line2->setAutoFillBackground(true);
  Label5 = label(QStringLiteral("Label5"), Pic1, Qt::AlignCenter);
  Label5->setWordWrap(true);
  Label5->setFrameShape(QFrame::Box);
  Label5->setMargin(1);
  Label5->setAutoFillBackground(true);
  for (QWidget* mark : {static_cast<QWidget*>(Line2), static_cast<QWidget*>(Label5)}) {
    mark->setAttribute(Qt::WA_TransparentForMouseEvents);
    mark->hide();
  }
}

void frmdisplay::build_buttons(QWidget& page) {
  const auto add = [&page](const QString& name, const QString& caption) {
    auto* button = new QPushButton(caption, &page);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
  };
  cmd = {add(QStringLiteral("cmd(0)"), QStringLiteral("Zoom Out")),
         add(QStringLiteral("cmd(1)"), QStringLiteral("Zoom In"))};
  cmd2 = add(QStringLiteral("cmd2"), QStringLiteral("Display Limit Set"));
  Cmd6 = add(QStringLiteral("Cmd6"), QStringLiteral("Display Time Set"));
  for (int index = 0; index < 2; ++index) {
    connect(cmd[static_cast<std::size_t>(index)], &QPushButton::clicked, this,
            [this, index] { cmd_Click(index); });
  }
  connect(cmd2, &QPushButton::clicked, this, &frmdisplay::cmd2_Click);
  connect(Cmd6, &QPushButton::clicked, this, &frmdisplay::Cmd6_Click);
}

void frmdisplay::build_sheet() {
  auto* model = new SheetModel(User::recording, this);
  MSFlG1->setWordWrap(false);
  MSFlG1->verticalHeader()->hide();
  // The height before the model: afterwards every row would be notified.
  MSFlG1->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  MSFlG1->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  MSFlG1->setModel(model);
  connect(MSFlG1->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& row) {
            if (selecting_ || !row.isValid()) return;
            stop_at_first_failure([&] { move_cursor(row.row()); });
          });
  // The widths of the design, unless the font makes a time or a heading wider.
  QHeaderView& headings = *MSFlG1->horizontalHeader();
  headings.setHighlightSections(false);
  for (int column = 0; column < model->columnCount(); ++column) {
    const int design = column == 1 ? time_column_width : column_width;
    const QVariant text = column == 1 ? model->index(0, 1).data()
                                      : model->headerData(column, Qt::Horizontal, Qt::DisplayRole);
    const int needed = fontMetrics().horizontalAdvance(text.toString() + QStringLiteral("00"));
    MSFlG1->setColumnWidth(column, std::max(design, needed));
  }
}

// A channel's texts have its colour, mixed with the text colour until even yellow is readable, also
// over any curve inside the graph. Curves and swatches have the unmixed colour.
void frmdisplay::set_colours() {
  const QColor window_text = palette().color(QPalette::WindowText);
  const QColor window = palette().color(QPalette::Window);
  const QColor text = palette().color(QPalette::Text);
  const QColor base = palette().color(QPalette::Base);
  const auto behind = [&base](int opacity) {
    return QColor(base.red(), base.green(), base.blue(), opacity);
  };
  // The tab's page is painted somewhat lighter than other windows.
  const std::array around = {window, window.lighter(140)};
  std::vector<QColor> backgrounds = {window, base};
  for (const QRgb curve : curve_colours) {
    backgrounds.push_back(seen_through(base, scale_opacity / 255.0, QColor(curve)));
  }
  for (std::size_t c = 0; c < 4; ++c) {
    const QColor most_coloured = seen_through(window_text, text_share, QColor(curve_colours[c]));
    const QColor outside = readable_colour(most_coloured, window_text, around);
    const QColor inside = readable_colour(most_coloured, window_text, backgrounds);
    for (std::size_t k = 0; k < labels_per_scale; ++k) {
      set_colours_of(Label4[labels_per_scale * c + k], c < 2 ? outside : inside,
                     behind(scale_opacity));
    }
    for (const std::size_t i : {c, c + 4, c + 8}) set_colours_of(Label3[i], outside, window);
    set_colours_of(Line1[c], outside, QColor(curve_colours[c]));
  }
  set_colours_of(Line2, text, text);
  set_colours_of(Label5, text, behind(time_opacity));
}

GraphTextSizes frmdisplay::measure_texts() const {
  const auto width = [](const QLabel* text) {
    return text->fontMetrics().horizontalAdvance(text->text());
  };
  GraphTextSizes sizes;
  // The channels that were loaded: a download may be filling the Recording with others.
  sizes.channels = static_cast<int>(std::count_if(
      Line1.begin(), Line1.end(), [](const QFrame* swatch) { return !swatch->isHidden(); }));
  sizes.line = fontMetrics().height();
  sizes.slider = Slider1->sizeHint().height();
  sizes.button = cmd2->sizeHint().height();
  sizes.widest_button = std::max(cmd2->sizeHint().width(), Cmd6->sizeHint().width());
  sizes.legend = sizes.widest_button;
  for (std::size_t c = 0; c < static_cast<std::size_t>(sizes.channels); ++c) {
    sizes.legend = std::max(sizes.legend, width(Label3[c + 4]));
    // The widest texts of a scale are at its ends.
    const std::size_t top = labels_per_scale * c;
    sizes.scales[c] = std::max(width(Label4[top]), width(Label4[top + scale_steps]));
  }
  return sizes;
}

void frmdisplay::arrange() {
  GraphTextSizes sizes = measure_texts();
  // A scale that once needed more room keeps it, so that the graph does not jump while scrolling.
  for (std::size_t c = 0; c < sizes.scales.size(); ++c) {
    sizes.scales[c] = std::max(sizes.scales[c], text_sizes_.scales[c]);
  }
  const QSize page = Pic1->parentWidget()->size();
  if (sizes == text_sizes_ && page == arranged_page_) return;
  text_sizes_ = sizes;
  arranged_page_ = page;
  const GraphLayout places = graph_layout(page, sizes);
  Pic1->parentWidget()->setMinimumHeight(std::max(least_page_height, places.least_height));
  Pic1->setGeometry(places.Pic1);
  Slider1->setGeometry(places.Slider1);
  Label1->setGeometry(places.Label1);
  Label2->setGeometry(places.Label2);
  for (std::size_t i = 0; i < Label4.size(); ++i) Label4[i]->setGeometry(places.Label4[i]);
  for (std::size_t i = 0; i < Label3.size(); ++i) Label3[i]->setGeometry(places.Label3[i]);
  for (std::size_t c = 0; c < Line1.size(); ++c) Line1[c]->setGeometry(places.Line1[c]);
  const std::array buttons = {cmd[0], cmd[1], cmd2, Cmd6};
  for (std::size_t k = 0; k < buttons.size(); ++k) buttons[k]->setGeometry(places.buttons[k]);
  place_cursor();
}

// The time lies midway between the lowest two labels of an inner scale; the last is moved inside.
void frmdisplay::place_cursor() {
  Line2->setVisible(cursor_shown_);
  Label5->setVisible(cursor_shown_ && !Label5->text().isEmpty());
  if (!cursor_shown_) return;
  const float x = cursor_twips();
  Line2->setGeometry(Pic1->pixel(x), 0, 1, Pic1->height());
  // As wide as its longest word, even if that is wider than the step to the cursor's left.
  const int width = std::max(time_label_width, Label5->minimumSizeHint().width());
  const int height = Label5->heightForWidth(width);
  const int top = Pic1->height() * 15 / 16 - text_sizes_.line / 4 - height / 2;
  const int left = qRound(time_label_left(x, Pic1->twips_width()) / twips_per_pixel);
  Label5->setGeometry(std::max(0, std::min(left, Pic1->width() - width)),
                      std::max(0, std::min(top, Pic1->height() - height)), width, height);
}

bool frmdisplay::eventFilter(QObject* watched, QEvent* event) {
  if (watched == Slider1) {
    return step_slider(*Slider1, *event, ViewStart, page_of(User::recording.ViewCount));
  }
  if (event->type() == QEvent::Resize) arrange();
  return ChildWindow::eventFilter(watched, event);
}

// Underlines the chosen legend: bold text would be wider and move the graph.
void frmdisplay::show_chosen() {
  for (std::size_t c = 0; c < Line1.size(); ++c) {
    QFont font = Label3[c + 4]->font();
    font.setUnderline(Pic1->chosen() == static_cast<int>(c));
    Label3[c + 4]->setFont(font);
  }
}

// Copies the graph with its scales, legend and times as the window shows it.
void frmdisplay::copy_graph() const {
  QList<QWidget*> parts = {Pic1, Label1, Label2};
  for (std::size_t i = 0; i < 18; ++i) parts << Label4[i];
  for (QLabel* text : Label3) parts << text;
  for (QFrame* swatch : Line1) parts << swatch;
  copy_picture(parts);
}

void frmdisplay::changeEvent(QEvent* event) {
  ChildWindow::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) set_colours();
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) arrange();
}
