// Twips, the unit of the windows' and pages' drawing coordinates: 1440 to the inch.
#pragma once

inline constexpr double twips_per_inch = 1440.0;

// Pixels (or any unit of a device of `dpi` units an inch) and back; neither rounds.
constexpr double pixels_of_twips(double twips, double dpi) {
  return twips * dpi / twips_per_inch;
}
constexpr double twips_of_pixels(double pixels, double dpi) {
  return pixels * twips_per_inch / dpi;
}
