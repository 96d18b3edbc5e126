#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include "app/dialogs.h"
#include "support/dialogs.h"
#include "support/runner.h"

// The real file dialog, worked with the keyboard.
class TestFileDialog : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void initTestCase();
  void init();
  void typed_names_data();
  void typed_names();
  void names_that_keep_it_open_data();
  void names_that_keep_it_open();
  void the_filter_is_counted_from_1();
  void the_folder_is_remembered();

 private:
  std::unique_ptr<QTemporaryDir> folder_;
  WindowFileDialog dialog_;
};

namespace {

QLineEdit* name_field(QFileDialog& dialog) {
  return dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
}

// The dialog works differently on a name that is typed and on one that is set: only typing counts.
void type_name(QFileDialog& dialog, const QString& name) {
  QLineEdit* field = name_field(dialog);
  QVERIFY(QTest::qWaitForWindowActive(&dialog));
  QTRY_VERIFY(field->hasFocus());
  field->selectAll();
  QTest::keyClick(field, Qt::Key_Delete);
  QTest::keyClicks(field, name);
  QTest::keyClick(field, Qt::Key_Return);
}

// Shows `dialog`, does `first` with it and types `name`; what is still open then is cancelled.
void choose(WindowFileDialog& dialog, FileDialog::Purpose purpose, const QString& name,
            const std::function<void(QFileDialog&)>& first = {}) {
  const auto script = when_shown<QFileDialog>([&](QFileDialog& shown) {
    if (first) first(shown);
    type_name(shown, name);
    if (shown.isVisible()) QTest::keyClick(&shown, Qt::Key_Escape);
  });
  dialog.file_name.clear();
  dialog.show(purpose);
}

}  // namespace

void TestFileDialog::initTestCase() {
  // The dialog keeps its last folder and column widths in the user's settings.
  static const QTemporaryDir settings;
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
}

void TestFileDialog::init() {
  folder_ = std::make_unique<QTemporaryDir>();
  QVERIFY(QDir(folder_->path()).mkpath(QStringLiteral("inner")));
  QFile file(folder_->filePath(QStringLiteral("there.qlx")));
  QVERIFY(file.open(QIODevice::WriteOnly));
  dialog_.filter = QStringLiteral("*.qlx|*.qlx");
  dialog_.title = QStringLiteral("Open File");
  dialog_.file_name.clear();
  dialog_.filter_index = 1;
}

void TestFileDialog::typed_names_data() {
  QTest::addColumn<QString>("typed");  // "%1": the folder
  QTest::addColumn<QString>("chosen");
  const auto row = [](const char* name, const char* typed, const char* chosen) {
    QTest::newRow(name) << QString::fromLatin1(typed) << QString::fromLatin1(chosen);
  };
  row("existing", "there.qlx", "%1/there.qlx");
  row("missing", "none.qlx", "%1/none.qlx");
  row("without an extension", "there", "%1/there");
  row("beginning of a name", "the", "%1/the");
  row("another extension", "there.txt", "%1/there.txt");
  row("several dots", "a.b.c", "%1/a.b.c");
  row("whole path", "%1/inner/x.qlx", "%1/inner/x.qlx");
  row("relative path", "inner/../inner/./x.qlx", "%1/inner/x.qlx");
  row("missing folder", "none/x.qlx", "%1/none/x.qlx");
  row("blanks inside", "cold store 1", "%1/cold store 1");
}

// The name comes through as it was typed, for opening as for saving, and nothing is asked.
void TestFileDialog::typed_names() {
  QFETCH(QString, typed);
  QFETCH(QString, chosen);
  if (typed.contains(u'%')) typed = typed.arg(folder_->path());
  for (const auto purpose : {FileDialog::Purpose::open, FileDialog::Purpose::save}) {
    choose(dialog_, purpose, typed, [&](QFileDialog& dialog) {
      QCOMPARE(dialog.windowTitle(), "Open File");
      QCOMPARE(dialog.nameFilters(), QStringList{"*.qlx"});
      dialog.setDirectory(folder_->path());
    });
    QCOMPARE(dialog_.file_name, chosen.arg(folder_->path()));
  }
}

void TestFileDialog::names_that_keep_it_open_data() {
  QTest::addColumn<QString>("typed");
  QTest::newRow("a folder") << "inner";
  QTest::newRow("the folder above") << "..";
  QTest::newRow("this folder") << ".";
  QTest::newRow("nothing") << "";
}

// A folder is gone into; cancelled then, the dialog leaves no name.
void TestFileDialog::names_that_keep_it_open() {
  QFETCH(QString, typed);
  QString went_into;
  choose(dialog_, FileDialog::Purpose::open, typed, [&](QFileDialog& dialog) {
    dialog.setDirectory(folder_->path());
    QObject::connect(&dialog, &QDialog::rejected, &dialog,
                     [&] { went_into = dialog.directory().path(); });
  });
  QCOMPARE(dialog_.file_name, QString());
  QCOMPARE(went_into, QDir::cleanPath(folder_->filePath(typed)));
}

void TestFileDialog::the_filter_is_counted_from_1() {
  dialog_.filter = QStringLiteral("*.txt|*.txt|*.doc|*.doc|*.xls|*.xls");
  choose(dialog_, FileDialog::Purpose::save, QStringLiteral("run"), [](QFileDialog& dialog) {
    auto* filters = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
    QCOMPARE(filters->currentText(), "*.txt");
    QTest::keyClick(filters, Qt::Key_End);
  });
  QCOMPARE(QFileInfo(dialog_.file_name).fileName(), "run");
  QCOMPARE(dialog_.filter_index, 3);
  // A dialog with fewer filters falls back on its first one.
  dialog_.filter = QStringLiteral("*.qlx|*.qlx");
  choose(dialog_, FileDialog::Purpose::open, QStringLiteral("run"));
  QCOMPARE(dialog_.filter_index, 1);
}

void TestFileDialog::the_folder_is_remembered() {
  choose(dialog_, FileDialog::Purpose::save, folder_->filePath(QStringLiteral("inner/x.qlx")));
  choose(dialog_, FileDialog::Purpose::open, QStringLiteral("y"));
  QCOMPARE(dialog_.file_name, folder_->filePath(QStringLiteral("inner/y")));
  // Gone in the meantime, it must not stand in the dialog as the name of a file.
  QVERIFY(QDir(folder_->path()).rmdir(QStringLiteral("inner")));
  choose(dialog_, FileDialog::Purpose::open, {},
         [](QFileDialog& dialog) { QCOMPARE(name_field(dialog)->text(), QString()); });
  QCOMPARE(dialog_.file_name, QString());
}

namespace {
const int registered = register_test<TestFileDialog>();
}

#include "test_file_dialog.moc"
