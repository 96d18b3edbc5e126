#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QLabel>
#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>

#include "base/dialogs.h"
#include "support/dialogs.h"
#include "support/runner.h"

// The real file dialog, operated with the keyboard.
class TestFileDialog : public QObject {
  Q_OBJECT

  static constexpr auto open = FileDialog::Purpose::open;
  static constexpr auto save = FileDialog::Purpose::save;

  // Types `name` into the dialog, cancels it if it is still open, and returns the resulting name.
  // Types each key, because setting the text takes another path through the dialog.
  QString chosen(FileDialog::Purpose purpose, const QString& name) {
    const auto script = when_shown<QFileDialog>([&](QFileDialog& dialog) {
      QVERIFY(QTest::qWaitForWindowActive(&dialog));
      title_ = dialog.windowTitle() + dialog.nameFilters().join(u'|');
      auto* field = dialog.findChild<QLineEdit*>("fileNameEdit");
      QTRY_VERIFY(field->hasFocus());
      QCOMPARE(field->text(), "");
      QTest::keyClicks(field, name);
      QCoreApplication::processEvents();
      note_ = dialog.findChild<QLabel*>("used_name")->text();
      kind_ = dialog.iconProvider()->type(QFileInfo(folder_.filePath("picture.qlx")));
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
  QString title_, shown_folder_, note_, kind_;

 private Q_SLOTS:
  void initTestCase() {
    // The dialog stores its last folder and column widths in the user's settings.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder_.filePath("settings"));
    const QDir folder(folder_.path());
    QVERIFY(folder.mkpath("inner") && folder.mkpath("a/b/c"));
    QVERIFY(make_file(folder.filePath("there.qlx")));
  }

  // The dialog returns the name as typed, for opening and for saving, without a question. The name
  // of a folder opens that folder; cancelling then returns no name.
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
    // A remembered folder that does not exist is not offered as a name. Nor is a folder that the
    // typed path passes through taken for the name.
    for (const char* name : {"a/b/c/x", "a/b/c/y"}) {
      QCOMPARE(chosen(save, folder_.filePath(name)), folder_.filePath(name));
    }
  }

  // The dialog shows the name that will be used if it differs from the typed one, and a typed
  // extension chooses the form. A file's kind depends on its name, not on its contents.
  void what_becomes_of_a_name() {
    dialog_.filter = "*.txt|*.txt|*.xls|*.xls";
    dialog_.used_name = [](const QString& name, int index) {
      return name.section('.', 0, 0) + (index == 1 ? ".txt" : ".xls");
    };
    QVERIFY(make_file(folder_.filePath("run.txt")) && QDir(folder_.path()).mkpath("c.d"));
    QVERIFY(make_file(folder_.filePath("picture.qlx"), hex("89504e470d0a1a0a0000000d49484452")));
    for (const auto& [name, note, form] :
         {std::tuple("x.txt", "", 1),
          {"x", "x will be written as x.txt", 1},
          {"x.v2.xls", "x.v2.xls will be written as x.xls", 2},
          {"y.TXT", "y.TXT will be written as y.txt", 1},
          {"run", "run will be written as run.txt, in place of the file of that name", 1}}) {
      chosen(save, folder_.filePath("go"));
      dialog_.filter_index = 1;
      chosen(save, name);
      QCOMPARE(note_, note);
      QCOMPARE(dialog_.filter_index, form);
    }
    chosen(save, "c.d/x");
    QCOMPARE(note_, "c.d/x will be written as " + folder_.filePath("c.txt"));
    QVERIFY2(!kind_.contains("PNG"), qPrintable(kind_));
  }
};

const int registered = register_test<TestFileDialog>();

#include "test_file_dialog.moc"
