#include "print/print_queue.h"

#include <QLibrary>

// Qt's printing has already loaded this library. Loading it again gives the same instance, with the
// server's last answer.
bool print_queue_took_it() {
#ifdef Q_OS_UNIX
  constexpr int first_error = 0x400;
  using LastError = int (*)();
  static const auto last_error =
      reinterpret_cast<LastError>(QLibrary::resolve(QStringLiteral("cups"), 2, "cupsLastError"));
  if (last_error) return last_error() < first_error;
#endif
  return true;
}
