#include "office/office_word_processor.h"

#include <com/sun/star/awt/FontPitch.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/text/ControlCharacter.hpp>
#include <com/sun/star/text/XTextDocument.hpp>

#include "office/office_text.h"

using css::uno::Any;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

using Connection = std::shared_ptr<OfficeConnection>;
using Document = std::shared_ptr<OfficeDocument>;

const QString document_format = QStringLiteral("MS Word 97");
constexpr double landscape = 1;

// The default style of `family`.
Reference<css::beans::XPropertySet> standard_style(const OfficeDocument& document,
                                                   const char* family) {
  return document.style(QString::fromLatin1(family), QStringLiteral("Standard"));
}

// The font of the text typed next. It is set on the whole document, which has no text yet.
class Font final : public OfficeObject {
 public:
  Font(Connection connection, Document document)
      : OfficeObject(std::move(connection)), document_(std::move(document)) {}

 protected:
  void put_member(std::string_view member, const AutomationArguments&,
                  const AutomationValue& value) override {
    const auto style = standard_style(*document_, "ParagraphStyles");
    if (member == "Name") {
      style->setPropertyValue("CharFontName", Any(to_uno(text(value))));
      style->setPropertyValue("CharFontPitch", Any(css::awt::FontPitch::FIXED));
    } else if (member == "Size") {
      const auto size = Any(static_cast<float>(number(value)));
      style->setPropertyValue("CharHeight", size);
      style->setPropertyValue("CharHeightAsian", size);
    } else {
      no_member(member);
    }
  }

 private:
  Document document_;
};

class Selection final : public OfficeObject {
 public:
  Selection(Connection connection, Document document)
      : OfficeObject(std::move(connection)), document_(std::move(document)) {
    text_ = Reference<css::text::XTextDocument>(document_->model(), UNO_QUERY_THROW)->getText();
  }

 protected:
  AutomationPointer get_member(std::string_view member, const AutomationArguments&) override {
    if (member != "Font") no_member(member);
    return std::make_shared<Font>(connection(), document_);
  }

  // A carriage return in a typed text ends a paragraph, as the exports expect.
  AutomationPointer call_member(std::string_view member, const AutomationArguments& arguments,
                                const NamedArguments&) override {
    if (member == "TypeText") {
      if (arguments.empty()) throw AutomationError("argument missing");
      text_->insertString(text_->getEnd(), to_uno(text(arguments[0])), false);
    } else if (member == "TypeParagraph") {
      text_->insertControlCharacter(text_->getEnd(), css::text::ControlCharacter::PARAGRAPH_BREAK,
                                    false);
    } else {
      no_member(member);
    }
    return nullptr;
  }

 private:
  Document document_;
  Reference<css::text::XText> text_;
};

class TextDocument final : public OfficeObject {
 public:
  TextDocument(Connection connection, Document document)
      : OfficeObject(std::move(connection)), document_(std::move(document)) {}

 protected:
  AutomationPointer get_member(std::string_view member, const AutomationArguments&) override {
    if (member != "PageSetup") no_member(member);
    return std::make_shared<OfficePageSetup>(connection(), document_,
                                             standard_style(*document_, "PageStyles"), landscape);
  }

  AutomationPointer call_member(std::string_view member, const AutomationArguments& arguments,
                                const NamedArguments&) override {
    if (member == "SaveAs") {
      if (arguments.empty()) throw AutomationError("argument missing");
      document_->save(*connection(), text(arguments[0]), document_format);
    } else if (member == "Close") {
      document_->close();
    } else {
      no_member(member);
    }
    return nullptr;
  }

 private:
  Document document_;
};

// The documents that the application object has added. It does not see any others.
using AddedDocuments = std::shared_ptr<std::vector<Document>>;

class Documents final : public OfficeObject {
 public:
  Documents(Connection connection, AddedDocuments added)
      : OfficeObject(std::move(connection)), added_(std::move(added)) {}

 protected:
  AutomationPointer call_member(std::string_view member, const AutomationArguments&,
                                const NamedArguments&) override {
    if (member != "Add") no_member(member);
    added_->push_back(std::make_shared<OfficeDocument>(
        *connection(), QStringLiteral("com.sun.star.text.TextDocument")));
    return std::make_shared<TextDocument>(connection(), added_->back());
  }

 private:
  AddedDocuments added_;
};

class WordProcessorApplication final : public OfficeObject {
 public:
  WordProcessorApplication(Connection connection, bool started)
      : OfficeObject(std::move(connection)), started_(started) {}

 protected:
  AutomationPointer get_member(std::string_view member, const AutomationArguments&) override {
    if (member == "Documents") return std::make_shared<Documents>(connection(), added_);
    if (member != "Selection") no_member(member);
    if (added_->empty()) throw AutomationError("no document to type into");
    return std::make_shared<Selection>(connection(), added_->back());
  }

  // The user's documents may be in the same process. "Quit" therefore closes only the documents
  // added here, and ends the process only if it was started here and the user has nothing open.
  AutomationPointer call_member(std::string_view member, const AutomationArguments&,
                                const NamedArguments&) override {
    if (member != "Quit") no_member(member);
    for (const Document& document : *added_) document->close();
    if (started_) connection()->quit();
    return nullptr;
  }

 private:
  bool started_;
  AddedDocuments added_ = std::make_shared<std::vector<Document>>();
};

}  // namespace

AutomationPointer word_processor_application(std::shared_ptr<OfficeConnection> connection,
                                             bool started) {
  return std::make_shared<WordProcessorApplication>(std::move(connection), started);
}
