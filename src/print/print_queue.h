// What the system's print queue says of the last document; Qt does not ask it.
#pragma once

// False if the queue refused the document just sent. Call it right after the document's end. True
// where there is no such queue to ask.
bool print_queue_took_it();
