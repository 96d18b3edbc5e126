// The Link and Unlink commands.
#pragma once

class Shell;

// Asks for the port and recorder type, proves that a recorder answers and opens the Real-time Data
// window. "Link Timeout!" tells that none did. Statements that fail are skipped: a port that does
// not exist shows up as one where nobody answers. Escape ends it without a message. Does nothing
// while another task has the recorder; the command is disabled then.
void link_Click(Shell& shell);

// Closes the Real-time Data window and switches the commands back. The port stays open, on
// purpose: the next link finds the recorder on it.
void unlink_Click(Shell& shell);
