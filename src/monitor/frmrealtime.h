// The Real-time Data window: what the linked recorder is, holds and is set to.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QTabWidget>

#include <array>

#include "app/child_window.h"
#include "app/interval_timer.h"

class QGridLayout;
class QGroupBox;
class Shell;

class frmrealtime : public ChildWindow {
  Q_OBJECT

 public:
  frmrealtime(Shell& shell, QWidget* parent);

  // Sets the online-record settings to their defaults and reads the recorder. Waits for it: the
  // window can be unloaded meanwhile.
  void Form_Load();

  // Shows what the recorder now holds. A request that fails three times leaves the rest as it was.
  void RefreshFromRecorder();

  // "Recorder Status"
  QLineEdit* Text6;  // title
  QLineEdit* Text5;  // model name
  QLineEdit* Text4;  // battery
  QLineEdit* Text2;  // state
  // "Recorder Pattern"
  QComboBox* Combo2;    // startup type
  QLineEdit* Text3;     // startup time
  QDateTimeEdit* DTP2;  // startup delay
  QDateTimeEdit* DTP1;  // record interval
  QComboBox* Combo3;    // stop type
  QLineEdit* Text11;    // samples held
  QLineEdit* Text14;    // all data
  // Behind the two pickers: no picker role of their own, and never sent.
  QLineEdit* Text12;
  QLineEdit* Text13;
  // "Recorder Description"
  QLineEdit* Text15;
  // A tab a channel: up limit 2c, down limit 2c + 1, takes part in recording c.
  QTabWidget* SSTab1;
  std::array<QLineEdit*, 8> Text1{};
  std::array<QCheckBox*, 4> Check1{};

  // The polling timer.
  IntervalTimer* Timer1;

 protected:
  void Form_Unload() override;

 private:
  void build();
  QGroupBox* build_status();
  QGroupBox* build_pattern();
  QGroupBox* build_description();
  QTabWidget* build_channels();
  bool read_properties(const Handler& running);
  bool read_texts(const Handler& running);
  bool read_battery(const Handler& running);
  bool read_limits(const Handler& running);

  Shell& shell_;
};
