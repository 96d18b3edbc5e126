// The upper half of the Real-time Data window: what the recorder is, holds and is set to, and what
// the user wants it set to.
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

// A channel's limits as they are typed.
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
  // Behind the two pickers: no picker role of their own, and never sent.
  QLineEdit* Text12;
  QLineEdit* Text13;
  // "Recorder Description"
  QLineEdit* Text15;
  // A tab a channel: up limit 2c, down limit 2c + 1, takes part in recording c.
  QTabWidget* SSTab1;
  std::array<QLineEdit*, 8> Text1{};
  std::array<QCheckBox*, 4> Check1{};
  QPushButton* Command4;  // "Properties Set"
  QLabel* work_label;     // what goes on between the pane and the recorder; empty for nothing

  QString title() const { return Text6->text(); }
  // The channels 0..3 that are marked to take part in the recording, in ascending order.
  std::vector<int> recorded_channels() const;
  // The limits of channel 0..3.
  LimitTexts limits(std::size_t channel) const;

  // Shows the name of the recorder type in use, and those of its channels in the tabs' tool tips.
  void show_type();
  // Shows what the recorder holds. False at the first request that fails three times or when the
  // session has ended: the rest stays as it was.
  bool read_recorder(const RecorderSession& session);

  // Makes the bytes to send of what is typed at this moment; nothing when some of it cannot be
  // sent.
  std::optional<PatternSettings> encode_typed(const QDateTime& now);
  // Writes them and the typed limits into the recorder. False at the first request that fails three
  // times or when the session has ended.
  bool write_recorder(const RecorderSession& session, const PatternSettings& settings);
  // Afterwards the first box whose content cannot be sent is at hand, if there is one.
  void show_refused();

  // Enables Command4 or disables it. The focus that it loses thereby comes back to it, unless the
  // user has gone elsewhere meanwhile.
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
  QPointer<QWidget> focus_after_set_;  // what got the focus in the place of Command4
  // The mark in each limit's box that is no number.
  std::array<QAction*, 8> limit_marks_{};
};
