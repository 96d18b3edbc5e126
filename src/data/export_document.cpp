#include "data/export_document.h"

#include <QScopeGuard>
#include <QStringList>

#include <algorithm>

#include "app/recording.h"
#include "data/automation.h"
#include "data/export_lines.h"
#include "data/export_office.h"
#include "data/export_progress.h"

namespace {

// Ends a paragraph in typed text.
constexpr QChar paragraph_break = u'\r';
const QString fixed_pitch_font = QStringLiteral("Courier New");
constexpr double font_size = 9;
// Characters of that font on a line of a portrait page with the usual margins.
constexpr qsizetype upright_line_size = 80;
constexpr double landscape = 1;
constexpr double do_not_save_changes = 0;

// The columns line up only if no line wraps.
bool needs_wide_page(const Recording& recording, const QStringList& above) {
  qsizetype longest = above.constLast().size();
  if (recording.SampleCount > 0) {
    // The last sample has the most digits in its number.
    longest = std::max(longest, sample_line(recording, recording.SampleCount - 1).size());
  }
  return longest > upright_line_size;
}

// The samples from `first` up to, but not including, `end`. Each begins a new paragraph.
QString paragraphs(const Recording& recording, int first, int end) {
  QString text;
  for (int n = first; n < end; ++n) text += paragraph_break + sample_line(recording, n);
  return text;
}

void type(AutomationObject& selection, const Recording& recording, const QStringList& above,
          ExportProgress& progress) {
  for (qsizetype i = 0; i < above.size(); ++i) {
    if (i > 0) selection.call("TypeParagraph");
    if (!above[i].isEmpty()) selection.call("TypeText", {above[i]});
  }
  const int total = recording.SampleCount;
  for (int first = 0; first < total; first += samples_per_call) {
    const int end = std::min(first + samples_per_call, total);
    selection.call("TypeText", {paragraphs(recording, first, end)});
    progress.reach_sample(1, end, total);
  }
}

void fill(AutomationObject& word_processor, AutomationObject& document, const Recording& recording,
          ExportProgress& progress) {
  const QStringList above = lines_above_samples(recording, MinimumLabel::without_stop);
  if (needs_wide_page(recording, above)) {
    document.get("PageSetup")->put("Orientation", landscape);
  }
  const AutomationPointer selection = word_processor.get("Selection");
  selection->get("Font")->put("Name", fixed_pitch_font);
  selection->get("Font")->put("Size", font_size);
  type(*selection, recording, above, progress);
}

}  // namespace

void export_document(Automation& office, const Recording& recording, const QString& path,
                     ExportProgress& progress) {
  const OfficeApplication word_processor = running_or_new(office, "Word.Application", progress);
  AutomationPointer document;
  // Closes only this document: the user may have others open in a running word processor.
  auto undo = qScopeGuard([&] {
    if (document) {
      skip_on_error([&] { document->call("Close", {}, {{"SaveChanges", do_not_save_changes}}); });
    }
    if (word_processor.created) skip_on_error([&] { word_processor->call("Quit"); });
  });
  progress.reach(1);
  document = word_processor->get("Documents")->call("Add");
  if (!document) throw AutomationError("no document was added");
  fill(*word_processor.object, *document, recording, progress);
  document->call("SaveAs", {path});
  undo.dismiss();
  word_processor->call("Quit");
}
