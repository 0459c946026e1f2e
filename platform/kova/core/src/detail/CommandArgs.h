#pragma once

#include "detail/CommandTokenizer.h"

#include <initializer_list>
#include <kova/KStatus.h>
#include <map>
#include <string>
#include <vector>

namespace kova::detail {

// A flag a command knows: long and short spelling and how many values follow it.
struct FlagDescription {
    const char* longName;
    const char* shortName;
    int arity;
};

// A command's arguments split into flags (by long name, with their values) and positional
// arguments.
class CommandArgs {
public:
    // Fails with kInvalidParameter on a flag not in `descriptions` or one missing its values.
    KStatus parse(const std::vector<CommandToken>& tokens,
                  std::initializer_list<FlagDescription> descriptions);

    bool has(const char* longName) const { return flags_.count(longName) != 0; }
    // The first value of a flag, or `fallback`.
    std::string value(const char* longName, const std::string& fallback = std::string()) const;
    const std::vector<std::string>& positional() const { return positional_; }

private:
    std::map<std::string, std::vector<std::string>> flags_;
    std::vector<std::string> positional_;
};

} // namespace kova::detail
