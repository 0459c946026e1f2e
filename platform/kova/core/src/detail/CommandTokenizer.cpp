#include "detail/CommandTokenizer.h"

#include <cctype>
#include <kova/KString.h>

namespace kova::detail {

bool CommandToken::isFlag() const {
    return !quoted && text.size() > 1 && text[0] == '-' &&
           std::isalpha(static_cast<unsigned char>(text[1]));
}

KStatus tokenizeCommand(std::string_view line, std::vector<CommandToken>& tokens) {
    tokens.clear();
    std::size_t i = 0;
    while (i < line.size()) {
        const char c = line[i];
        if (std::isspace(static_cast<unsigned char>(c))) {
            ++i;
        } else if (c == ';') {
            tokens.push_back({";", false});
            ++i;
        } else if (c == '"') {
            CommandToken token{"", true};
            ++i;
            bool closed = false;
            while (i < line.size() && !closed) {
                if (line[i] == '\\' && i + 1 < line.size() &&
                    (line[i + 1] == '"' || line[i + 1] == '\\')) {
                    token.text += line[i + 1];
                    i += 2;
                } else if (line[i] == '"') {
                    closed = true;
                    ++i;
                } else {
                    token.text += line[i++];
                }
            }
            if (!closed) {
                return KStatus(KStatus::kInvalidParameter, "unterminated string");
            }
            tokens.push_back(std::move(token));
        } else {
            CommandToken token;
            while (i < line.size() && !std::isspace(static_cast<unsigned char>(line[i])) &&
                   line[i] != ';' && line[i] != '"') {
                token.text += line[i++];
            }
            tokens.push_back(std::move(token));
        }
    }
    return KStatus();
}

} // namespace kova::detail
