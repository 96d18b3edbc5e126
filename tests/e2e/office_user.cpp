// office_user FILE: opens a file in this user's running office process, as a double click does when
// that process has windows.
#include <com/sun/star/frame/XComponentLoader.hpp>

#include "office/office_connection.h"
#include "office/office_text.h"

int main(int, char** argv) {
  OfficeConnection office;
  office.open([] { return false; });
  css::uno::Reference<css::frame::XComponentLoader>(
      office.create(QStringLiteral("com.sun.star.frame.Desktop")), css::uno::UNO_QUERY_THROW)
      ->loadComponentFromURL(to_uno(QStringLiteral("file://") + argv[1]), "_blank", 0, {});
}
