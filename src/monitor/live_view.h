// Which readings the live graph shows, and the position of a reading in it.
#pragma once

#include <cstdint>
#include <optional>

#include "views/graph_view.h"

class LiveView {
 public:
  static constexpr std::int32_t most_span = 16384;

  // The number of readings across the graph's width, and the first and last slot in view. The view
  // can extend beyond the last reading; that part is empty.
  std::int32_t Span = 128;
  std::int16_t FirstShown = 0;
  std::int16_t LastShown = 127;

  // Places the view for a slider at 0..100 over `live_count` readings. At 100 it shows the newest.
  // With fewer readings than Span it starts at slot 0, whatever the slider's position.
  void place(int slider, int live_count);

  // Zooms out (button 0) or in (button 1) as the historical graph does, up to most_span.
  void zoom(int button);

  // The slot of the last reading in view; nothing if the view has no reading.
  std::optional<int> last_reading(int live_count) const;

  // The reading nearest to `x` of 0..`width` (any unit), counted from FirstShown; the last one in
  // view if `x` lies beyond it. Nothing if the view has no reading or the width is not positive.
  std::optional<int> nearest(double x, double width, int live_count) const;
  // The x of that reading, in the unit of `width`.
  double place_of(int reading, double width) const { return reading * width / (Span - 1); }
};

// The left edge, in twips, of a label of `label_width` at the cursor line: 30 to the right of the
// line, or 1417.5 (25 mm) to its left if the label would pass the graph's right edge.
double cursor_label_left(double cursor, double label_width, double graph_width);
