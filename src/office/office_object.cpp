#include "office/office_object.h"

#include <QUrl>

#include <com/sun/star/frame/XLoadable.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>
#include <com/sun/star/util/XCloseable.hpp>

#include "office/office_text.h"

using css::uno::Any;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

template <class Statement>
auto in_terms_of_automation(Statement&& statement) {
  try {
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
  return in_terms_of_automation([&] { return get_member(member, arguments); });
}

void OfficeObject::put(std::string_view member, const AutomationArguments& arguments,
                       const AutomationValue& value) {
  in_terms_of_automation([&] { put_member(member, arguments, value); });
}

AutomationPointer OfficeObject::call(std::string_view member, const AutomationArguments& arguments,
                                     const NamedArguments& named) {
  return in_terms_of_automation([&] { return call_member(member, arguments, named); });
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

int whole(const AutomationArguments& arguments, std::size_t n) {
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

void OfficeDocument::save(const QString& path, const QString& filter) const {
  css::beans::PropertyValue name;
  name.Name = "FilterName";
  name.Value = Any(to_uno(filter));
  const QString url = QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded());
  Reference<css::frame::XStorable>(model_, UNO_QUERY_THROW)->storeToURL(to_uno(url), {&name, 1});
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
    // The office process has gone, and the document with it.
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
