// The graph as screen readers present it.
#pragma once

// From the first call on, every GraphSurface is a spin box of samples for screen readers: its value
// is the number of the sample at the cursor, its text the time and the readings there. This is the
// only role whose text, not only its number, is read when the value changes.
void make_graph_accessible();
