// The container format of "MS Word 97" and "MS Excel 97": a table chains the sectors of streams.
#pragma once

#include <string_view>

// Returns whether the container has every sector that it refers to. A suite without room for its
// temporary files delivers an incomplete one without reporting an error.
bool is_complete_compound_file(std::string_view bytes);
