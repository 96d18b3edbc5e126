// The Read Data command: the recorder's stored readings become the Recording.
#pragma once

class Shell;

// Reads the recorder's properties, lets the user choose a run of segments, reads those segments
// newest first and replaces the Recording. Every earlier end leaves the Recording as it was; Escape
// is one, without a message. Does nothing while another task has the recorder; the command is
// disabled then.
void ReadRecorderData(Shell& shell);
