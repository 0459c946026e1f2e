#include <kova/KFailureInjection.h>
#include <kova/KStringResource.h>
#include <map>
#include <mutex>
#include <shared_mutex>
#include <utility>

namespace {

struct Table {
    std::shared_mutex mutex;
    // (plug-in id, key) -> text; ordered so that a plug-in's strings are one range.
    std::map<std::pair<std::string, std::string>, KString, std::less<>> strings;
};

Table& table() {
    static Table* instance = new Table; // outlives plug-ins unloaded during static destruction
    return *instance;
}

} // namespace

KStatus KStringResource::registerString(const KStringResourceId& id) {
    if (KFailureInjection::shouldFail("KStringResource::registerString")) {
        return KFailureInjection::failure("KStringResource::registerString");
    }
    return setString(id, id.defaultString());
}

KStatus KStringResource::setString(const KStringResourceId& id, const KString& text) {
    if (id.key().isEmpty()) {
        return KStatus(KStatus::kInvalidParameter, "string resource key is empty");
    }
    Table& t = table();
    std::unique_lock lock(t.mutex);
    t.strings.insert_or_assign({id.pluginId().str(), id.key().str()}, text);
    return KStatus();
}

KString KStringResource::getString(const KStringResourceId& id, KStatus& status) {
    Table& t = table();
    std::shared_lock lock(t.mutex);
    const auto found = t.strings.find(std::pair(id.pluginId().str(), id.key().str()));
    if (found == t.strings.end()) {
        KString text;
        text.format("no string resource ^1s for plug-in \"^2s\"", id.key(), id.pluginId());
        status = KStatus(KStatus::kNotFound, text);
        return id.defaultString();
    }
    status = KStatus();
    return found->second;
}

unsigned int KStringResource::unregisterAll(const KString& pluginId) {
    Table& t = table();
    std::unique_lock lock(t.mutex);
    const auto first = t.strings.lower_bound(std::pair(pluginId.str(), std::string()));
    auto last = first;
    unsigned int removed = 0;
    while (last != t.strings.end() && last->first.first == pluginId.str()) {
        ++last;
        ++removed;
    }
    t.strings.erase(first, last);
    return removed;
}
