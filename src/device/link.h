// The Link and Unlink commands.
#pragma once

class Shell;

// Asks for the port and recorder type, checks that a recorder answers and opens the Real-time Data
// window. Says "Link Timeout!" if none answers, also when the port does not exist: a statement that
// fails is skipped. Escape ends the command without a message. Does nothing while another task uses
// the recorder; the command is then disabled.
void link_Click(Shell& shell);

// Closes the Real-time Data window and disables the commands that need a link. The port stays open
// on purpose: the next link finds the recorder on it.
void unlink_Click(Shell& shell);
