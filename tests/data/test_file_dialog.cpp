#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>

#include "base/dialogs.h"
#include "support/dialogs.h"
#include "support/runner.h"

// The real file dialog, worked with the keyboard.
class TestFileDialog : public QObject {
  Q_OBJECT

  static constexpr auto open = FileDialog::Purpose::open;
  static constexpr auto save = FileDialog::Purpose::save;

  // Types `name` into the dialog; what is still open then is cancelled. Gives the name that came
  // through. Typing counts: a name that is set does not work the same.
  QString chosen(FileDialog::Purpose purpose, const QString& name) {
    const auto script = when_shown<QFileDialog>([&](QFileDialog& dialog) {
      QVERIFY(QTest::qWaitForWindowActive(&dialog));
      title_ = dialog.windowTitle() + dialog.nameFilters().join(u'|');
      auto* field = dialog.findChild<QLineEdit*>("fileNameEdit");
      QTRY_VERIFY(field->hasFocus());
      QCOMPARE(field->text(), "");
      QTest::keyClicks(field, name);
      QCoreApplication::processEvents();
      QTest::keyClick(field, Qt::Key_Return);
      shown_folder_ = dialog.directory().path();
      if (dialog.isVisible()) QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    dialog_.file_name.clear();
    dialog_.show(purpose);
    return dialog_.file_name;
  }

  QTemporaryDir folder_;
  WindowFileDialog dialog_;
  QString title_, shown_folder_;

 private Q_SLOTS:
  void initTestCase() {
    // The dialog keeps its last folder and column widths in the user's settings.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder_.filePath("settings"));
    const QDir folder(folder_.path());
    QVERIFY(folder.mkpath("inner") && folder.mkpath("a/b/c"));
    QVERIFY(make_file(folder.filePath("there.qlx")));
  }

  // The name comes through as it was typed, for opening as for saving, and nothing is asked. A
  // folder is gone into; cancelled then, the dialog leaves no name.
  void typed_names() {
    dialog_.filter = "*.qlx|*.qlx";
    dialog_.title = "Open File";
    chosen(open, folder_.filePath("here"));
    QCOMPARE(title_, "Open File*.qlx");
    for (const char* name : {"there.qlx", "there", "the", "a.b.c", "cold store 1"}) {
      QCOMPARE(chosen(open, name), folder_.filePath(name));
      QCOMPARE(chosen(save, name), folder_.filePath(name));
    }
    for (const char* name : {"inner", "..", ""}) {
      QCOMPARE(chosen(open, name), "");
      QCOMPARE(shown_folder_, QDir::cleanPath(folder_.filePath(name)));
    }
    QCOMPARE(chosen(save, "inner/../inner/./x"), folder_.filePath("inner/x"));
    QCOMPARE(chosen(open, "none/x.qlx"), folder_.filePath("inner/none/x.qlx"));
    // The folder remembered, which is not there, does not stand in the dialog as a name; nor is one
    // that is passed when a whole path is typed taken for it.
    for (const char* name : {"a/b/c/x", "a/b/c/y"}) {
      QCOMPARE(chosen(save, folder_.filePath(name)), folder_.filePath(name));
    }
  }
};

const int registered = register_test<TestFileDialog>();

#include "test_file_dialog.moc"
