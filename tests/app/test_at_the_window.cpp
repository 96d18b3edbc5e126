// Behaviour around the commands: keys, window sizes, dropped files and tool tips.
#include <fcntl.h>

#include "base/date_picker.h"
#include "base/dialogs.h"
#include "data/file_handle.h"
#include "device/port_state.h"
#include "monitor/Frmwarn.h"
#include "support/recordings.h"
#include "support/simulated_window.h"

namespace {

// Makes a program in the folder that writes its only argument into "opened" and prints `answer`.
void make_program(const QDir& folder, const QString& name, const QString& answer = {}) {
  QFile program(folder.filePath(name));
  QVERIFY(program.open(QIODevice::WriteOnly));
  program.write("#!/bin/sh\n[ $# -gt 1 ] || echo \"$1\" >" + folder.path().toUtf8() +
                "/opened\necho " + answer.toUtf8() + "\n");
  program.setPermissions(program.permissions() | QFile::ExeOwner);
}

QString typed_into(DatePicker& picker, const char* keys, QDate before = {2026, 2, 27}) {
  picker.setDate(before);
  picker.setFocus();
  picker.setSelectedSection(QDateTimeEdit::YearSection);
  if (*keys == 'A') QTest::keyClick(&picker, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(&picker, *keys == 'A' ? keys + 1 : keys);
  QTest::keyClick(&picker, Qt::Key_Return);
  return picker.date().toString(Qt::ISODate);
}

}  // namespace

class TestAtTheWindow : public QObject {
  Q_OBJECT

  frmmdi& window() const { return *w_->main.window; }

  std::unique_ptr<SimulatedWindow> w_;

 private Q_SLOTS:
  void init() { w_ = std::make_unique<SimulatedWindow>(); }
  void cleanup() { w_.reset(); }

  void enter_destroys_nothing() {
    WindowMessageBox messages;
    for (const auto key : {Qt::Key_Return, Qt::Key_Escape}) {
      const auto script = when_shown<QMessageBox>([key](QMessageBox& box) {
        QVERIFY(box.width() > box.fontMetrics().horizontalAdvance(box.windowTitle()) + 60);
        QTest::keyClick(&box, key);
      });
      QVERIFY(!messages.ask("?", "A caption that is longer than its text"));
    }
  }

  // The second dialog opens partly off the screen, and only its frame makes it too high.
  void a_window_fits_the_screen() {
    const QRect screen = window().screen()->availableGeometry();
    QTRY_VERIFY(screen.contains(window().frameGeometry()));
    for (const QRect& place :
         {QRect(0, 0, 3000, 3000), QRect(700, -50, 300, screen.height() - 2)}) {
      QDialog dialog(&window());
      dialog.setGeometry(place);
      dialog.show();
      QTRY_VERIFY(screen.contains(dialog.frameGeometry()));
      QVERIFY(dialog.frameGeometry() != dialog.geometry());
    }
  }

  void arrow_keys_choose_the_port() {
    const auto script = when_shown<frmport>([](frmport& dialog) {
      QTest::keyClick(dialog.Option1[0], Qt::Key_Down);
      QCOMPARE(User::PortChoice, std::int16_t{1});
      for (int k = 0; k < 2; ++k) QTest::keyClick(dialog.focusWidget(), Qt::Key_Up);
      QCOMPARE(User::PortChoice, std::int16_t{4});
      QVERIFY(dialog.Option1[1]->toolTip().contains("COM2: /dev/gone is missing"));
      QVERIFY(QTest::qWaitForWindowActive(&dialog));
      QTest::keyClick(&dialog, Qt::Key_2, Qt::AltModifier);
      QTRY_COMPARE(User::PortChoice, std::int16_t{1});
      dialog.reject();
    });
    QVERIFY(QFile::link("/dev/gone", w_->main.folder.filePath("com2")));
    w_->main.run("link");
    User::DeviceTable = {};
    QCOMPARE(frmport(&window()).Combo1->placeholderText(), "device.txt lists no type");
  }

  void what_keeps_a_port_from_opening() {
    const auto port_text = [](auto name) { return ::port_text(name, devices_open_elsewhere()); };
    QCOMPARE(port_text("") + port_text("/dev/gone"), "no such port/dev/gone is missing");
    const int pty = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    QVERIFY(::grantpt(pty) == 0 && ::unlockpt(pty) == 0);
    const QByteArray device = ::ptsname(pty);
    QCOMPARE(port_text(device), device);
    QProcess other;
    other.setStandardInputFile(device);
    other.start("sleep", {"30"});
    QTRY_COMPARE(port_text(device), device + " is in use by another program");
    other.kill();
    QVERIFY(other.waitForFinished());
    ::close(pty);
  }

  void a_whole_date_can_be_typed() {
    DatePicker picker(nullptr);
    picker.setDateRange(QDate(2026, 2, 27), QDate(2026, 3, 2));
    picker.show();
    QVERIFY(QTest::qWaitForWindowActive(&picker));
    for (const char* keys : {"2026-03-01", "20260301", "A2026-03-01", "A2026-3-1"}) {
      QCOMPARE(typed_into(picker, keys), "2026-03-01");
    }
    QCOMPARE(typed_into(picker, "A2031-01-01"), "2026-03-02");
    QCOMPARE(typed_into(picker, "A2031"), "2026-03-02");
    QCOMPARE(typed_into(picker, "A202"), "2026-02-27");
    picker.setDateRange(QDate(2026, 1, 1), QDate(2026, 3, 31));
    QCOMPARE(typed_into(picker, "A2026-02", {2026, 1, 31}), "2026-02-28");
    for (const auto& [key, modifier] :
         {std::pair(Qt::Key_F4, Qt::NoModifier), {Qt::Key_Down, Qt::AltModifier}}) {
      QTest::keyClick(&picker, key, modifier);
      QVERIFY(QApplication::activePopupWidget());
      QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
      QTRY_VERIFY(!QApplication::activePopupWidget());
    }
  }

  // F1 opens the pages if there is no viewer for the compiled manual, from a dialog as well.
  void f1_opens_the_manual() {
    const QDir folder(w_->main.folder.path());
    QVERIFY(folder.mkdir("help") && make_file(folder.filePath("help/index.html")) &&
            make_file(folder.filePath("qlxhelp.chm")));
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", folder.path().toLocal8Bit() + ':' + path);
    make_program(folder, "xdg-open");
    for (const auto& [viewer, page] :
         {std::pair("", "help/index.html"), {"viewer.desktop", "qlxhelp.chm"}}) {
      make_program(folder, "xdg-mime", viewer);
      const auto script = when_shown<frmport>([](frmport& dialog) {
        QTest::keyClick(dialog.Combo1, Qt::Key_F1);
        dialog.reject();
      });
      w_->main.run("link");
      QTRY_COMPARE(contents(folder.filePath("opened")), folder.filePath(page).toUtf8() + '\n');
    }
    qputenv("PATH", path);
  }

  // Only a single data file is accepted. A dot in a folder's name does not cut a dropped path.
  void dropped_files() {
    const QDir folder(w_->main.folder.path());
    QVERIFY(folder.mkdir("a.b") && folder.mkdir("folder.qlx"));
    const QString path = folder.filePath("a.b/x.qlx");
    QVERIFY(QFile::copy(CORVANE_SAMPLES "/greenhouse.qlx", path));
    const auto drop = [this](const QList<QUrl>& urls) {
      QMimeData data;
      data.setUrls(urls);
      QDragEnterEvent enter({9, 9}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
      QCoreApplication::sendEvent(&window(), &enter);
      QDropEvent event({9, 9}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
      QCoreApplication::sendEvent(&window(), &event);
      QCoreApplication::processEvents();
    };
    const QUrl file = QUrl::fromLocalFile(path);
    drop({file, file});
    drop({QUrl::fromLocalFile(folder.filePath("device.txt"))});
    QVERIFY(!window().loaded_display() && window().findChild<QLabel*>("hint")->isVisible());
    drop({file});
    drop({QUrl::fromLocalFile(folder.filePath("folder.qlx"))});
    QCOMPARE(w_->main.messages.shown, QStringList("Corvane: File Lose"));
    QVERIFY(window().loaded_display());
    QVERIFY(!window().findChild<QLabel*>("hint")->isVisible());
    window().unload_display();
    window().show_display();
    QVERIFY(window().findChild<QMdiSubWindow*>()->toolTip().contains(path));
    QVERIFY(window().Sts1[0]->toolTip().contains(path));
    QCOMPARE(window().windowFilePath(), path);
    window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window()));
    QTest::keyClick(&window(), Qt::Key_F4, Qt::ControlModifier);
    QTRY_VERIFY(!window().loaded_display());
    w_->main.run("close");
    QCOMPARE(window().Sts1[0]->toolTip() + window().windowFilePath(), "");
  }

  void tabs_tell_their_channel() {
    fill(User::recording, 9, 2);
    Frmwarn dialog(w_->main.messages, &window());
    QVERIFY(dialog.SSTab1->tabToolTip(1).contains("Channel 2: Humidity"));
    QVERIFY(dialog.SSTab1->tabToolTip(2).contains("No channel"));
    User::RecorderType = 1;
    w_->main.run("realtime");
    const QTabWidget& channels = *w_->realtime()->setup().SSTab1;
    QVERIFY(channels.tabToolTip(1).contains("Channel 2: Damp"));
    QCOMPARE(channels.tabToolTip(2), "No channel");
    // The focus moves to what was refused.
    dialog.show();
    dialog.Text1[5]->setText("x");
    press(dialog.Command1);
    QCOMPARE(dialog.focusWidget(), dialog.Check1[2]);  // the range is automatic
    dialog.Check1[2]->click();
    press(dialog.Command1);
    QCOMPARE(dialog.focusWidget(), dialog.Text1[5]);
    QVERIFY(dialog.Text1[5]->isVisible() && dialog.Text1[5]->hasSelectedText());
  }
};

const int registered = register_test<TestAtTheWindow>();

#include "test_at_the_window.moc"
