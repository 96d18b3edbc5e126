#include "monitor/live_graph.h"

#include "monitor/live_buffer.h"
#include "monitor/live_view.h"
#include "views/graph_picture.h"

void copy_live_curves(GraphCurves& curves, const LiveBuffer& buffer, const LiveView& view,
                      int channels) {
  curves.span = view.Span;
  curves.channels.resize(static_cast<std::size_t>(channels));
  for (int c = 0; c < channels; ++c) {
    GraphCurves::Channel& channel = curves.channels[static_cast<std::size_t>(c)];
    channel.high = live_graph_high;
    channel.low = live_graph_low;
    const CurveSamples samples = buffer.samples(c, view.FirstShown, view.Span);
    channel.values.resize(static_cast<std::size_t>(samples.count));
    for (int j = 0; j < samples.count; ++j)
      channel.values[static_cast<std::size_t>(j)] = samples[j];
  }
}
