// Twips, the unit of the windows' and pages' drawing coordinates: 1440 to the inch.
#pragma once

inline constexpr double twips_per_inch = 1440;

// In a window, whatever resolution its screen reports.
inline constexpr int twips_per_pixel = 15;
