#include "guided_tour/tour.h"

#include <QApplication>
#include <QDateTimeEdit>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QImage>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int look_every_ms = 50;
constexpr int settle_ms = 250;
constexpr int patience_ms = 30'000;  // the machine may be busy
constexpr int whole_tour_ms = 600'000;

void print(const QString& name, const QString& text) {
  std::printf("%-26s %s\n", qUtf8Printable(name), qUtf8Printable(text));
  std::fflush(stdout);
}

QString described(const QWidget& dialog) {
  const auto* box = qobject_cast<const QMessageBox*>(&dialog);
  return box ? QStringLiteral("the message \"%1\"").arg(box->text())
             : QStringLiteral("the dialog \"%1\"").arg(dialog.windowTitle());
}

}  // namespace

Tour::Tour(frmmdi& window, QString work, QString folder)
    : window_(window), work_(std::move(work)), folder_(std::move(folder)) {
  QTimer::singleShot(whole_tour_ms, &timers_,
                     [this] { give_up(QStringLiteral("the tour takes too long")); });
  look_around();
}

void Tour::step(const QString& name, const QString& text) {
  QTest::qWait(settle_ms);
  const QString picture = next_picture(name);
  take_picture(picture);
  print(picture, text);
}

void Tour::step_of_file(const QString& name, const QString& text, const QString& picture) {
  const QString copy = next_picture(name);
  require(QFile::copy(picture, folder_ + u'/' + copy), QStringLiteral("a picture can be kept"));
  print(copy, text);
}

QString Tour::next_picture(const QString& name) {
  return QStringLiteral("%1-%2.png").arg(++pictures_, 2, 10, QChar(u'0')).arg(name);
}

void Tour::take_picture(const QString& name) {
  // The whole screen, window frames included, as a person sees it.
  QImage picture = QApplication::primaryScreen()->grabWindow(0).toImage();
  // Records where the front window and the main window are in it, so that they can be cut out.
  const auto place = [](const QWidget& window) {
    const QRect frame = window.frameGeometry();
    return QStringLiteral("%1x%2+%3+%4")
        .arg(frame.width())
        .arg(frame.height())
        .arg(frame.x())
        .arg(frame.y());
  };
  const QWidget* dialog = QApplication::activeModalWidget();
  picture.setText(QStringLiteral("front"), place(dialog ? *dialog : window_));
  picture.setText(QStringLiteral("main"), place(window_));
  if (!picture.save(folder_ + u'/' + name)) print(name, QStringLiteral("cannot be written"));
}

void Tour::tell(const QString& text) {
  print({}, text);
}

void Tour::keep(const QString& file) {
  const QFileInfo info(file);
  require(QFile::copy(file, folder_ + u'/' + info.fileName()), QStringLiteral("it can be kept"));
  print(info.fileName(), QStringLiteral("%1 bytes").arg(info.size()));
}

void Tour::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  activate(window_);
  QTest::keyClick(&window_, key, modifiers);
  finish_command();
}

void Tour::choose(const QString& menu, const QString& entry) {
  const auto* top = window_.menuBar()->findChild<QMenu*>(menu);
  QTest::mouseClick(window_.menuBar(), Qt::LeftButton, {},
                    window_.menuBar()->actionGeometry(top->menuAction()).center());
  wait_for([&] { return top->isVisible(); }, QStringLiteral("the menu opens"));
  QTest::qWait(settle_ms);
  QTest::mouseClick(const_cast<QMenu*>(top), Qt::LeftButton, {},
                    top->actionGeometry(window_.menu_entry(entry)).center());
  finish_command();
}

void Tour::click_toolbar(int index) {
  click(window_.Tool1->widgetForAction(window_.toolbar_button(index)));
  finish_command();
}

// Asks repeatedly: the window manager may have started only just now.
void Tour::activate(QWidget& window) {
  const auto active = [&window] {
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window, look_every_ms);
  };
  wait_for(active, window.windowTitle() + QStringLiteral(" is the active window"));
}

void Tour::click(QWidget* widget) {
  require(widget && widget->isVisible() && widget->isEnabled(),
          QStringLiteral("what is clicked can be clicked"));
  QTest::mouseClick(widget, Qt::LeftButton);
}

void Tour::click_tab(QTabWidget& tabs, int index) {
  QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, {}, tabs.tabBar()->tabRect(index).center());
}

void Tour::type_over(QLineEdit& box, const QString& text) {
  box.selectAll();
  for (const QChar c : text) {
    if (c.unicode() < 128) {
      QTest::keyClick(&box, c.toLatin1());
    } else {
      // As an input method does.
      QInputMethodEvent event;
      event.setCommitString(c);
      QApplication::sendEvent(&box, &event);
    }
  }
}

void Tour::type_time(QDateTimeEdit& picker, const QString& text) {
  picker.setFocus();
  picker.setSelectedSection(picker.sectionAt(0));
  for (const QChar c : text) {
    if (c.isDigit()) QTest::keyClick(&picker, c.toLatin1());
  }
  require(picker.text() == text, QStringLiteral("the picker shows what is typed"));
}

void Tour::type_name(QFileDialog& dialog, const QString& name) {
  auto* edit = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  require(edit != nullptr, QStringLiteral("the file dialog has a field for the name"));
  edit->selectAll();
  QTest::keyClicks(edit, name);
}

void Tour::when(std::function<bool()> condition, std::function<void()> act) {
  planned_.push_back({std::move(condition), std::move(act)});
}

void Tour::finish_command() {
  require(dialogs_.empty(), QStringLiteral("the dialog that was expected has come"));
  require(planned_.empty(), QStringLiteral("what was waited for has happened"));
}

// Runs repeatedly from the event loop, also inside the waits of commands and of itself.
void Tour::look_around() {
  QTimer::singleShot(look_every_ms, &timers_, [this] { look_around(); });
  if (!planned_.empty() && planned_.front().condition()) {
    const auto act = std::move(planned_.front().act);
    planned_.erase(planned_.begin());
    act();
  }
  QWidget* dialog = QApplication::activeModalWidget();
  if (dialog && dialog != attended_) attend(*dialog);
}

void Tour::attend(QWidget& dialog) {
  const QPointer<QWidget> before = std::exchange(attended_, &dialog);
  activate(dialog);
  QTest::qWait(settle_ms);
  if (dialogs_.empty()) give_up(described(dialog) + QStringLiteral(" came unexpectedly"));
  const auto act = dialogs_.front();
  dialogs_.erase(dialogs_.begin());
  const QString description = described(dialog);
  if (!act(dialog)) give_up(description + QStringLiteral(" came in place of another dialog"));
  attended_ = before;
}

void Tour::require(bool condition, const QString& text) {
  if (!condition) give_up(QStringLiteral("this does not hold: ") + text);
}

void Tour::wait_for(const std::function<bool()>& condition, const QString& text) {
  require(QTest::qWaitFor(condition, patience_ms), text);
}

// Exits at once: any way back out of a command and its dialogs could hang.
void Tour::give_up(const QString& text) {
  take_picture(QStringLiteral("failed.png"));
  print(QStringLiteral("failed.png"), text);
  std::_Exit(EXIT_FAILURE);
}
