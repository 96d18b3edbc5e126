// corvane-monkey SECONDS [SEED]: a user out of his mind. Sends random commands, clicks, keys and
// texts to the real windows and random answers to every dialog. Faults of the simulated recorder
// come and go, and its cable is pulled. The sanitizers, a watchdog for hangs, and check() decide
// whether the program survives. The same seed repeats much the same run, except for timers.

#include <atomic>
#include <cstdio>
#include <random>
#include <stop_token>
#include <thread>

#include "base/dialogs.h"
#include "support/controls.h"
#include "support/main_window.h"
#include "support/simulated_port.h"
#include "views/frmdisplay.h"

namespace {

using namespace std::chrono_literals;

// A step that takes longer than this counts as a hang.
constexpr auto longest_step = 60s;
std::atomic<long> steps = 0;

class Monkey : public QObject {
 public:
  explicit Monkey(unsigned seed) : random_(seed) {
    make_file(folder_.filePath(QStringLiteral("device.txt")), MainWindow::device_file);
    set_program_folder(folder_.path());
    printer_.print_to_file(QStringLiteral("/dev/null"));
    window_ =
        std::make_unique<frmmdi>(OutsideWorld{clock_, port_, messages_, files_, printer_, office_});
    window_->show();
    messages_.set_parent(window_.get());
    files_.set_parent(window_.get());
    change_recorder();
    User::RecorderType = 3;
    attend_again();
  }
  ~Monkey() override { clock_.stop(); }

  void step() {
    ++steps;
    acted_ = clock_.elapsed();
    const int what = below(100);
    if (what < 45) return command();
    if (what < 55) return click_somewhere(*window_);
    if (what < 62) return press_key(QApplication::focusWidget());
    if (what < 80) return tick();
    if (what < 90) return operate(*window_);
    if (what < 93) return clock_.sleep(below(70'000));
    if (what < 94) return set_clock();
    if (what < 96) return window_->resize(300 + below(1500), 200 + below(1000));
    if (what < 98) return change_recorder();
    if (what < 99) return port_.unplug();
    if (auto* child = window_->findChild<QMdiSubWindow*>()) child->close();
  }

  // The conditions that must hold between any two commands.
  void check() {
    const bool linked = window_->menu_entry(QStringLiteral("unlink"))->isEnabled();
    const bool link = window_->menu_entry(QStringLiteral("link"))->isEnabled();
    if (linked == link) fail("Link and Unlink are offered alike");
    if (window_->PrgB1->value() != 0 && !linked) fail("the progress bar stands");
    forget();
    linked_ += linked;
  }

  // Prints how far the run got. A run that never links proves nothing.
  bool tell() const {
    std::printf("monkey: %ld steps; between them linked %ld times\n", steps.load(), linked_);
    return linked_ > 0;
  }

 private:
  [[noreturn]] static void fail(const char* rule) {
    std::fprintf(stderr, "monkey: %s\n", rule);
    std::abort();
  }

  int below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }
  template <class List>
  auto& any(List& list) {
    return list[static_cast<typename List::size_type>(below(static_cast<int>(list.size())))];
  }

  void tick() {
    if (auto* window = window_->loaded_realtime()) Q_EMIT window->live().Timer1->tick();
  }

  // Sets the clock back, or to just before midnight, where a wait for a silent recorder never ends.
  void set_clock() {
    const QDateTime midnight(clock_.now().date().addDays(1), QTime(0, 0), Qt::UTC);
    clock_.set(below(4) == 0 ? clock_.now().addSecs(-below(9000))
                             : midnight.addMSecs(-below(4000)));
  }
  // Acts inside a long wait and sometimes changes the recorder, so that one answers in the end.
  void act_in_a_wait() {
    constexpr qint64 patience_ms = 4000;
    if (clock_.elapsed() - acted_ < patience_ms || nested_ == 3) return;
    ++steps;
    ++nested_;
    acted_ = clock_.elapsed();
    if (below(3) == 0) change_recorder();
    below(2) == 0 ? command() : tick();
    --nested_;
  }

  // Puts another recorder on port 1 or 2, mostly of the chosen type and sometimes with a fault.
  void change_recorder() {
    static const QStringList faults = {{},
                                       "silent",
                                       "check",
                                       "extra",
                                       "truncated",
                                       "late",
                                       "late:ms=900",
                                       "garbage",
                                       "unplug:request=9",
                                       "silent:first=2",
                                       "check:block=3"};
    channels_ = 1 + below(4);
    simulator::Settings settings = {.channels = channels_,
                                    .mask = static_cast<unsigned>(1 + below(15)),
                                    .readings = below(3) * below(8'000),
                                    .interval_s = 1 + below(65'536),
                                    .running = below(2) == 0,
                                    .wrap = below(2) == 0};
    if (const QString& fault = any(faults); !fault.isEmpty() && below(3) == 0) {
      settings.faults = {*simulator::fault_from_text(fault)};
    }
    const int number = 1 + below(2);
    auto& recorder = recorders_[static_cast<std::size_t>(number - 1)];
    recorder = std::make_unique<simulator::Recorder>(settings, clock_.now());
    port_.recorders[number] = recorder.get();
    User::RecorderType = static_cast<std::int16_t>(below(5) == 0 ? below(5) : channels_ - 1);
  }

  void command() {
    static const QStringList names = {"open",      "close", "save",   "outputs",        "printview",
                                      "printdata", "link",  "unlink", "record",         "read",
                                      "in",        "out",   "limit",  "setdisplaytime", "realtime",
                                      "history",   "about"};
    window_->menu_entry(any(names))->trigger();
  }

  QString text() {
    static const QStringList texts = {"",         "12",    "-40.5", "0",     "99999999999",
                                      "abc",      "1e300", "冷库",  "32768", "\t",
                                      "<b>x</b>", ".",     "%1%n"};
    return any(texts);
  }

  void click_somewhere(QWidget& window) {
    const QPoint place(below(window.width()), below(window.height()));
    QWidget* widget = window.childAt(place);
    // Skips the menu bar and the frame's buttons, which would open native menus or Exit.
    if (!widget || widget->inherits("QMenuBar") || widget->inherits("QToolButton")) return;
    QTest::mouseClick(widget, Qt::LeftButton, {}, widget->mapFrom(&window, place));
  }
  void press_key(QWidget* widget) {
    static const std::vector<Qt::Key> keys = {
        Qt::Key_Tab,   Qt::Key_Left, Qt::Key_Right,    Qt::Key_Home, Qt::Key_End, Qt::Key_PageUp,
        Qt::Key_Space, Qt::Key_Up,   Qt::Key_PageDown, Qt::Key_Down, Qt::Key_A};
    static const std::vector<Qt::KeyboardModifiers> modifiers = {
        {}, Qt::ControlModifier, Qt::ShiftModifier};
    if (widget) QTest::keyClick(widget, any(keys), any(modifiers));
  }
  // Uses a random control of the window.
  void operate(QWidget& window) {
    auto widgets = controls_of(window);
    for (QWidget* widget : widgets) {
      if (const QString fault = fault_of_control(*widget); !fault.isEmpty())
        fail(qPrintable(fault));
    }
    if (widgets.isEmpty()) return;
    QWidget* widget = any(widgets);
    if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
      if (!edit->isReadOnly()) edit->setText(text());
    } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
      button->click();
    } else {
      press_key(widget);
    }
  }

  // While a dialog is open, does something random in it and sooner or later closes it. Also runs
  // commands inside other commands, as a timer's tick or a second command would.
  void attend_again() {
    QTimer::singleShot(0, this, [this] {
      // Called before acting, because an action in a dialog can open another dialog.
      attend_again();
      attend();
    });
  }
  // Clears the logs that the stand-ins keep for tests, which would fill the memory.
  void forget() {
    printer_.log.clear();
    port_.log.clear();
    clock_.sleeps.clear();
  }
  void attend() {
    forget();
    if (QWidget* popup = QApplication::activePopupWidget()) {
      popup->close();
      return;
    }
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog) return act_in_a_wait();
    ++steps;
    if (auto* file = qobject_cast<QFileDialog*>(dialog)) return choose_file(*file);
    // A random type would seldom be the recorder's.
    if (auto* link = qobject_cast<frmport*>(dialog); link && below(3) > 0) {
      link->Combo1->setCurrentIndex(channels_ - 1);
      link->Option1[static_cast<std::size_t>(below(5))]->click();
    }
    const int what = below(20);
    if (what == 0) {
      dialog->reject();
    } else if (what == 1) {
      tick();
    } else if (what < 4) {
      press_key(dialog);
    } else if (what < 8) {
      operate(*dialog);
    } else {
      // The default button accepts the dialog; previews have no such button.
      const auto buttons = dialog->findChildren<QPushButton*>();
      const auto accepting =
          std::find_if(buttons.begin(), buttons.end(),
                       [](const QPushButton* button) { return button->isDefault(); });
      const bool accepts = what < 16 && accepting != buttons.end();
      if (!buttons.isEmpty()) (accepts ? *accepting : any(buttons))->click();
    }
  }
  void choose_file(QFileDialog& dialog) {
    static const QStringList names = {"a", "b.qlx", "c.d.qlx", "none", "no/such/folder",
                                      "",  "a.txt"};
    auto* edit = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (edit) edit->setText(folder_.filePath(any(names)));
    if (edit && below(3) != 0) QTest::keyClick(edit, Qt::Key_Return);
    if (dialog.isVisible() && below(3) == 0) dialog.reject();
  }

  std::mt19937 random_;
  ScriptedClock clock_;
  SimulatedPort port_{clock_};
  std::array<std::unique_ptr<simulator::Recorder>, 2> recorders_;  // on ports 1 and 2
  WindowMessageBox messages_;
  WindowFileDialog files_;
  QTemporaryDir folder_;
  ScriptedPrinter printer_;
  AutomationPlugin office_{QString()};
  std::unique_ptr<frmmdi> window_;
  int channels_ = 1;  // of the newest recorder
  qint64 acted_ = 0;  // when the user last did something, in the clock's elapsed time
  int nested_ = 0;    // commands that the user has given inside others' waits
  long linked_ = 0;
};

void watch(const std::stop_token& stop) {
  long seen = -1;
  for (auto since = std::chrono::steady_clock::now(); !stop.stop_requested();) {
    std::this_thread::sleep_for(200ms);
    const auto now = std::chrono::steady_clock::now();
    if (const long at = steps; at != seen) {
      seen = at;
      since = now;
    }
    if (now - since > longest_step) {
      std::fprintf(stderr, "monkey: hangs at step %ld\n", seen);
      std::abort();
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_LOGGING_RULES", "qt.qpa.*=false");
  const QApplication application(argc, argv);
  const int seconds = argc > 1 ? std::atoi(argv[1]) : 10;
  const unsigned seed =
      argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : std::random_device{}();
  std::printf("monkey: seed %u\n", seed);
  std::fflush(stdout);
  std::jthread watchdog(watch);
  bool came_far = false;
  {
    Monkey monkey(seed);
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < seconds * 1000LL) {
      monkey.step();
      QCoreApplication::processEvents();
      monkey.check();
    }
    came_far = monkey.tell();
  }
  return came_far ? 0 : 1;
}
