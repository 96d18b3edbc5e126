#include "office/office_spreadsheet.h"

#include <cmath>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>

#include "office/office_text.h"

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY_THROW;

namespace {

using Connection = std::shared_ptr<OfficeConnection>;
using Document = std::shared_ptr<OfficeDocument>;
using SheetReference = Reference<css::sheet::XSpreadsheet>;

constexpr double landscape = 2;
const QString workbook_format = QStringLiteral("MS Excel 97");

// Converts a column width in characters of the default font, 7 pixels each at 96 per inch plus a
// margin of 5 pixels, into the suite's unit, hundredths of a millimetre.
sal_Int32 column_width(double characters) {
  return static_cast<sal_Int32>(std::lround((characters * 7 + 5) * 2540 / 96));
}

Reference<css::sheet::XSpreadsheets> sheets_of(const OfficeDocument& document) {
  return Reference<css::sheet::XSpreadsheetDocument>(document.model(), UNO_QUERY_THROW)
      ->getSheets();
}

class Column final : public OfficeObject {
 public:
  Column(Connection connection, Document document,
         const Reference<css::beans::XPropertySet>& column)
      : OfficeObject(std::move(connection)), document_(std::move(document)), column_(column) {}

 protected:
  void put_member(std::string_view member, const AutomationArguments&,
                  const AutomationValue& value) override {
    if (member == "ColumnWidth") {
      column_->setPropertyValue("Width", Any(column_width(number(value))));
    } else if (member == "NumberFormatLocal" || member == "NumberFormat") {
      column_->setPropertyValue("NumberFormat", Any(format_key(to_uno(text(value)))));
    } else {
      no_member(member);
    }
  }

 private:
  // English, because the formats use "." whatever the suite's language.
  sal_Int32 format_key(const rtl::OUString& format) const {
    const Reference<css::util::XNumberFormatsSupplier> supplier(document_->model(),
                                                                UNO_QUERY_THROW);
    const css::lang::Locale english("en", "US", "");
    const auto formats = supplier->getNumberFormats();
    const sal_Int32 known = formats->queryKey(format, english, false);
    return known != -1 ? known : formats->addNew(format, english);
  }

  Document document_;
  Reference<css::beans::XPropertySet> column_;
};

// Rows and columns count from 1.
struct CellRange {
  int row = 1;
  int column = 1;
  int rows = 1;
  int columns = 1;
};

// A cell, or, after "Resize", the block of cells of which it is the upper left one.
class Cells final : public OfficeObject {
 public:
  Cells(Connection connection, const SheetReference& sheet, const CellRange& range)
      : OfficeObject(std::move(connection)), sheet_(sheet), range_(range) {}

 protected:
  AutomationPointer get_member(std::string_view member,
                               const AutomationArguments& arguments) override {
    if (member != "Resize") no_member(member);
    CellRange range = range_;
    range.rows = integer_argument(arguments, 0);
    range.columns = integer_argument(arguments, 1);
    return std::make_shared<Cells>(connection(), sheet_, range);
  }

  void put_member(std::string_view member, const AutomationArguments&,
                  const AutomationValue& value) override {
    if (member != "Value") no_member(member);
    const auto& [row, column, rows, columns] = range_;
    const auto range =
        sheet_->getCellRangeByPosition(column - 1, row - 1, column + columns - 2, row + rows - 2);
    Reference<css::sheet::XCellRangeData>(range, UNO_QUERY_THROW)->setDataArray(block(value));
  }

 private:
  static Any content(const AutomationCell& cell) {
    const QString* text = std::get_if<QString>(&cell);
    return text ? Any(to_uno(*text)) : Any(std::get<double>(cell));
  }

  // Row by row, as the suite expects it. The suite refuses a block of another size than the range.
  static Sequence<Sequence<Any>> block(const AutomationValue& value) {
    const auto* table = std::get_if<AutomationTable>(&value);
    if (!table) throw AutomationError("not a block of cells");
    Sequence<Sequence<Any>> rows(static_cast<sal_Int32>(table->rows()));
    auto cell = table->cells.cbegin();
    Sequence<Any>* row = rows.getArray();
    for (std::size_t r = 0; r < table->rows(); ++r, ++row) {
      row->realloc(static_cast<sal_Int32>(table->columns));
      Any* target = row->getArray();
      for (std::size_t c = 0; c < table->columns; ++c) *target++ = content(*cell++);
    }
    return rows;
  }

  SheetReference sheet_;
  CellRange range_;
};

class Worksheet final : public OfficeObject {
 public:
  Worksheet(Connection connection, Document document, const SheetReference& sheet)
      : OfficeObject(std::move(connection)), document_(std::move(document)), sheet_(sheet) {}

 protected:
  AutomationPointer get_member(std::string_view member,
                               const AutomationArguments& arguments) override {
    if (member == "Cells") {
      const CellRange cell = {integer_argument(arguments, 0), integer_argument(arguments, 1)};
      return std::make_shared<Cells>(connection(), sheet_, cell);
    }
    if (member == "PageSetup") {
      rtl::OUString page;
      Reference<css::beans::XPropertySet>(sheet_, UNO_QUERY_THROW)
          ->getPropertyValue("PageStyle") >>= page;
      return std::make_shared<OfficePageSetup>(
          connection(), document_, document_->style(QStringLiteral("PageStyles"), from_uno(page)),
          landscape);
    }
    if (member != "Columns") no_member(member);
    const Reference<css::table::XColumnRowRange> range(sheet_, UNO_QUERY_THROW);
    return std::make_shared<Column>(
        connection(), document_,
        Reference<css::beans::XPropertySet>(
            range->getColumns()->getByIndex(integer_argument(arguments, 0) - 1), UNO_QUERY_THROW));
  }

  // A text stays a text even if it looks like a number, a date or a formula.
  void put_member(std::string_view member, const AutomationArguments& arguments,
                  const AutomationValue& value) override {
    if (member == "Name") return named()->setName(to_uno(text(value)));
    if (member != "Cells") no_member(member);
    const auto cell = sheet_->getCellByPosition(integer_argument(arguments, 1) - 1,
                                                integer_argument(arguments, 0) - 1);
    Reference<css::text::XTextRange>(cell, UNO_QUERY_THROW)->setString(to_uno(text(value)));
  }

  AutomationPointer call_member(std::string_view member, const AutomationArguments&,
                                const NamedArguments&) override {
    if (member != "Delete") no_member(member);
    sheets_of(*document_)->removeByName(named()->getName());
    return nullptr;
  }

 private:
  Reference<css::container::XNamed> named() const { return {sheet_, UNO_QUERY_THROW}; }

  Document document_;
  SheetReference sheet_;
};

class Worksheets final : public OfficeObject {
 public:
  Worksheets(Connection connection, Document document)
      : OfficeObject(std::move(connection)), document_(std::move(document)) {}

 protected:
  // The new sheet becomes the first one: "Add" inserts before the active sheet, which is always the
  // first here.
  AutomationPointer call_member(std::string_view member, const AutomationArguments&,
                                const NamedArguments&) override {
    if (member != "Add") no_member(member);
    const auto sheets = sheets_of(*document_);
    sal_Int32 count = sheets->getElementNames().getLength();
    rtl::OUString name;
    do {
      name = "Sheet" + rtl::OUString::number(++count);
    } while (sheets->hasByName(name));
    sheets->insertNewByName(name, 0);
    return std::make_shared<Worksheet>(connection(), document_,
                                       SheetReference(sheets->getByName(name), UNO_QUERY_THROW));
  }

 private:
  Document document_;
};

class Workbook final : public OfficeObject {
 public:
  Workbook(Connection connection, Document document)
      : OfficeObject(std::move(connection)), document_(std::move(document)) {}

 protected:
  // Returns all sheets, or one by its number, counted from 1.
  AutomationPointer get_member(std::string_view member,
                               const AutomationArguments& arguments) override {
    if (member != "Worksheets") no_member(member);
    if (arguments.empty()) return std::make_shared<Worksheets>(connection(), document_);
    const Reference<css::container::XIndexAccess> sheets(sheets_of(*document_), UNO_QUERY_THROW);
    return std::make_shared<Worksheet>(
        connection(), document_,
        SheetReference(sheets->getByIndex(integer_argument(arguments, 0) - 1), UNO_QUERY_THROW));
  }

  // Ignores "ConflictResolution": it concerns shared workbooks, which these never are.
  AutomationPointer call_member(std::string_view member, const AutomationArguments&,
                                const NamedArguments& named) override {
    if (member == "close") {
      document_->close();
    } else if (member == "SaveAs") {
      for (const NamedArgument& argument : named) {
        if (argument.name == "filename")
          document_->save(*connection(), text(argument.value), workbook_format);
      }
    } else {
      no_member(member);
    }
    return nullptr;
  }

 private:
  Document document_;
};

class Workbooks final : public OfficeObject {
 public:
  explicit Workbooks(Connection connection) : OfficeObject(std::move(connection)) {}

 protected:
  AutomationPointer call_member(std::string_view member, const AutomationArguments&,
                                const NamedArguments&) override {
    if (member != "Add") no_member(member);
    return std::make_shared<Workbook>(
        connection(), std::make_shared<OfficeDocument>(
                          *connection(), QStringLiteral("com.sun.star.sheet.SpreadsheetDocument")));
  }
};

class SpreadsheetApplication final : public OfficeObject {
 public:
  explicit SpreadsheetApplication(Connection connection) : OfficeObject(std::move(connection)) {}

 protected:
  AutomationPointer get_member(std::string_view member, const AutomationArguments&) override {
    if (member != "Workbooks") no_member(member);
    return std::make_shared<Workbooks>(connection());
  }
};

}  // namespace

AutomationPointer spreadsheet_application(std::shared_ptr<OfficeConnection> connection) {
  return std::make_shared<SpreadsheetApplication>(std::move(connection));
}
