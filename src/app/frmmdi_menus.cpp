// The menus of the main window: the name, caption, shortcut, initial state and command of each
// entry.
#include <QMenuBar>

#include "acquire/download.h"
#include "app/frmAbout.h"
#include "app/frmmdi.h"
#include "app/help.h"
#include "data/data_commands.h"
#include "data/export_command.h"
#include "device/link.h"
#include "monitor/frmrecord.h"
#include "print/print_commands.h"
#include "views/frmdisplay.h"

struct frmmdi::MenuEntry {
  const char* name;
  const char* caption;  // "-" for a separator
  QKeySequence shortcut;
  bool enabled;
  std::function<void()> run;
};

QAction* frmmdi::add_entry(QMenu& menu, const MenuEntry& entry) {
  if (QByteArray(entry.caption) == "-") {
    QAction* separator = menu.addSeparator();
    separator->setObjectName(QString::fromLatin1(entry.name));
    return separator;
  }
  QAction* action = menu.addAction(QString::fromUtf8(entry.caption));
  action->setObjectName(QString::fromLatin1(entry.name));
  action->setShortcut(entry.shortcut);
  action->setEnabled(entry.enabled);
  action->setAutoRepeat(false);
  if (entry.run) connect(action, &QAction::triggered, this, entry.run);
  entries_.insert(action->objectName(), action);
  return action;
}

void frmmdi::build_menus() {
  // Loads the Historical Data window first if it is closed.
  const auto on_display = [this](auto member, auto... arguments) {
    return [this, member, arguments...] {
      if (!loaded_display()) show_display();
      if (frmdisplay* window = loaded_display()) (window->*member)(arguments...);
    };
  };
  const auto key = [](Qt::Key letter) { return QKeySequence(Qt::CTRL | letter); };
  const QKeySequence none;

  struct Menu {
    const char* name;
    const char* caption;
    std::vector<MenuEntry> entries;
  };
  const std::vector<Menu> menus = {
      {"file",
       "File(&F)",
       {{"open", "Open(&O)...", key(Qt::Key_O), true, [this] { OpenDataFile(*this); }},
        {"close", "Close(&C)", none, true, [this] { CloseDataFile(*this); }},
        {"tt", "-", none, true, {}},
        {"save", "Save(&S)...", key(Qt::Key_S), false, [this] { SaveDataFile(*this); }},
        {"outputs", "Save As(&A)", none, false, [this] { ExportRecording(*this, world_.office); }},
        {"t5", "-", none, true, {}},
        {"printview", "Print View(&V)", none, false, [this] { printview_Click(*this); }},
        {"printdata", "Print(&P)", key(Qt::Key_P), false, [this] { printdata_Click(*this); }},
        {"t", "-", none, true, {}},
        {"Quit", "Exit(&Q)", key(Qt::Key_Q), true, [this] { Quit_Click(); }}}},
      {"device",
       "Tool(&C)",
       {{"link", "Link(&L)", key(Qt::Key_L), true, [this] { link_Click(*this); }},
        {"unlink", "Unlink(&N)", none, false, [this] { unlink_Click(*this); }},
        {"record", "Record Set(&S)", none, false, [this] { frmrecord(*this).exec(); }},
        {"read", "Read Data(&R)", key(Qt::Key_R), false, [this] { ReadRecorderData(*this); }}}},
      {"his",
       "Historical Data(&D)",
       {{"in", "Zoom In(&I)", none, true, on_display(&frmdisplay::cmd_Click, 1)},
        {"out", "Zoom Out(&O)", none, true, on_display(&frmdisplay::cmd_Click, 0)},
        {"t3", "-", none, true, {}},
        {"limit", "Display Limit Set(&S)", none, true, on_display(&frmdisplay::cmd2_Click)},
        {"setdisplaytime", "Display Time Set(&T)", none, true,
         on_display(&frmdisplay::Cmd6_Click)}}},
      {"view",
       "View(&V)",
       {{"realtime", "Real-time Data(&R)", none, true, [this] { realtime_Click(); }},
        {"history", "Historical Data(&D)", none, true, [this] { history_Click(); }}}},
      {"help",
       "Help(&H)",
       {{"helpID", "Contents(&H)", none, true, [] { open_help(); }},
        {"t2", "-", none, true, {}},
        {"about", "About(&A)...", none, true, [this] { frmAbout(this).exec(); }}}},
  };
  for (const Menu& entries : menus) {
    QMenu* menu = menuBar()->addMenu(QString::fromLatin1(entries.caption));
    menu->setObjectName(QString::fromLatin1(entries.name));
    for (const MenuEntry& entry : entries.entries) add_entry(*menu, entry);
  }
}
