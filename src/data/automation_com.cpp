// Office automation on Windows: COM, late-bound through IDispatch.
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QUuid>

#include <algorithm>
#include <ole2.h>
#include <string>

#include "data/automation.h"
#include "data/whole_file.h"

namespace {

void require(HRESULT result, const char* what) {
  if (FAILED(result)) throw AutomationError(what);
}

// A thread must enter a COM apartment before it uses an application. It leaves when it ends.
void enter_apartment() {
  struct Apartment {
    Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~Apartment() { CoUninitialize(); }
  };
  static thread_local Apartment apartment;
}

std::wstring wide(std::string_view ascii) {
  return {ascii.cbegin(), ascii.cend()};
}

class Variant : public VARIANT {
 public:
  Variant() { VariantInit(this); }
  explicit Variant(const AutomationValue& value) : Variant() {
    std::visit([this](const auto& held) { set(held); }, value);
  }
  Variant(Variant&& other) noexcept : VARIANT(other) { VariantInit(&other); }
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;
  ~Variant() { VariantClear(this); }

 private:
  void set(double number) {
    vt = VT_R8;
    dblVal = number;
  }
  // Keeps a cell's text from becoming a formula.
  void set(const QString& text) {
    const bool formula = !text.isEmpty() && QStringView(u"=+-@").contains(text[0]);
    set_text(formula ? u'\'' + text : text);
  }
  void set_text(const QString& text) {
    vt = VT_BSTR;
    bstrVal = SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.utf16()),
                                static_cast<UINT>(text.size()));
  }
  // Keeps a cell's text from becoming a date as well, as a time stamp would.
  void set_cell(double number) { set(number); }
  void set_cell(const QString& text) { set_text(u'\'' + text); }
  // Row index first; both indices count from 1, as the applications expect.
  void set(const AutomationTable& table) {
    SAFEARRAYBOUND bounds[] = {{static_cast<ULONG>(table.rows()), 1},
                               {static_cast<ULONG>(table.columns), 1}};
    vt = VT_ARRAY | VT_VARIANT;
    parray = SafeArrayCreate(VT_VARIANT, 2, bounds);
    if (!parray) throw AutomationError("no memory");
    for (std::size_t i = 0; i < table.cells.size(); ++i) {
      Variant cell;
      std::visit([&cell](const auto& held) { cell.set_cell(held); }, table.cells[i]);
      LONG place[] = {static_cast<LONG>(i / table.columns) + 1,
                      static_cast<LONG>(i % table.columns) + 1};
      require(SafeArrayPutElement(parray, place, &cell), "block of cells");
    }
  }
};

class ComObject final : public AutomationObject {
 public:
  // Takes ownership of the reference.
  explicit ComObject(IDispatch* object) : object_(object) {}
  ~ComObject() override { object_->Release(); }

  using AutomationObject::get;
  AutomationPointer get(std::string_view member, const AutomationArguments& arguments) override {
    AutomationPointer result = invoke(DISPATCH_PROPERTYGET, member, arguments, {});
    if (!result) throw AutomationError("not an object");
    return result;
  }
  using AutomationObject::put;
  void put(std::string_view member, const AutomationArguments& arguments,
           const AutomationValue& value) override {
    AutomationArguments all = arguments;
    all.push_back(value);
    invoke(DISPATCH_PROPERTYPUT, member, all, {});
  }
  using AutomationObject::call;
  AutomationPointer call(std::string_view member, const AutomationArguments& arguments,
                         const NamedArguments& named) override {
    if (member == "SaveAs") return save_as(arguments, named);
    return invoke(DISPATCH_METHOD | DISPATCH_PROPERTYGET, member, arguments, named);
  }

 private:
  AutomationPointer save_as(AutomationArguments arguments, NamedArguments named);
  AutomationPointer invoke(unsigned kind, std::string_view member,
                           const AutomationArguments& arguments, const NamedArguments& named);

  IDispatch* object_;
};

AutomationPointer ComObject::invoke(unsigned kind, std::string_view member,
                                    const AutomationArguments& arguments,
                                    const NamedArguments& named) {
  std::vector<std::wstring> names = {wide(member)};
  for (const NamedArgument& argument : named) names.push_back(wide(argument.name));
  std::vector<OLECHAR*> name_pointers;
  for (std::wstring& name : names) name_pointers.push_back(name.data());
  std::vector<DISPID> ids(names.size());
  require(object_->GetIDsOfNames(IID_NULL, name_pointers.data(), static_cast<UINT>(ids.size()),
                                 LOCALE_USER_DEFAULT, ids.data()),
          "no such member");
  // Invoke() takes the named arguments first, then the others from last to first.
  std::vector<Variant> values;
  for (const NamedArgument& argument : named) values.emplace_back(argument.value);
  std::for_each(arguments.crbegin(), arguments.crend(),
                [&values](const AutomationValue& value) { values.emplace_back(value); });
  std::vector<DISPID> named_ids(ids.cbegin() + 1, ids.cend());
  if (kind == DISPATCH_PROPERTYPUT) named_ids = {DISPID_PROPERTYPUT};
  DISPPARAMS parameters = {values.data(), named_ids.data(), static_cast<UINT>(values.size()),
                           static_cast<UINT>(named_ids.size())};
  Variant result;
  require(object_->Invoke(ids[0], IID_NULL, LOCALE_USER_DEFAULT, static_cast<WORD>(kind),
                          &parameters, &result, nullptr, nullptr),
          "the application refused");
  if (result.vt != VT_DISPATCH || !result.pdispVal) return nullptr;
  result.pdispVal->AddRef();
  return std::make_shared<ComObject>(result.pdispVal);
}

// The application saves into a temporary folder, from which write_whole_file() takes the bytes. It
// keeps its file open until the document is closed, so the folder lives until the program ends.
AutomationPointer ComObject::save_as(AutomationArguments arguments, NamedArguments named) {
  static const QTemporaryDir folder;
  AutomationValue& name = arguments.empty() ? named.at(0).value : arguments[0];
  const QString path = std::get<QString>(name);
  QFile own(folder.filePath(QUuid::createUuid().toString(QUuid::Id128) + u'.' +
                            QFileInfo(path).suffix()));
  name = QDir::toNativeSeparators(own.fileName());
  invoke(DISPATCH_METHOD, "SaveAs", arguments, named);
  if (!own.open(QIODevice::ReadOnly)) throw AutomationError("nothing was saved");
  const QByteArray bytes = own.readAll();
  if (bytes.isEmpty() || own.error() != QFile::NoError) throw AutomationError("not readable");
  write_whole_file(path, bytes.toStdString());
  return nullptr;
}

AutomationPointer dispatch(IUnknown* unknown) {
  IDispatch* object = nullptr;
  const HRESULT result = unknown->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&object));
  unknown->Release();
  require(result, "no automation");
  return std::make_shared<ComObject>(object);
}

CLSID class_of(std::string_view application) {
  enter_apartment();
  CLSID id;
  require(CLSIDFromProgID(wide(application).c_str(), &id), "no such application");
  return id;
}

class ComAutomation final : public Automation {
 public:
  AutomationPointer running(std::string_view application, const GiveUp&) override {
    IUnknown* object = nullptr;
    require(GetActiveObject(class_of(application), nullptr, &object), "not running");
    return dispatch(object);
  }
  AutomationPointer create(std::string_view application, const GiveUp&) override {
    IUnknown* object = nullptr;
    require(CoCreateInstance(class_of(application), nullptr, CLSCTX_LOCAL_SERVER, IID_IUnknown,
                             reinterpret_cast<void**>(&object)),
            "cannot be created");
    return dispatch(object);
  }
};

}  // namespace

Automation& office_automation() {
  static ComAutomation automation;
  return automation;
}
