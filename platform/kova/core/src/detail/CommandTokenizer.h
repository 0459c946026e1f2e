#pragma once

#include <kova/KStatus.h>
#include <string>
#include <string_view>
#include <vector>

namespace kova::detail {

// One word of a command line.
struct CommandToken {
    std::string text;
    bool quoted = false; // came from a double-quoted string (never a flag or a separator)
    // A flag: "-" followed by a letter, unquoted ("-name"; "-1.5" is a number).
    bool isFlag() const;
    // An unquoted ";" ending a command.
    bool isSeparator() const { return !quoted && text == ";"; }
};

// Splits a command line into words: separated by blanks, double-quoted strings keep their
// blanks and take the escapes \" and \\, and ";" separates commands. Fails with
// kInvalidParameter on an unterminated string.
KStatus tokenizeCommand(std::string_view line, std::vector<CommandToken>& tokens);

} // namespace kova::detail
