// The manual names everything that the program shows: each menu command, each message.
#include <QDir>
#include <QDirIterator>
#include <QMenuBar>
#include <QRegularExpression>

#include "app/frmmdi.h"
#include "support/files.h"
#include "support/runner.h"
#include "support/simulated_window.h"

namespace {

// A page as its reader sees it: without marks, line breaks as blanks.
QString plain_text(QString page) {
  page.remove(QRegularExpression(QStringLiteral("<[^>]*>")));
  page.replace(QStringLiteral("&gt;"), QStringLiteral(">"));
  return page.simplified();
}

QString manual() {
  QString text;
  const QDir folder(QStringLiteral(CORVANE_HELP));
  const auto pages = folder.entryList({QStringLiteral("*.html")});
  for (const QString& page : pages) text += plain_text(contents(folder.filePath(page)));
  return text;
}

// What the program's sources hand to message boxes.
QStringList messages() {
  static const QRegularExpression shown(
      QStringLiteral("(?:show|ask|complain)\\(\\s*QStringLiteral\\(\"([^\"]+)\"\\)"));
  QStringList found;
  for (QDirIterator files(QStringLiteral(CORVANE_SOURCES), {QStringLiteral("*.cpp")}, QDir::Files,
                          QDirIterator::Subdirectories);
       files.hasNext();) {
    const QString source = contents(files.next());
    for (auto match = shown.globalMatch(source); match.hasNext();) {
      found << match.next().captured(1);
    }
  }
  found.removeDuplicates();
  return found;
}

}  // namespace

class TestHelp : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void names_every_message() {
    const QString text = manual();
    const QStringList all = messages();
    QVERIFY(all.size() >= 14);
    for (QString message : all) {
      message.replace(QStringLiteral("No.%1%2"), QStringLiteral("No.1"));
      QVERIFY2(text.contains(message.simplified()), qPrintable(message));
    }
  }

  void names_every_command() {
    const QString text = manual();
    const SimulatedWindow world;
    const auto menus = world.main.window->menuBar()->actions();
    for (const QAction* menu : menus) {
      QString letters;
      const auto entries = menu->menu()->actions();
      for (const QAction* entry : entries) {
        if (entry->isSeparator()) continue;
        const QString caption = QString(entry->text()).remove(u'&');
        QVERIFY2(text.contains(caption), qPrintable(caption));
        const QChar letter = entry->text()[entry->text().indexOf(u'&') + 1];
        QVERIFY2(!letters.contains(letter), qPrintable(caption));
        letters += letter;
      }
    }
  }
};

#include "test_help.moc"

const int registered_help = register_test<TestHelp>();
