#include "office/office_object.h"

#include <com/sun/star/frame/XLoadable.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/io/XOutputStream.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <cppuhelper/implbase1.hxx>
#include <rtl/ref.hxx>

#include "office/compound_file.h"
#include "office/office_text.h"

using css::uno::Any;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

// Turns a refusal of the suite into AutomationError. Each new call proves that the last returned.
template <class Statement>
auto in_terms_of_automation(OfficeConnection& connection, Statement&& statement) {
  try {
    connection.count_answer();
    return statement();
  } catch (const css::uno::Exception& fault) {
    throw AutomationError(from_uno(fault.Message).toStdString());
  }
}

template <class Type>
const Type& held(const AutomationValue& value) {
  const Type* result = std::get_if<Type>(&value);
  if (!result) throw AutomationError("argument of another type");
  return *result;
}

}  // namespace

AutomationPointer OfficeObject::get(std::string_view member, const AutomationArguments& arguments) {
  return in_terms_of_automation(*connection_, [&] { return get_member(member, arguments); });
}

void OfficeObject::put(std::string_view member, const AutomationArguments& arguments,
                       const AutomationValue& value) {
  in_terms_of_automation(*connection_, [&] { put_member(member, arguments, value); });
}

AutomationPointer OfficeObject::call(std::string_view member, const AutomationArguments& arguments,
                                     const NamedArguments& named) {
  return in_terms_of_automation(*connection_,
                                [&] { return call_member(member, arguments, named); });
}

AutomationPointer OfficeObject::get_member(std::string_view member, const AutomationArguments&) {
  no_member(member);
}

void OfficeObject::put_member(std::string_view member, const AutomationArguments&,
                              const AutomationValue&) {
  no_member(member);
}

AutomationPointer OfficeObject::call_member(std::string_view member, const AutomationArguments&,
                                            const NamedArguments&) {
  no_member(member);
}

void no_member(std::string_view member) {
  throw AutomationError("no member " + std::string(member));
}

int integer_argument(const AutomationArguments& arguments, std::size_t n) {
  if (n >= arguments.size()) throw AutomationError("argument missing");
  return static_cast<int>(number(arguments[n]));
}

double number(const AutomationValue& value) {
  return held<double>(value);
}

const QString& text(const AutomationValue& value) {
  return held<QString>(value);
}

OfficeDocument::OfficeDocument(const OfficeConnection& connection, const QString& service)
    : model_(connection.create(service)) {
  Reference<css::frame::XLoadable>(model_, UNO_QUERY_THROW)->initNew();
}

Reference<css::beans::XPropertySet> OfficeDocument::style(const QString& family,
                                                          const QString& name) const {
  const Reference<css::style::XStyleFamiliesSupplier> supplier(model_, UNO_QUERY_THROW);
  const Reference<css::container::XNameAccess> styles(
      supplier->getStyleFamilies()->getByName(to_uno(family)), UNO_QUERY_THROW);
  return {styles->getByName(to_uno(name)), UNO_QUERY_THROW};
}

namespace {

// Collects in memory the bytes that the suite writes.
class ReceivedBytes final : public cppu::WeakImplHelper1<css::io::XOutputStream> {
 public:
  explicit ReceivedBytes(OfficeConnection& connection) : connection_(connection) {}

  void SAL_CALL writeBytes(const css::uno::Sequence<sal_Int8>& block) override {
    bytes.append(reinterpret_cast<const char*>(block.getConstArray()),
                 static_cast<std::size_t>(block.getLength()));
    connection_.count_answer();
  }
  void SAL_CALL flush() override {}
  void SAL_CALL closeOutput() override {}

  std::string bytes;

 private:
  OfficeConnection& connection_;
};

}  // namespace

void OfficeDocument::save(OfficeConnection& connection, const QString& path,
                          const QString& filter) const {
  const rtl::Reference<ReceivedBytes> received(new ReceivedBytes(connection));
  css::uno::Sequence<css::beans::PropertyValue> how(2);
  css::beans::PropertyValue* const property = how.getArray();
  property[0].Name = "FilterName";
  property[0].Value = Any(to_uno(filter));
  property[1].Name = "OutputStream";
  property[1].Value = Any(Reference<css::io::XOutputStream>(received.get()));
  Reference<css::frame::XStorable>(model_, UNO_QUERY_THROW)->storeToURL("private:stream", how);
  if (!is_complete_compound_file(received->bytes)) throw AutomationError("an incomplete document");
  connection.write_file(path, received->bytes);
}

void OfficeDocument::close() {
  if (!model_.is()) return;
  const Reference<css::util::XCloseable> document(model_, UNO_QUERY_THROW);
  model_.clear();
  document->close(true);
}

OfficeDocument::~OfficeDocument() {
  try {
    close();
  } catch (const css::uno::Exception&) {
    // The office process has ended, and the document with it.
  }
}

void OfficePageSetup::put_member(std::string_view member, const AutomationArguments&,
                                 const AutomationValue& value) {
  if (member != "Orientation") no_member(member);
  bool is_landscape = false;
  page_style_->getPropertyValue("IsLandscape") >>= is_landscape;
  if (is_landscape == (number(value) == landscape_)) return;
  const Any width = page_style_->getPropertyValue("Width");
  const Any height = page_style_->getPropertyValue("Height");
  page_style_->setPropertyValue("IsLandscape", Any(!is_landscape));
  page_style_->setPropertyValue("Width", height);
  page_style_->setPropertyValue("Height", width);
}
