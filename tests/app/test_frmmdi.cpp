#include "base/times.h"
#include "support/simulated_window.h"

namespace {

// The contents of all matching files in the folder and below, joined.
QString all_files(const QString& folder, const QString& pattern) {
  QString text;
  QDirIterator files(folder, {pattern}, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) text += contents(files.next());
  return text;
}

// The manual's text as its reader sees it: without tags, line breaks as blanks.
QString manual() {
  QString text = all_files(CORVANE_HELP, "*.html");
  return text.remove(QRegularExpression("<[^>]*>")).replace("&gt;", ">").simplified();
}

}  // namespace

// The main window.
class TestMainWindow : public QObject {
  Q_OBJECT

  // The enabled menu entries, and the enabled toolbar buttons by their index.
  QString enabled() const {
    QStringList names;
    for (const QAction* action : window().findChildren<QAction*>()) {
      const QString& name = action->objectName();
      if (window().menu_entry(name) && action->isEnabled()) names << name;
    }
    for (int i = 1; i <= 15; ++i) {
      const QAction* button = window().toolbar_button(i);
      if (button->isEnabled() && !button->isSeparator()) names << QString::number(i);
    }
    return names.join(' ');
  }
  frmmdi& window() const { return *w_->main.window; }

  std::unique_ptr<SimulatedWindow> w_;

 private Q_SLOTS:
  void init() { w_ = std::make_unique<SimulatedWindow>(); }

  // The save button (2) is always enabled.
  void enabled_commands() {
    const QString views = "in out limit setdisplaytime realtime history helpID about ";
    const QString data = "open close save outputs printview printdata Quit ";
    const QString linked = "unlink record read ";
    QCOMPARE(enabled(), "open close Quit link " + views + "1 2 7 12 13 15");
    window().enable_data_commands(true);
    QCOMPARE(enabled(), data + "link " + views + "1 2 3 4 7 12 13 15");
    window().set_linked_commands(true);
    QCOMPARE(enabled(), data + linked + views + "1 2 3 4 8 9 10 12 13 15");
    window().enable_data_commands(false);
    QCOMPARE(enabled(),
             "open close Quit " + linked + "in out realtime helpID about 1 2 8 9 10 13 15");
    window().set_linked_commands(false);
    QCOMPARE(enabled(), "open close Quit link in out helpID about 1 2 7 15");
  }

  void start_state() {
    QVERIFY(User::DisplayLimitAuto[3] == 1 && w_->port.log.isEmpty());
    w_->clock.sleep(61'000);
    QTRY_COMPARE(window().Sts1[2]->text(), general_date_time_text(w_->clock.now()));
  }

  // The keys of the commands that have one, and what they run.
  void keys_run_commands() {
    QString run;
    for (const char* name : {"open", "save", "printdata", "link", "read", "Quit"}) {
      connect(window().menu_entry(name), &QAction::triggered, this, [&run, name] { run += name; });
    }
    window().enable_data_commands(true);
    for (const char key : {'O', 'S', 'P', 'L', 'R', 'Q'}) {
      if (key == 'R') window().set_linked_commands(true);
      const auto leave = when_shown<QDialog>([](QDialog& dialog) { dialog.reject(); });
      window().activateWindow();
      QVERIFY(QTest::qWaitForWindowActive(&window()));
      QTest::keyClick(&window(), key, Qt::ControlModifier);
      run += u' ';
    }
    QCOMPARE(run, "open save printdata link read Quit ");
  }

  // The manual names every message in the program's sources.
  void manual_names_every_message() {
    const QRegularExpression shown(
        "(?|(?:show|ask|complain|tell_saved|set_panel)\\((?:[12], )?\\s*QStringLiteral\\(\"([^\"]+)"
        "|\"([^\"]*(?: will be |, in place of )[^\"]*))\"\\)");
    const QString text = manual();
    QString sources = all_files(CORVANE_SOURCES, "*.cpp").replace("No.%1%2", "No.1").remove("%3");
    sources.replace(QRegularExpression("%[12]"), "...");
    int messages = 0;
    for (auto match = shown.globalMatch(sources); match.hasNext(); ++messages) {
      const QString message = match.next().captured(1).simplified();
      QVERIFY2(text.contains(message), qPrintable(message));
    }
    QVERIFY(messages >= 20);
  }

  // The manual names every menu entry. No two entries of a menu have the same letter.
  void manual_names_every_command() {
    const QString text = manual();
    for (const QAction* menu : window().menuBar()->actions()) {
      QString letters;
      for (const QAction* entry : menu->menu()->actions()) {
        if (entry->isSeparator()) continue;
        const QString caption = QString(entry->text()).remove(u'&');
        QVERIFY2(text.contains(caption), qPrintable(caption));
        const QChar letter = entry->text()[entry->text().indexOf(u'&') + 1];
        QVERIFY2(!letters.contains(letter), qPrintable(caption));
        letters += letter;
      }
    }
    QVERIFY(QTest::qWaitForWindowActive(&window()));
    QTest::keyClick(&window(), Qt::Key_F10);
    QVERIFY(QApplication::activePopupWidget());
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
  }
};

const int registered = register_test<TestMainWindow>();

#include "test_frmmdi.moc"
