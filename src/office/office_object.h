// Base of the objects that this plug-in hands out: what the office suite refuses becomes an
// AutomationError, and so does a member that an object does not have.
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

  // What an object has; these throw UNO exceptions or AutomationError.
  virtual AutomationPointer get_member(std::string_view member, const AutomationArguments&);
  virtual void put_member(std::string_view member, const AutomationArguments&,
                          const AutomationValue&);
  virtual AutomationPointer call_member(std::string_view member, const AutomationArguments&,
                                        const NamedArguments&);

  const std::shared_ptr<OfficeConnection>& connection() const { return connection_; }

 private:
  // Let go of last: objects of the office process go before the way to it.
  std::shared_ptr<OfficeConnection> connection_;
};

[[noreturn]] void no_member(std::string_view member);

// Argument n as a whole number, or any value as a number or text. Throw AutomationError when it is
// missing or something else.
int integer_argument(const AutomationArguments& arguments, std::size_t n);
double number(const AutomationValue& value);
const QString& text(const AutomationValue& value);

// A document of the office suite without a window, so that neither the user nor the suite's own
// work for what is on screen comes into it. Closed and not saved at the end.
class OfficeDocument {
 public:
  // "com.sun.star.text.TextDocument", "com.sun.star.sheet.SpreadsheetDocument".
  OfficeDocument(const OfficeConnection& connection, const QString& service);
  OfficeDocument(const OfficeDocument&) = delete;
  OfficeDocument& operator=(const OfficeDocument&) = delete;
  ~OfficeDocument();

  const css::uno::Reference<css::uno::XInterface>& model() const { return model_; }

  // A style of one of its families, such as "PageStyles". Throws a UNO exception.
  css::uno::Reference<css::beans::XPropertySet> style(const QString& family,
                                                      const QString& name) const;

  // Has the suite write it in the format of that filter, and makes the bytes the file `path`, whole
  // or not at all. Throws a UNO exception or FileError.
  void save(OfficeConnection& connection, const QString& path, const QString& filter) const;
  void close();

 private:
  css::uno::Reference<css::uno::XInterface> model_;
};

// How the pages of a document or sheet lie, by the number that its application has for lying ones.
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
