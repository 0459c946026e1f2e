#pragma once

#include <string>
#include <string_view>

namespace kova::commands {

// The shortest text that reads back as `value` ("0.5", "2", "1e+20").
std::string numberText(double value);
// Reads a number; also "true"/"on"/"yes" as 1 and "false"/"off"/"no" as 0. False when the
// text is not one.
bool parseNumber(std::string_view text, double& value);

} // namespace kova::commands
