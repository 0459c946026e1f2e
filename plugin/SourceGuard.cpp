#include "plugin/SourceGuard.h"

#include <kova/KIntArray.h>
#include <kova/KObjectHandle.h>
#include <kova/KPlug.h>
#include <mutex>

namespace ZelvanePlugin {
namespace {

struct BusySources {
    std::mutex mutex;
    SourceGuard::Keys keys;
};

BusySources gBusySources;

// The key of the plug feeding `destination`: its node's and its attribute's hash codes.
void addSourceKey(const KPlug& destination, SourceGuard::Keys& keys) {
    const KPlug source = destination.source();
    if (source.isNull()) {
        return;
    }
    const std::uint64_t node = KObjectHandle(source.node()).objectHashCode();
    const std::uint64_t attribute = KObjectHandle(source.attribute()).objectHashCode();
    keys.insert((node << 32) | attribute);
}

} // namespace

SourceGuard::Keys SourceGuard::sourcesOf(const KPlug& plug) {
    Keys keys(8);
    keys.max_load_factor(1.0f);
    if (!plug.isArray()) {
        addSourceKey(plug, keys);
        return keys;
    }
    KIntArray indices;
    plug.getExistingArrayAttributeIndices(indices);
    for (unsigned int i = 0; i < indices.length(); ++i) {
        addSourceKey(plug.elementByLogicalIndex(static_cast<unsigned int>(indices[i])), keys);
    }
    return keys;
}

SourceGuard::SourceGuard(Keys keys) : keys_(std::move(keys)) {
    for (;;) {
        std::lock_guard lock(gBusySources.mutex);
        bool busy = false;
        for (std::uint64_t key : keys_) {
            if (gBusySources.keys.count(key) != 0) {
                busy = true;
                break;
            }
        }
        if (!busy) {
            gBusySources.keys.insert(keys_.begin(), keys_.end());
            return;
        }
    }
}

SourceGuard::~SourceGuard() {
    std::lock_guard lock(gBusySources.mutex);
    for (std::uint64_t key : keys_) {
        gBusySources.keys.erase(key);
    }
}

} // namespace ZelvanePlugin
