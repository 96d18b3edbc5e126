// Modal message boxes. Tests replace them with scripted answers.
#pragma once

#include <QString>

// The program title: the caption of the main window and of every message without its own caption.
inline const QString program_title = QStringLiteral("Corvane");

class MessageBox {
 public:
  MessageBox() = default;
  MessageBox(const MessageBox&) = delete;
  MessageBox& operator=(const MessageBox&) = delete;
  virtual ~MessageBox() = default;

  // Shows `text` with an OK button and no icon; returns when the box is closed. The text is shown
  // as it is, never as markup.
  virtual void show(const QString& text, const QString& caption = program_title) = 0;

  // Asks with Yes and No; true only for Yes.
  virtual bool ask(const QString& text, const QString& caption = program_title) = 0;
};
