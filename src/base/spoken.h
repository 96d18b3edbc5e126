// What a screen reader says without being asked.
#pragma once

class QComboBox;
class QLabel;
class QString;
class QWidget;

// Has `text` said soon, as a notification of the window that `at` belongs to.
void announce(const QWidget& at, const QString& text);

// Shows a new text and has it said; the same again is not said twice.
void show_spoken(QLabel& label, const QString& text);

// Has the chosen entry said with the list's name and whenever another one is chosen. To be called
// when the list has its letter (give_letter), which is said after the entry.
void speak_choice(QComboBox& list);
