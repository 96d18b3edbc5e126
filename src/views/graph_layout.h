// Places the controls of the graph tab. The distances come from the window's design, in twips; room
// beyond the design size goes to the graph.
#pragma once

#include <QRect>
#include <QSize>

#include <array>

#include "views/graph_view.h"

// The room that texts and controls need, in window pixels.
struct GraphTextSizes {
  int line = 0;                    // height of a line
  std::array<int, 4> scales = {};  // widest text of each slot's scale
  int legend = 0;                  // widest legend or button
  int button = 0;                  // height of a button
  int widest_button = 0;
  int slider = 0;  // height of the slider
  int channels = 0;

  bool operator==(const GraphTextSizes&) const = default;
};

struct GraphLayout {
  QRect Pic1;
  QRect Slider1;
  QRect Label1;
  QRect Label2;
  // Slot after slot, each scale's labels from top to bottom; those of slots 2 and 3 lie in Pic1.
  std::array<QRect, 4 * labels_per_scale> Label4;
  // Titles of the scales, legend texts, values at the cursor.
  std::array<QRect, 12> Label3;
  std::array<QRect, 4> Line1;
  std::array<QRect, 4> buttons;
  // The least height of a page in which legends and buttons fit below each other.
  int least_height = 0;
};

GraphLayout graph_layout(QSize page, const GraphTextSizes& sizes);
