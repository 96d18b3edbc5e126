// The few characters of the program's own texts that many systems have no font for.
#pragma once

// Makes the font that comes with the program known, so that Qt takes from it what the other fonts
// lack. The first call does it, once there is a QGuiApplication.
void add_own_glyphs();
