// The upper half of the Real-time Data window: shows the recorder's properties and lets the user
// change them.
#pragma once

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>

#include <array>
#include <optional>
#include <vector>

class MessageBox;
class QLayout;
class RecorderSession;
struct PatternSettings;

// A channel's limits as typed.
struct LimitTexts {
  QString up;
  QString down;
};

class SetupPane final : public QWidget {
  Q_OBJECT

 public:
  SetupPane(MessageBox& messages, QWidget* parent);

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
  QLineEdit* Text11;    // readings held
  QLineEdit* Text14;    // all data
  // Hidden text boxes behind the two pickers; their texts are never sent.
  QLineEdit* Text12;
  QLineEdit* Text13;
  // "Recorder Description"
  QLineEdit* Text15;
  // One tab for each channel c: up limit 2c, down limit 2c + 1, takes part in the recording c.
  QTabWidget* SSTab1;
  std::array<QLineEdit*, 8> Text1{};
  std::array<QCheckBox*, 4> Check1{};
  QPushButton* Command4;  // "Properties Set"
  QLabel* work_label;     // "Reading ..." or "Setting ..." while that is under way, else empty

  QString title() const { return Text6->text(); }
  // The channels 0..3 that are marked to take part in the recording, in ascending order.
  std::vector<int> recorded_channels() const;
  // The typed limits of channel 0..3.
  LimitTexts limits(std::size_t channel) const;

  // Shows the name of the recorder type in use, and its channels' names in the tabs' tool tips.
  void show_type();
  // Reads the recorder and shows what it holds. False as soon as a request fails three times or the
  // session ends; the rest stays as it was.
  bool read_recorder(const RecorderSession& session);

  // Encodes the typed pattern and texts into the bytes to send and returns the pattern's settings;
  // nothing if a value cannot be sent.
  std::optional<PatternSettings> encode_typed(const QDateTime& now);
  // Writes those bytes and the typed limits into the recorder. False as soon as a request fails
  // three times or the session ends.
  bool write_recorder(const RecorderSession& session, const PatternSettings& settings);
  // Moves the focus to the first box whose content cannot be sent, if there is one.
  void show_refused();

  // Enables or disables Command4. If disabling takes the focus from it, enabling gives the focus
  // back, unless the user has moved it meanwhile.
  void offer_set(bool possible);

 Q_SIGNALS:
  // A limit's text has changed.
  void limits_changed();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void build();
  QGroupBox* build_status();
  QGroupBox* build_pattern();
  QGroupBox* build_description();
  QTabWidget* build_channels();
  void add_limit_mark(std::size_t index);

  bool read_properties(const RecorderSession& session);
  bool read_texts(const RecorderSession& session);
  bool read_battery(const RecorderSession& session);
  bool read_limits(const RecorderSession& session);

  PatternSettings typed_settings() const;
  bool write_limits(const RecorderSession& session, int channel);
  void mark_limit(std::size_t index);

  MessageBox& messages_;
  QPointer<QWidget> focus_after_set_;  // the control that got the focus when Command4 lost it
  // The mark in each limit's box, shown while its channel exists and its text is not a number.
  std::array<QAction*, 8> limit_marks_{};
};
