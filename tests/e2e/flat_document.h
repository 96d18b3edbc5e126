// What stands in a document or workbook that the office suite has written as one XML file.
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

struct FlatCell {
  QString text;
  bool is_number = false;
  double number = 0;
};

using FlatSheet = std::vector<std::vector<FlatCell>>;

// The sheets of a .fods, without empty rows and cells at their ends.
std::vector<FlatSheet> read_sheets(const QString& file);

// The paragraphs of a .fodt.
QStringList read_paragraphs(const QString& file);
