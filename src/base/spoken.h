// Texts that a screen reader says without being asked.
#pragma once

class QComboBox;
class QLabel;
class QString;
class QWidget;

// Announces `text` after the current handler, as a notification of the window that contains `at`.
void announce(const QWidget& at, const QString& text);

// Shows a text and, unless it is empty, announces it. Does nothing if the label shows it already.
void show_spoken(QLabel& label, const QString& text);

// Makes a screen reader say the chosen entry with the list's name and after each change. Call it
// after give_letter(), because the list's letter is said after the entry.
void speak_choice(QComboBox& list);
