#pragma once

#include "detail/CommandTokenizer.h"

#include <functional>
#include <kova/KStatus.h>
#include <kova/KStringArray.h>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace kova::detail {

// The host's commands by name. A command gets its argument words (the command name
// excluded) and appends its result words to `result`; it fails with a one-line reason.
class CommandRegistry {
public:
    using Command =
        std::function<KStatus(const std::vector<CommandToken>& args, KStringArray& result)>;

    static CommandRegistry& instance();

    // Adds or replaces a command.
    void add(const std::string& name, Command command);
    // Runs every command of `line` (commands separated by ";") in order, stopping at the
    // first failure, whose status says "<command>: <reason>".
    KStatus execute(std::string_view line, KStringArray& result) const;

private:
    CommandRegistry();
    mutable std::mutex mutex_;
    std::map<std::string, Command, std::less<>> commands_;
};

} // namespace kova::detail
