// A font for the few characters of the program's own texts that many systems' fonts lack.
#pragma once

// Registers the font that comes with the program, so that Qt takes from it what other fonts lack.
// Needs a QGuiApplication. Only the first call has an effect.
void add_own_glyphs();
