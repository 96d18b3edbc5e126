// Office applications that do nothing but write down, line by line, what is asked of them.
#pragma once

#include <QStringList>

#include <functional>

#include "data/automation.h"

// "Sheet1.Columns(2).ColumnWidth = 15", "Workbook.SaveAs(filename:=out.xls)": objects are named by
// the way to them, what Add returns by its kind and a number.
class RecordingAutomation final : public Automation {
 public:
  bool runs = false;
  bool can_be_created = true;
  // The first line that contains this text fails.
  QString fails_at;
  // Run before each line is written, in the thread of the export.
  std::function<void()> before_line;
  QStringList lines;

  AutomationPointer running(std::string_view application, const GiveUp& give_up) override;
  AutomationPointer create(std::string_view application, const GiveUp& give_up) override;

  void write(const QString& line);
  // "Sheet1", "Sheet2", "Workbook1", "Document1" for what is added to such a collection.
  QString name_of_added(const QString& collection);

 private:
  int sheets_ = 0;
};
