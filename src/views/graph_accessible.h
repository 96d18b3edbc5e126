// The graph as a screen reader meets it.
#pragma once

// From the first call on every GraphSurface is a spin box of samples to a screen reader: its value
// is the number of the sample at the cursor, its text the time and the readings there. This is the
// one role whose text, and not only its number, is read when the value changes.
void make_graph_accessible();
