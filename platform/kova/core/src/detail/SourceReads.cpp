#include "detail/SourceReads.h"

#include "detail/Node.h"

#include <algorithm>
#include <atomic>
#include <kova/KPlug.h>
#include <kova/KSourceReadProbe.h>
#include <map>
#include <mutex>
#include <utility>

namespace kova::detail {
namespace {

struct Counts {
    int inProgress = 0;
    int highest = 0;
};

using Key = std::pair<const void*, const void*>;

std::atomic<bool> gEnabled{false};
std::mutex gMutex;
std::map<Key, Counts> gCounts;

} // namespace

SourceRead::SourceRead(const Node& node, const Attribute& attribute) {
    if (!gEnabled.load(std::memory_order_relaxed)) {
        return;
    }
    key_ = &node;
    attribute_ = &attribute;
    std::lock_guard lock(gMutex);
    Counts& counts = gCounts[{key_, attribute_}];
    counts.highest = std::max(counts.highest, ++counts.inProgress);
}

SourceRead::~SourceRead() {
    if (key_ == nullptr) {
        return;
    }
    std::lock_guard lock(gMutex);
    --gCounts[{key_, attribute_}].inProgress;
}

} // namespace kova::detail

void KSourceReadProbe::enable() {
    std::lock_guard lock(kova::detail::gMutex);
    kova::detail::gCounts.clear();
    kova::detail::gEnabled = true;
}

void KSourceReadProbe::disable() {
    kova::detail::gEnabled = false;
}

int KSourceReadProbe::maxConcurrentReads(const KPlug& source) {
    if (source.isNull()) {
        return 0;
    }
    std::lock_guard lock(kova::detail::gMutex);
    const kova::detail::Key key{source.nodeEntity().get(), source.path().back().attribute.get()};
    const auto found = kova::detail::gCounts.find(key);
    return found == kova::detail::gCounts.end() ? 0 : found->second.highest;
}
