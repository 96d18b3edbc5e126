// A bare Qt main window with about as many menus, entries and toolbar buttons as the program's,
// with its pictures, and with a status bar of three panels.
#include <QDir>
#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

#include <utility>

#include "until_painted.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QMainWindow window;
  window.resize(1180, 820);
  window.setCentralWidget(new QMdiArea);
  for (const auto& [caption, entries] : {std::pair("File(&F)", 7),
                                         {"Tool(&C)", 4},
                                         {"Historical Data(&D)", 4},
                                         {"View(&V)", 2},
                                         {"Help(&H)", 2}}) {
    QMenu* menu = window.menuBar()->addMenu(QString::fromLatin1(caption));
    for (int i = 0; i < entries; ++i) menu->addAction(QStringLiteral("Entry %1").arg(i));
  }
  QToolBar* bar = window.addToolBar(QStringLiteral("Tools"));
  bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  const QDir icons(QStringLiteral(CORVANE_ICONS));
  const QStringList files = icons.entryList({QStringLiteral("*.svg")});
  for (const QString& file : files) bar->addAction(QIcon(icons.filePath(file)), file);
  for (int i = 0; i < 3; ++i) window.statusBar()->addWidget(new QLabel(QStringLiteral("Panel")));
  const UntilPainted until_painted(window);
  window.show();
  return QApplication::exec();
}
