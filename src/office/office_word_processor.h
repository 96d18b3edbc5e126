// "Word.Application" as the office suite's word processor: documents, and typing into the one that
// was added last. It quits the suite only if it was `started` for this.
#pragma once

#include "office/office_object.h"

AutomationPointer word_processor_application(std::shared_ptr<OfficeConnection> connection,
                                             bool started);
