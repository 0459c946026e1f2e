#include "detail/CommandArgs.h"

#include <kova/KString.h>

namespace kova::detail {

KStatus CommandArgs::parse(const std::vector<CommandToken>& tokens,
                           std::initializer_list<FlagDescription> descriptions) {
    flags_.clear();
    positional_.clear();
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const CommandToken& token = tokens[i];
        if (!token.isFlag()) {
            positional_.push_back(token.text);
            continue;
        }
        const std::string name = token.text.substr(1);
        const FlagDescription* description = nullptr;
        for (const FlagDescription& s : descriptions) {
            if (name == s.longName || name == s.shortName) {
                description = &s;
            }
        }
        if (description == nullptr) {
            return KStatus(KStatus::kInvalidParameter,
                           KString("unknown flag '" + token.text + "'"));
        }
        auto& values = flags_[description->longName];
        for (int k = 0; k < description->arity; ++k) {
            if (++i >= tokens.size() || tokens[i].isFlag()) {
                return KStatus(KStatus::kInvalidParameter,
                               KString("flag '" + token.text + "' needs a value"));
            }
            values.push_back(tokens[i].text);
        }
    }
    return KStatus();
}

std::string CommandArgs::value(const char* longName, const std::string& fallback) const {
    const auto found = flags_.find(longName);
    return found == flags_.end() || found->second.empty() ? fallback : found->second.front();
}

} // namespace kova::detail
