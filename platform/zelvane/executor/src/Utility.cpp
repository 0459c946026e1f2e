#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <string>
#include <zelvane/executor/Utility.h>

namespace ZelvaneGraph::Executor::Utility {

bool getEnvBool(const char* name, bool defaultValue) {
    const char* raw = name ? std::getenv(name) : nullptr;
    if (!raw) {
        return defaultValue;
    }
    std::string text(raw);
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (text == "1" || text == "true" || text == "yes" || text == "on") {
        return true;
    }
    if (text.empty() || text == "0" || text == "false" || text == "no" || text == "off") {
        return false;
    }
    return defaultValue;
}

} // namespace ZelvaneGraph::Executor::Utility
