#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>

#include "app/dialogs.h"
#include "support/dialogs.h"
#include "support/runner.h"

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

}  // namespace

// The real file dialog, worked with the keyboard.
class TestFileDialog : public QObject {
  Q_OBJECT

  QString inside(const char* name) const { return folder_->filePath(QString::fromLatin1(name)); }
  // Does `first` with the dialog and types `name`; what is still open then is cancelled. Gives the
  // name that came through.
  QString chosen(FileDialog::Purpose purpose, const QString& name,
                 const std::function<void(QFileDialog&)>& first) {
    const auto script = when_shown<QFileDialog>([&](QFileDialog& dialog) {
      first(dialog);
      type_name(dialog, name);
      if (dialog.isVisible()) QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    dialog_.file_name.clear();
    dialog_.show(purpose);
    return dialog_.file_name;
  }

  std::unique_ptr<QTemporaryDir> folder_;
  WindowFileDialog dialog_;

 private Q_SLOTS:
  void initTestCase() {
    // The dialog keeps its last folder and column widths in the user's settings.
    static const QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
  }
  void init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(folder_->path()).mkpath(QStringLiteral("inner")));
    QFile file(inside("there.qlx"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    dialog_.filter = QStringLiteral("*.qlx|*.qlx");
    dialog_.title = QStringLiteral("Open File");
  }

  // The name comes through as it was typed, for opening as for saving, and nothing is asked.
  void typed_names() {
    const auto check = [this](FileDialog::Purpose purpose, const QString& typed, const char* name) {
      const QString got = chosen(purpose, typed, [this](QFileDialog& dialog) {
        QCOMPARE(dialog.windowTitle(), "Open File");
        QCOMPARE(dialog.nameFilters(), QStringList{"*.qlx"});
        dialog.setDirectory(folder_->path());
      });
      QCOMPARE(got, inside(name));
    };
    for (const char* name : {"there.qlx", "none.qlx", "there", "the", "there.txt", "a.b.c",
                             "none/x.qlx", "cold store 1"}) {
      check(FileDialog::Purpose::open, QString::fromLatin1(name), name);
    }
    check(FileDialog::Purpose::save, QStringLiteral("there.qlx"), "there.qlx");
    check(FileDialog::Purpose::save, QStringLiteral("there"), "there");
    check(FileDialog::Purpose::save, inside("inner/x.qlx"), "inner/x.qlx");
    check(FileDialog::Purpose::save, QStringLiteral("inner/../inner/./x"), "inner/x");
  }

  // A folder is gone into; cancelled then, the dialog leaves no name.
  void folders_and_no_name_keep_it_open() {
    for (const char* typed : {"inner", "..", ".", ""}) {
      QString went_into;
      const auto watch = [&](QFileDialog& dialog) {
        dialog.setDirectory(folder_->path());
        connect(&dialog, &QDialog::rejected, &dialog,
                [&] { went_into = dialog.directory().path(); });
      };
      QCOMPARE(chosen(FileDialog::Purpose::open, QString::fromLatin1(typed), watch), QString());
      QCOMPARE(went_into, QDir::cleanPath(inside(typed)));
    }
  }

  void the_filter_is_counted_from_1() {
    dialog_.filter = QStringLiteral("*.txt|*.txt|*.doc|*.doc|*.xls|*.xls");
    chosen(FileDialog::Purpose::save, QStringLiteral("run"), [](QFileDialog& dialog) {
      auto* filters = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
      QCOMPARE(filters->currentText(), "*.txt");
      QTest::keyClick(filters, Qt::Key_End);
    });
    QCOMPARE(QFileInfo(dialog_.file_name).fileName(), "run");
    QCOMPARE(dialog_.filter_index, 3);
    // A dialog with fewer filters falls back on its first one.
    dialog_.filter = QStringLiteral("*.qlx|*.qlx");
    chosen(FileDialog::Purpose::open, QStringLiteral("run"), [](QFileDialog&) {});
    QCOMPARE(dialog_.filter_index, 1);
  }

  void the_folder_is_remembered() {
    const auto nothing = [](QFileDialog&) {};
    chosen(FileDialog::Purpose::save, inside("inner/x.qlx"), nothing);
    QCOMPARE(chosen(FileDialog::Purpose::open, QStringLiteral("y"), nothing), inside("inner/y"));
    // Gone in the meantime, it must not stand in the dialog as the name of a file.
    QVERIFY(QDir(folder_->path()).rmdir(QStringLiteral("inner")));
    const auto no_name = [](QFileDialog& dialog) { QVERIFY(name_field(dialog)->text().isEmpty()); };
    QCOMPARE(chosen(FileDialog::Purpose::open, {}, no_name), QString());
  }
};

const int registered = register_test<TestFileDialog>();

#include "test_file_dialog.moc"
