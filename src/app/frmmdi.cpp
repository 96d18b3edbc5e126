#include "app/frmmdi.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>

#include "app/every_window.h"
#include "app/icons.h"
#include "app/user.h"
#include "base/clock.h"
#include "base/message_box.h"
#include "base/program_folder.h"
#include "base/read_only.h"
#include "base/serial_port.h"
#include "base/spoken.h"
#include "base/times.h"
#include "base/tool_tip.h"
#include "device/packet.h"
#include "monitor/frmrealtime.h"

namespace {

constexpr int clock_interval_ms = 1000;
constexpr int clock_panel = 3;
// A screen reader announces progress each time it passes a multiple of this many percent.
constexpr int spoken_step = 25;
constexpr QSize design_size(1180, 820);
const QString device_file = QStringLiteral("/device.txt");

// The entries that act on a Recording, and the toolbar buttons that go with them. Index 5 is a
// separator, and the save button (2) is left out on purpose: it is always enabled.
const QStringList data_entries = {"save",  "outputs",        "printview", "printdata",
                                  "limit", "setdisplaytime", "history"};
constexpr std::array data_buttons = {3, 4, 5, 12};

struct ToolbarButton {
  const char* key;  // empty for a separator
  const char* caption;
};
constexpr std::array<ToolbarButton, 15> toolbar_buttons = {{{"open", "Open File"},
                                                            {"save", "Save File"},
                                                            {"outputs", "Save As"},
                                                            {"prints", "Print"},
                                                            {"", ""},
                                                            {"", ""},
                                                            {"link", "Link"},
                                                            {"unlink", "Unlink"},
                                                            {"identity", "Record Set"},
                                                            {"read", "Read Data"},
                                                            {"", ""},
                                                            {"history", "Historical Data"},
                                                            {"realtime", "Real-time Data"},
                                                            {"", ""},
                                                            {"about", "About"}}};
// The menu entries of the toolbar buttons whose names differ from theirs. Print runs the preview.
const QMap<QString, QString> toolbar_commands = {{"prints", "printview"}, {"identity", "record"}};

// An empty bar looks like an input box, so it is invisible until there is progress to show.
const QString empty_progress =
    QStringLiteral("QProgressBar { border: none; background: transparent; }");

}  // namespace

frmmdi::frmmdi(const OutsideWorld& world) : world_(world), recorder_(world.port, world.clock) {
  Packet::attach(recorder_);
  build();
  MDIForm_Load();
  connect(&recorder_.use, &RecorderUse::changed, this, &frmmdi::show_recorder_commands);
}

void frmmdi::build() {
  setObjectName(QStringLiteral("frmmdi"));
  setWindowTitle(program_title);
  resize(design_size.boundedTo(screen()->availableSize()));
  build_area();
  build_menus();
  build_toolbar();
  build_status_bar();
  build_shortcuts();
  set_icons();
  colour_hint();
  setAcceptDrops(true);

  Timer1 = new QTimer(this);
  Timer1->setInterval(clock_interval_ms);
  connect(Timer1, &QTimer::timeout, this, &frmmdi::Timer1_Timer);
}

void frmmdi::build_shortcuts() {
  qApp->installEventFilter(new EveryWindow(this));
  auto* menus = new QShortcut(Qt::Key_F10, this);
  connect(menus, &QShortcut::activated, this,
          [bar = menuBar()] { bar->setActiveAction(bar->actions().constFirst()); });
  // Where Ctrl+F4 is the system's own key for closing, the child windows already have it, and a
  // second shortcut would be ambiguous.
  const QKeySequence close_key(Qt::CTRL | Qt::Key_F4);
  if (QKeySequence::keyBindings(QKeySequence::Close).contains(close_key)) return;
  auto* close_child = new QShortcut(close_key, this);
  connect(close_child, &QShortcut::activated, area_, &QMdiArea::closeActiveSubWindow);
}

void frmmdi::build_toolbar() {
  Tool1 = addToolBar(QStringLiteral("Tools"));
  Tool1->setObjectName(QStringLiteral("Tool1"));
  Tool1->setMovable(false);
  Tool1->setContextMenuPolicy(Qt::PreventContextMenu);
  Tool1->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  for (const ToolbarButton& button : toolbar_buttons) {
    const QString key = QString::fromLatin1(button.key);
    if (key.isEmpty()) {
      Tool1->addSeparator();
      continue;
    }
    const QString caption = QString::fromLatin1(button.caption);
    QAction* action = Tool1->addAction(caption);
    action->setData(key);
    action->setToolTip(caption);
    // At the start a button is enabled as its menu entry is, except the save button.
    const QAction* entry = menu_entry(toolbar_commands.value(key, key));
    action->setEnabled(key == u"save" || entry->isEnabled());
    connect(action, &QAction::triggered, this, [this, key] { Tool1_ButtonClick(key); });
  }
}

void frmmdi::build_status_bar() {
  QStatusBar* bar = statusBar();
  bar->setObjectName(QStringLiteral("Sts1"));
  for (int panel = 0; panel < 3; ++panel) {
    auto* label = new QLabel(bar);
    label->setObjectName(QStringLiteral("Sts1(%1)").arg(panel + 1));
    label->setTextFormat(Qt::PlainText);
    label->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    Sts1[static_cast<std::size_t>(panel)] = label;
  }
  PrgB1 = new QProgressBar(bar);
  PrgB1->setObjectName(QStringLiteral("PrgB1"));
  PrgB1->setAccessibleName(QStringLiteral("Progress"));
  PrgB1->setRange(0, 100);
  PrgB1->setValue(0);
  PrgB1->setTextVisible(false);
  PrgB1->setStyleSheet(empty_progress);
  PrgB1->setFixedWidth(fontMetrics().averageCharWidth() * 24);
  Text1 = new QLineEdit(bar);
  Text1->setObjectName(QStringLiteral("Text1"));
  Text1->setAccessibleName(QStringLiteral("Progress in percent"));
  Text1->setReadOnly(true);
  Text1->setFrame(false);
  look_read_only(*Text1);
  Text1->setFocusPolicy(Qt::NoFocus);
  Text1->setAlignment(Qt::AlignCenter);
  Text1->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("100%")) * 2);
  Sts1[1]->setMinimumWidth(fontMetrics().averageCharWidth() * 16);
  Sts1[2]->setMinimumWidth(fontMetrics().averageCharWidth() * 24);
  bar->addWidget(Sts1[0], 1);
  bar->addPermanentWidget(PrgB1);
  bar->addPermanentWidget(Text1);
  bar->addPermanentWidget(Sts1[1]);
  bar->addPermanentWidget(Sts1[2]);
}

void frmmdi::set_icons() {
  const auto actions = Tool1->actions();
  for (QAction* action : actions) {
    if (!action->isSeparator()) {
      action->setIcon(command_icon(action->data().toString(), palette()));
    }
  }
}

void frmmdi::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() != QEvent::PaletteChange) return;
  set_icons();
  colour_hint();
}

void frmmdi::MDIForm_Load() {
  User::reset_display_limits();
  Packet::PacketCounter() = 0;
  User::DeviceTable = read_device_file(program_folder() + device_file);
  Timer1_Timer();
  Timer1->start();
}

// Asks nothing and saves nothing. Ends all waits at once, so that every handler that is waiting
// returns.
void frmmdi::MDIForm_Unload() {
  shutting_down_ = true;
  // A desktop session can end while a dialog is open. Closing it lets its handler return too.
  while (QWidget* dialog = QApplication::activeModalWidget()) {
    if (!dialog->close()) break;
  }
  Timer1->stop();
  if (frmrealtime* window = loaded_realtime()) window->pause_polling();
  if (MSComm1().is_open()) MSComm1().close();
  MSComm1().set_rts(false);
  MSComm1().set_dtr(false);
  clock().stop();
}

void frmmdi::closeEvent(QCloseEvent* event) {
  if (!shutting_down_) MDIForm_Unload();
  event->accept();
}

void frmmdi::Timer1_Timer() {
  set_panel(clock_panel, general_date_time_text(clock().now()));
}

void frmmdi::Tool1_ButtonClick(const QString& key) {
  if (QAction* entry = menu_entry(toolbar_commands.value(key, key))) Q_EMIT entry->triggered();
}

void frmmdi::Quit_Click() {
  Timer1->stop();
  close();
}

void frmmdi::set_panel(int panel, const QString& text) {
  QLabel& label = *Sts1.at(static_cast<std::size_t>(panel - 1));
  if (panel == clock_panel) {
    label.setText(text);
  } else {
    show_spoken(label, text);
  }
}

void frmmdi::set_progress(int value, const QString& text) {
  const bool step_done = value / spoken_step > PrgB1->value() / spoken_step;
  PrgB1->setValue(value);
  if (step_done) announce(*this, text);
  Text1->setText(text);
  const QString style = value == 0 && text.isEmpty() ? empty_progress : QString();
  if (PrgB1->styleSheet() != style) PrgB1->setStyleSheet(style);
}

QString frmmdi::tell_wait(const QString& what) {
  QString before = Sts1[1]->toolTip();
  for (QWidget* place : std::initializer_list<QWidget*>{Sts1[1], PrgB1, Text1}) {
    place->setToolTip(what);
  }
  return before;
}

void frmmdi::enable_data_commands(bool enabled) {
  for (const QString& name : data_entries) menu_entry(name)->setEnabled(enabled);
  for (const int index : data_buttons) toolbar_button(index)->setEnabled(enabled);
  set_recording_file({});
}

// Leaves the caption as the program's title; the desktop shows the path in its own way.
void frmmdi::set_recording_file(const QString& path) {
  setWindowFilePath(path);
  Sts1[0]->setToolTip(plain_tool_tip(QDir::toNativeSeparators(path)));
  if (display_) show_file_of(*display_);
}

void frmmdi::enable_recorder_command(const QString& name, int button, bool enabled) {
  menu_entry(name)->setEnabled(enabled);
  toolbar_button(button)->setEnabled(enabled);
}

void frmmdi::set_linked_commands(bool linked) {
  linked_ = linked;
  enable_recorder_command(QStringLiteral("realtime"), 13, linked);
  enable_recorder_command(QStringLiteral("record"), 9, linked);
  enable_recorder_command(QStringLiteral("unlink"), 8, linked);
  show_recorder_commands();
}

// Disables the commands that cannot run now: link and download while a task has the recorder, and
// download also while the Real-time Data window is loading.
void frmmdi::show_recorder_commands() {
  const RecorderUse& use = recorder_.use;
  enable_recorder_command(QStringLiteral("link"), 7, !linked_ && use.free_for(RecorderTask::link));
  enable_recorder_command(QStringLiteral("read"), 10,
                          linked_ && !realtime_loading_ && use.free_for(RecorderTask::download));
}
