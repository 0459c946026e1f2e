#pragma once

#include <string_view>

namespace kova::detail {

// True when `text` matches `pattern`, where * matches any run of characters (also none) and
// ? exactly one.
bool wildcardMatch(std::string_view pattern, std::string_view text);

} // namespace kova::detail
