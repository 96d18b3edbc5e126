#include "cli/output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/ioctl.h>
#include <unistd.h>

#include "cli/command.h"

namespace {

bool reader_gone = false;

// Keeps texts from recorders and files from sending control sequences to the terminal.
QString without_controls(QString text) {
  for (QChar& c : text) {
    const bool layout = c == u'\n' || c == u'\r' || c == u'\t';
    if (c.category() == QChar::Other_Control && !layout) c = QChar::ReplacementCharacter;
  }
  return text;
}

}  // namespace

void print(const QString& text) {
  if (reader_gone) return;
  const QByteArray bytes = without_controls(text).toUtf8();
  const bool written = std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()),
                                   stdout) == static_cast<std::size_t>(bytes.size()) &&
                       std::fflush(stdout) == 0;
  reader_gone = !written && errno == EPIPE;
  if (written || reader_gone) return;
  throw Failure(exit_status::file, QStringLiteral("standard output cannot be written: %1")
                                       .arg(QString::fromLocal8Bit(std::strerror(errno))));
}

bool output_has_reader() {
  return !reader_gone;
}

void complain(const QString& sentence) {
  std::fprintf(stderr, "corvane-cli: %s\n", without_controls(sentence).toUtf8().constData());
}

ProgressBar::ProgressBar() : on_terminal_(isatty(STDERR_FILENO) == 1) {}

ProgressBar::~ProgressBar() {
  if (shown_) std::fputs("\r\033[K", stderr);
}

void ProgressBar::show(int done, int total) {
  if (!on_terminal_ || total <= 0) return;
  winsize size{};
  const bool known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  const QString label = QStringLiteral(" %1 of %2 blocks").arg(done).arg(total);
  const qsizetype width = (known ? size.ws_col : 80) - label.size() - 3;
  if (width < 1) return;
  const qsizetype filled = width * done / total;
  const QString bar = u'[' + QString(filled, u'#') + QString(width - filled, u'.') + u']' + label;
  std::fprintf(stderr, "\r%s\033[K", qPrintable(bar));
  std::fflush(stderr);
  shown_ = true;
}
