// The guided tour: the real main window on a real display with a recorder on its port 1, driven by
// keys and clicks. Each step does one thing that a user does and shows the screen after it.
#pragma once

#include <QPointer>
#include <QTimer>
#include <QtWidgets>

#include <functional>
#include <vector>

#include "app/frmmdi.h"

class QDateTimeEdit;
class QFileDialog;
class QLineEdit;
class QTabWidget;

class Tour {
 public:
  // Pictures and kept files go to `folder`; the files that the user names lie in `work`.
  Tour(frmmdi& window, QString work, QString folder);
  Tour(const Tour&) = delete;
  Tour& operator=(const Tour&) = delete;

  frmmdi& window() { return window_; }
  // A file name for the user to type. Its folder's name has no dot, which would end a data file's
  // name.
  QString work_file(const QString& name) const { return work_ + u'/' + name; }

  // Takes the picture "NN-name.png" of the whole screen and prints its name with `text`.
  void step(const QString& name, const QString& text);
  // The same, with the picture in the file `picture`.
  void step_of_file(const QString& name, const QString& text, const QString& picture);
  // Prints a finding.
  void tell(const QString& text);
  // Copies a file beside the pictures and prints its name and size.
  void keep(const QString& file);

  // Commands as a user gives them. They return when the command is done, with its dialogs and
  // waits. Everything planned with in_dialog() and when() must have happened by then.
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier);
  void choose(const QString& menu, const QString& entry);
  void click_toolbar(int index);

  // Plans what to do in a modal dialog of this class; comes before the command that opens it.
  template <class Dialog>
  void in_dialog(std::function<void(Dialog&)> act) {
    dialogs_.push_back([act = std::move(act)](QWidget& widget) {
      auto* dialog = qobject_cast<Dialog*>(&widget);
      if (dialog) act(*dialog);
      return dialog != nullptr;
    });
  }
  // Plans what to do once while a command waits, as soon as `condition` holds.
  void when(std::function<bool()> condition, std::function<void()> act);

  // Comes after a command given by another control; requires that everything planned has happened.
  void finish_command();

  // Inside a window or dialog.
  void click(QWidget* widget);
  void click_tab(QTabWidget& tabs, int index);
  void type_over(QLineEdit& box, const QString& text);
  // Types a date or a time of day digit by digit; the picker moves on from part to part by itself.
  void type_time(QDateTimeEdit& picker, const QString& text);
  void type_name(QFileDialog& dialog, const QString& name);

  // End the tour with a last picture and exit status 1 unless the condition holds (in time).
  void require(bool condition, const QString& text);
  void wait_for(const std::function<bool()>& condition, const QString& text);
  [[noreturn]] void give_up(const QString& text);

 private:
  struct Planned {
    std::function<bool()> condition;
    std::function<void()> act;
  };

  void look_around();
  void attend(QWidget& dialog);
  void activate(QWidget& window);
  void take_picture(const QString& name);
  QString next_picture(const QString& name);

  frmmdi& window_;
  QString work_;
  QString folder_;
  int pictures_ = 0;
  // Each acts in a dialog if that is the one it waits for, and gives whether it was.
  std::vector<std::function<bool(QWidget&)>> dialogs_;
  std::vector<Planned> planned_;
  QPointer<QWidget> attended_;
  QObject timers_;  // context of the timers, which end with the tour
};

// The steps in order. To show more of the program, write a function in a tour_*.cpp that takes the
// Tour, and add it to the list.
using TourStep = void (*)(Tour&);
const std::vector<TourStep>& tour_steps();

void export_text(Tour& tour);
void export_with_office(Tour& tour);
void print_graph(Tour& tour);
void print_sheet(Tour& tour);
void zoom_graph(Tour& tour);
void set_limits(Tour& tour);
void choose_segment(Tour& tour);
void show_sheet(Tour& tour);
void set_properties(Tour& tour);
void poll_readings(Tour& tour);
void stop_polling(Tour& tour);
