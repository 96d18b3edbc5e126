// Twips, the unit of the windows' and pages' drawing coordinates: 1440 to the inch.
#pragma once

inline constexpr double twips_per_inch = 1440;

// Of a window, whatever its screen says about its resolution.
inline constexpr int twips_per_pixel = 15;
