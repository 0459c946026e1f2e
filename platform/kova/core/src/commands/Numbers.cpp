#include "commands/Numbers.h"

#include <charconv>

namespace kova::commands {

std::string numberText(double value) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

bool parseNumber(std::string_view text, double& value) {
    if (text == "true" || text == "on" || text == "yes") {
        value = 1.0;
        return true;
    }
    if (text == "false" || text == "off" || text == "no") {
        value = 0.0;
        return true;
    }
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return !text.empty() && error == std::errc() && end == text.data() + text.size();
}

} // namespace kova::commands
