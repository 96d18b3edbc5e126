#include "e2e/flat_document.h"

#include <QFile>
#include <QXmlStreamReader>

namespace {

int count(const QXmlStreamReader& xml, const char* attribute) {
  const auto value = xml.attributes().value(QLatin1String(attribute));
  return value.isEmpty() ? 1 : value.toInt();
}

// The text of the paragraph at hand; runs of blanks are elements of their own.
QString read_paragraph(QXmlStreamReader& xml) {
  QString text;
  while (!xml.atEnd() && xml.readNext() != QXmlStreamReader::EndElement) {
    if (xml.isCharacters()) text += xml.text();
    if (!xml.isStartElement()) continue;
    if (xml.qualifiedName() == u"text:s") text += QString(count(xml, "text:c"), u' ');
    text += read_paragraph(xml);
  }
  return text;
}

QString read_cell(QXmlStreamReader& xml) {
  QStringList paragraphs;
  while (xml.readNextStartElement()) {
    if (xml.qualifiedName() == u"text:p") {
      paragraphs << read_paragraph(xml);
    } else {
      xml.skipCurrentElement();
    }
  }
  return paragraphs.join(u'\n');
}

std::vector<FlatCell> read_row(QXmlStreamReader& xml) {
  std::vector<FlatCell> row;
  std::size_t filled = 0;
  while (xml.readNextStartElement()) {
    const int repeated = count(xml, "table:number-columns-repeated");
    FlatCell cell;
    cell.is_number = xml.attributes().value(QLatin1String("office:value-type")) == u"float";
    cell.number = xml.attributes().value(QLatin1String("office:value")).toDouble();
    cell.text = read_cell(xml);
    if (repeated < 100) row.insert(row.end(), static_cast<std::size_t>(repeated), cell);
    if (!cell.text.isEmpty()) filled = row.size();
  }
  row.resize(filled);
  return row;
}

void read_sheet(QXmlStreamReader& xml, FlatSheet& sheet) {
  while (xml.readNextStartElement()) {
    if (xml.qualifiedName() == u"table:table-row") {
      const int repeated = count(xml, "table:number-rows-repeated");
      const auto row = read_row(xml);
      if (repeated < 100) sheet.insert(sheet.end(), static_cast<std::size_t>(repeated), row);
    } else if (xml.qualifiedName() == u"table:table-row-group") {
      read_sheet(xml, sheet);
    } else {
      xml.skipCurrentElement();
    }
  }
}

}  // namespace

std::vector<FlatSheet> read_sheets(const QString& file) {
  QFile source(file);
  std::vector<FlatSheet> sheets;
  if (!source.open(QIODevice::ReadOnly)) return sheets;
  QXmlStreamReader xml(&source);
  while (!xml.atEnd()) {
    xml.readNext();
    if (!xml.isStartElement() || xml.qualifiedName() != u"table:table") continue;
    FlatSheet& sheet = sheets.emplace_back();
    read_sheet(xml, sheet);
    while (!sheet.empty() && sheet.back().empty()) sheet.pop_back();
  }
  return sheets;
}

QStringList read_paragraphs(const QString& file) {
  QFile source(file);
  QStringList paragraphs;
  if (!source.open(QIODevice::ReadOnly)) return paragraphs;
  QXmlStreamReader xml(&source);
  bool in_text = false;
  while (!xml.atEnd()) {
    xml.readNext();
    if (!xml.isStartElement()) continue;
    in_text |= xml.qualifiedName() == u"office:text";
    if (in_text && xml.qualifiedName() == u"text:p") paragraphs << read_paragraph(xml);
  }
  return paragraphs;
}
