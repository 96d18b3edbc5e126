// "Word.Application" in the office suite's word processor: adds documents and types into the one
// added last. "Quit" ends the suite only if it was `started` for this application.
#pragma once

#include "office/office_object.h"

AutomationPointer word_processor_application(std::shared_ptr<OfficeConnection> connection,
                                             bool started);
