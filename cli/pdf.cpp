#include "cli/pdf.h"

#include "print/graph_page.h"
#include "print/pdf_file.h"
#include "print/printed_view.h"
#include "print/sheet_page.h"
#include "print/sheet_pages.h"
#include "views/graph_picture.h"
#include "views/graph_view.h"

void write_pdf(const Recording& recording, const QString& path, const QString& printed,
               const std::function<void()>& before_page) {
  PrintedView view{.recording = recording, .printed = printed};
  GraphCurves curves;
  curves.copy_view(recording, 0, recording.SampleCount);
  for (std::size_t slot = 0; slot < curves.channels.size(); ++slot) {
    const ChannelScale scale = channel_scale(curves.channels[slot].values, std::nullopt);
    view.chosen[slot] = true;
    view.high[slot] = scale.high;
    view.low[slot] = scale.low;
  }
  PdfFile file(path, Orientation::portrait);
  QPainter& painter = file.start_document(recording.Title);
  draw_graph_page(painter, file.paper_size(), view);
  const int pages = SheetPages(view, file.paper_size()).count();
  for (int page = 0; page < pages; ++page) {
    before_page();
    file.new_page();
    draw_sheet_page(painter, file.paper_size(), view, page);
  }
  file.end_document();
}
