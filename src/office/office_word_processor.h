// "Word.Application" as the office suite's word processor: documents, and typing into the one that
// was added last.
#pragma once

#include "office/office_object.h"

AutomationPointer word_processor_application(std::shared_ptr<OfficeConnection> connection);
