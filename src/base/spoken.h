// What a screen reader says without being asked.
#pragma once

class QComboBox;
class QLabel;
class QString;

// Has `text` said, as a notification that stands where the label does.
void announce(QLabel& at, const QString& text);

// Shows a new text and has it said; the same again is not said twice.
void show_spoken(QLabel& label, const QString& text);

// Has the chosen entry said with the list's name and whenever another one is chosen.
void speak_choice(QComboBox& list);
