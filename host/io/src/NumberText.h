#pragma once

#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>

// Numbers in text files: whole-token parsing (an optional leading '+', as many files write)
// and the shortest text that reads back to the same value.
namespace KovaIo {

template <class T>
std::optional<T> parseNumber(std::string_view token) {
    if (token.size() > 1 && token[0] == '+' && token[1] != '-' && token[1] != '+') {
        token.remove_prefix(1);
    }
    T value{};
    const char* end = token.data() + token.size();
    const auto [stop, error] = std::from_chars(token.data(), end, value);
    if (error != std::errc() || stop != end) {
        return std::nullopt;
    }
    if constexpr (std::is_floating_point_v<T>) {
        if (!std::isfinite(value)) {
            return std::nullopt;
        }
    }
    return value;
}

template <class T>
void appendNumber(std::string& out, T value) {
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, result.ptr);
}

} // namespace KovaIo
