// The container of "MS Word 97" and "MS Excel 97": streams in sectors, chained by a table.
#pragma once

#include <string_view>

// Whether all that the container says it holds is there: a suite that has run out of room for its
// temporary files hands out a part without a word.
bool is_complete_compound_file(std::string_view bytes);
