#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace KovaIo {

// Calls `statement(line, tokens, rest)` for every statement of a line-based text format:
// lines end at '\n' (a '\r' before it is dropped), a '\' at the end of a line continues the
// statement on the next one, '#' starts a comment, and tokens are separated by blanks.
// `line` is the 1-based line the statement starts on, `tokens` its words (the keyword first)
// and `rest` the text after the keyword, trimmed (for names that hold blanks). Blank lines are
// passed over. Stops when `statement` returns false.
template <class Statement>
void forEachStatement(std::string_view text, Statement&& statement) {
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\v' || c == '\f'; };
    std::size_t lineNumber = 0;
    std::size_t position = 0;
    std::string joined;
    std::vector<std::string_view> tokens;
    while (position < text.size()) {
        const std::size_t startLine = lineNumber + 1;
        joined.clear();
        bool continued = true;
        while (continued && position < text.size()) {
            std::size_t end = text.find('\n', position);
            if (end == std::string_view::npos) {
                end = text.size();
            }
            std::string_view line = text.substr(position, end - position);
            position = end + 1;
            ++lineNumber;
            if (!line.empty() && line.back() == '\r') {
                line.remove_suffix(1);
            }
            continued = !line.empty() && line.back() == '\\';
            if (continued) {
                line.remove_suffix(1);
                joined.append(line).push_back(' ');
            } else {
                joined.append(line);
            }
        }
        std::string_view content(joined);
        if (const std::size_t hash = content.find('#'); hash != std::string_view::npos) {
            content = content.substr(0, hash);
        }
        tokens.clear();
        std::size_t i = 0;
        std::size_t restStart = std::string_view::npos;
        while (i < content.size()) {
            while (i < content.size() && isBlank(content[i])) {
                ++i;
            }
            if (i == content.size()) {
                break;
            }
            if (tokens.size() == 1) {
                restStart = i;
            }
            const std::size_t start = i;
            while (i < content.size() && !isBlank(content[i])) {
                ++i;
            }
            tokens.push_back(content.substr(start, i - start));
        }
        if (tokens.empty()) {
            continue;
        }
        std::string_view rest;
        if (restStart != std::string_view::npos) {
            rest = content.substr(restStart);
            while (!rest.empty() && isBlank(rest.back())) {
                rest.remove_suffix(1);
            }
        }
        if (!statement(startLine, tokens, rest)) {
            return;
        }
    }
}

} // namespace KovaIo
