// Fills the curves of the live graph: one per channel, all on one fixed scale.
#pragma once

class LiveBuffer;
class LiveView;
struct GraphCurves;

// The values at the graph's top and bottom edges, in every channel's unit.
inline constexpr float live_graph_high = 120.0F;
inline constexpr float live_graph_low = -40.0F;

// Copies the readings in `view` of the first `channels` channels. The part of the view beyond the
// last reading stays empty.
void copy_live_curves(GraphCurves& curves, const LiveBuffer& buffer, const LiveView& view,
                      int channels);
