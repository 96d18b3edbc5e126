// "Excel.Application" in the office suite's spreadsheet: workbooks, sheets, columns, cells.
#pragma once

#include "office/office_object.h"

AutomationPointer spreadsheet_application(std::shared_ptr<OfficeConnection> connection);
