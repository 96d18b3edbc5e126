// Which readings the live graph shows, and where a reading lies in it.
#pragma once

#include <cstdint>
#include <optional>

#include "views/graph_view.h"

class LiveView {
 public:
  static constexpr std::int32_t least_span = least_view;
  static constexpr std::int32_t most_span = 16384;

  // The number of readings that the graph's width has room for, and the slots that it shows. Slots
  // beyond the last reading are part of the view and empty.
  std::int32_t Span = 128;
  std::int16_t FirstShown = 0;
  std::int16_t LastShown = 127;

  // Places the view for a slider at 0..100 over `live_count` readings. At 100 it shows the newest;
  // with fewer readings than Span it starts at slot 0 wherever the slider is.
  void place(int slider, int live_count);

  // Multiplies (button 0) or divides (button 1) Span by 1.25, rounded with ties to even and held
  // within its bounds.
  void zoom(int button);

  // The slot of the last reading shown; nothing if the view has no reading.
  std::optional<int> last_reading(int live_count) const;

  // The reading nearest to `x` of 0..`width` in any unit, counted from FirstShown; beyond the last
  // reading shown, that one. Nothing if the view has no reading.
  std::optional<int> nearest(double x, double width, int live_count) const;
  // Its place in the unit of `width`.
  double place_of(int reading, double width) const { return reading * width / (Span - 1); }
};

// The left edge, in twips, of a label of `label_width` beside the cursor line: 30 right of the
// line, or 1417.5 (25 mm) left of it if the label would run past the graph's right edge.
double cursor_label_left(double cursor, double label_width, double graph_width);
