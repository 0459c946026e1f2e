#include "detail/CommandRegistry.h"

#include "commands/BuiltInCommands.h"

namespace kova::detail {

CommandRegistry::CommandRegistry() {
    commands::registerBuiltInCommands(*this);
}

CommandRegistry& CommandRegistry::instance() {
    static CommandRegistry registry;
    return registry;
}

void CommandRegistry::add(const std::string& name, Command command) {
    std::lock_guard lock(mutex_);
    commands_[name] = std::move(command);
}

KStatus CommandRegistry::execute(std::string_view line, KStringArray& result) const {
    std::vector<CommandToken> tokens;
    if (KStatus status = tokenizeCommand(line, tokens); !status) {
        return status;
    }
    std::size_t start = 0;
    while (start < tokens.size()) {
        std::size_t end = start;
        while (end < tokens.size() && !tokens[end].isSeparator()) {
            ++end;
        }
        if (end > start) {
            const std::string& name = tokens[start].text;
            Command command;
            {
                std::lock_guard lock(mutex_);
                const auto found = commands_.find(name);
                if (found != commands_.end()) {
                    command = found->second;
                }
            }
            if (!command) {
                return KStatus(KStatus::kInvalidParameter,
                               KString("unknown command '" + name + "'"));
            }
            const std::vector<CommandToken> args(tokens.begin() + static_cast<long>(start) + 1,
                                                 tokens.begin() + static_cast<long>(end));
            if (KStatus status = command(args, result); !status) {
                return KStatus(status.statusCode(), KString(name + ": ") + status.errorString());
            }
        }
        start = end + 1;
    }
    return KStatus();
}

} // namespace kova::detail
