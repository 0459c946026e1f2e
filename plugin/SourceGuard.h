#pragma once

#include <cstdint>
#include <unordered_set>

class KPlug;

namespace ZelvanePlugin {

// Keeps two evaluations from pulling one host source (node and attribute) through the host's
// data block at the same moment. A process-wide mutex guards the set of sources being read;
// a reader whose sources are partly busy retries at once, without sleeping or yielding, and
// holds its sources only while it reads them.
class SourceGuard {
public:
    using Keys = std::unordered_set<std::uint64_t>;

    // The sources feeding `plug`: its own source, or for an array plug the source of each
    // element by logical index. Unconnected plugs have none.
    static Keys sourcesOf(const KPlug& plug);

    // Waits until none of `keys` is busy, then marks them busy until destruction.
    explicit SourceGuard(Keys keys);
    ~SourceGuard();
    SourceGuard(const SourceGuard&) = delete;
    SourceGuard& operator=(const SourceGuard&) = delete;

private:
    Keys keys_;
};

} // namespace ZelvanePlugin
