// The Read Data command: the recorder's stored readings become the Recording.
#pragma once

class Shell;

// Reads the recorder's properties, lets the user choose a run of segments, reads those segments
// newest first and replaces the Recording. If it ends early, the Recording stays as it was. Escape
// ends it without a message. Does nothing while another task uses the recorder; the command is then
// disabled.
void ReadRecorderData(Shell& shell);
