// What the system's print queue says of the last document, which Qt does not ask it.
#pragma once

// False when the queue refused the document that was just sent. To be asked right after the end of
// the document. True where there is no such queue to ask.
bool print_queue_took_it();
