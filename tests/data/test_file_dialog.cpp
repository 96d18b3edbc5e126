#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>

#include "app/dialogs.h"
#include "support/dialogs.h"
#include "support/runner.h"

// The real file dialog, worked with the keyboard.
class TestFileDialog : public QObject {
  Q_OBJECT

  using Work = std::function<void(QFileDialog&)>;
  static constexpr auto open = FileDialog::Purpose::open;
  static constexpr auto save = FileDialog::Purpose::save;

  // Does `first` with the dialog and types `name`; what is still open then is cancelled. Gives the
  // name that came through. Typing counts: a name that is set does not work the same.
  QString chosen(
      FileDialog::Purpose purpose, const QString& name, const Work& first = [](QFileDialog&) {}) {
    const auto script = when_shown<QFileDialog>([&](QFileDialog& dialog) {
      first(dialog);
      QVERIFY(QTest::qWaitForWindowActive(&dialog));
      auto* field = dialog.findChild<QLineEdit*>("fileNameEdit");
      QTRY_VERIFY(field->hasFocus());
      field->selectAll();
      QTest::keyClicks(field, name.isEmpty() ? QStringLiteral("\b") : name);
      QCoreApplication::processEvents();
      QTest::keyClick(field, Qt::Key_Return);
      if (dialog.isVisible()) QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    dialog_.file_name.clear();
    dialog_.show(purpose);
    return dialog_.file_name;
  }

  QTemporaryDir folder_;
  WindowFileDialog dialog_;

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
    QString folder;
    const Work look = [&](QFileDialog& dialog) {
      QCOMPARE(dialog.windowTitle() + dialog.nameFilters().join(u'|'), "Open File*.qlx");
      dialog.setDirectory(folder_.path());
      connect(&dialog, &QDialog::finished, &dialog, [&] { folder = dialog.directory().path(); });
    };
    for (const char* name : {"there.qlx", "there", "the", "a.b.c", "none/x.qlx", "cold store 1"}) {
      QCOMPARE(chosen(open, name, look), folder_.filePath(name));
      QCOMPARE(chosen(save, name, look), folder_.filePath(name));
    }
    QCOMPARE(chosen(save, "inner/../inner/./x", look), folder_.filePath("inner/x"));
    // Nor a folder that is passed when its whole path is typed.
    const QString deep = folder_.filePath("a/b/c/");
    for (const char* name : {"x", "y"}) QCOMPARE(chosen(save, deep + name), deep + name);
    for (const char* name : {"inner", "..", ""}) {
      QCOMPARE(chosen(open, name, look), "");
      QCOMPARE(folder, QDir::cleanPath(folder_.filePath(name)));
    }
  }

  void filter_and_folder_are_remembered() {
    dialog_.filter = "*.txt|*.txt|*.doc|*.doc|*.xls|*.xls";
    const QString inner = folder_.filePath("inner");
    chosen(save, inner + "/x", [](QFileDialog& dialog) {
      QTest::keyClick(dialog.findChild<QComboBox*>("fileTypeCombo"), Qt::Key_End);
    });
    QCOMPARE(dialog_.filter_index, 3);
    // A dialog with fewer filters falls back on its first one.
    dialog_.filter = "*.qlx|*.qlx";
    QCOMPARE(chosen(open, "y"), inner + "/y");
    QCOMPARE(dialog_.filter_index, 1);
    // Gone in the meantime, the folder must not stand in the dialog as the name of a file.
    QVERIFY(QDir().rmdir(inner));
    chosen(open, {}, [](QFileDialog& dialog) {
      QCOMPARE(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), "");
    });
  }
};

const int registered = register_test<TestFileDialog>();

#include "test_file_dialog.moc"
