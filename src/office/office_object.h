// The base class of the objects that this plug-in returns. It throws AutomationError when the
// office suite refuses a call and when an object has no such member.
#pragma once

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/frame/XModel.hpp>

#include "data/automation.h"
#include "office/office_connection.h"

class OfficeObject : public AutomationObject {
 public:
  using AutomationObject::call;
  using AutomationObject::get;
  using AutomationObject::put;
  AutomationPointer get(std::string_view member, const AutomationArguments& arguments) final;
  void put(std::string_view member, const AutomationArguments& arguments,
           const AutomationValue& value) final;
  AutomationPointer call(std::string_view member, const AutomationArguments& arguments,
                         const NamedArguments& named) final;

 protected:
  explicit OfficeObject(std::shared_ptr<OfficeConnection> connection)
      : connection_(std::move(connection)) {}

  // The members of an object. Overrides throw UNO exceptions or AutomationError.
  virtual AutomationPointer get_member(std::string_view member, const AutomationArguments&);
  virtual void put_member(std::string_view member, const AutomationArguments&,
                          const AutomationValue&);
  virtual AutomationPointer call_member(std::string_view member, const AutomationArguments&,
                                        const NamedArguments&);

  const std::shared_ptr<OfficeConnection>& connection() const { return connection_; }

 private:
  // Released last: the objects of the office process must go before the connection to it.
  std::shared_ptr<OfficeConnection> connection_;
};

[[noreturn]] void no_member(std::string_view member);

// Argument n as a whole number; a value as a number; a value as text. All throw AutomationError
// when the argument is missing or of another type.
int integer_argument(const AutomationArguments& arguments, std::size_t n);
double number(const AutomationValue& value);
const QString& text(const AutomationValue& value);

// A document of the office suite without a window, so that neither the user nor drawing on the
// screen interferes. The destructor closes it unsaved.
class OfficeDocument {
 public:
  // `service`: "com.sun.star.text.TextDocument" or "com.sun.star.sheet.SpreadsheetDocument".
  OfficeDocument(const OfficeConnection& connection, const QString& service);
  OfficeDocument(const OfficeDocument&) = delete;
  OfficeDocument& operator=(const OfficeDocument&) = delete;
  ~OfficeDocument();

  const css::uno::Reference<css::uno::XInterface>& model() const { return model_; }

  // Returns a style of a family such as "PageStyles". Throws a UNO exception.
  css::uno::Reference<css::beans::XPropertySet> style(const QString& family,
                                                      const QString& name) const;

  // Has the suite convert the document with `filter`, and writes the bytes to the file `path`, all
  // or none. Throws a UNO exception, AutomationError for an incomplete document, or FileError.
  void save(OfficeConnection& connection, const QString& path, const QString& filter) const;
  void close();

 private:
  css::uno::Reference<css::uno::XInterface> model_;
};

// The page orientation of a document or sheet. `landscape` is the application's number for it.
class OfficePageSetup final : public OfficeObject {
 public:
  OfficePageSetup(std::shared_ptr<OfficeConnection> connection,
                  std::shared_ptr<OfficeDocument> document,
                  const css::uno::Reference<css::beans::XPropertySet>& page_style, double landscape)
      : OfficeObject(std::move(connection)),
        document_(std::move(document)),
        page_style_(page_style),
        landscape_(landscape) {}

 protected:
  void put_member(std::string_view member, const AutomationArguments&,
                  const AutomationValue& value) override;

 private:
  std::shared_ptr<OfficeDocument> document_;
  css::uno::Reference<css::beans::XPropertySet> page_style_;
  double landscape_;
};
