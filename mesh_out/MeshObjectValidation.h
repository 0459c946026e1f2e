#pragma once

#include <atomic>
#include <cstddef>
#include <mutex>
#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <string>
#include <string_view>
#include <tuple>

namespace ZelvanePlugin {

// Where in a graph mesh object a fault was found. Faults are ordered by step, then by the
// channel within the step (UV set or colour set number), then by element, so that the fault
// reported is the same whichever worker found its fault first.
enum class MeshStep {
    positions,
    faceOffsets,
    faceVertices,
    pointNormals,
    faceVertexNormals,
    uvs,
    colors,
    tags,
};

struct MeshFaultPlace {
    MeshStep step;
    std::size_t channel = 0;
    std::size_t element = 0;

    bool operator<(const MeshFaultPlace& other) const {
        return std::tie(step, channel, element) <
               std::tie(other.step, other.channel, other.element);
    }
};

// "<name> holds <size> <elementType> values for <count> <elements>", or, when there is no
// such array, "<name> is missing or not an array of <elementType>".
std::string describeShortArray(std::string_view name, std::string_view elementType,
                               const std::size_t* size, std::size_t count,
                               std::string_view elements);

// The faults found in one graph mesh object by the readers and the parallel fills. Any thread
// may record a fault; the first in MeshFaultPlace order is kept. Checking costs one relaxed
// atomic load; recording takes a lock, which only inconsistent objects ever do.
class MeshObjectValidation {
public:
    void fail(const MeshFaultPlace& place, std::string what);
    bool failed() const { return failed_.load(std::memory_order_relaxed); }
    // Shows the kept fault through KGlobal::displayError. Call after every worker that may
    // record one has been waited for.
    void report() const;

private:
    std::atomic<bool> failed_{false};
    mutable std::mutex mutex_;
    MeshFaultPlace place_{MeshStep::tags};
    std::string what_;
};

// True when `array` holds at least `count` entries. Otherwise records at `place` that the
// property `name` (expected: an array of `elementType`) is missing, of another type or too
// short for `count` `elements` ("points", "face-vertices").
template <class T>
bool requireEntries(const Orsel::Ptr<Orsel::Array<T>>& array, std::size_t count,
                    std::string_view name, std::string_view elementType, std::string_view elements,
                    const MeshFaultPlace& place, MeshObjectValidation& validation) {
    const std::size_t size = array ? array->size() : 0;
    if (size >= count) {
        return true;
    }
    validation.fail(
        place, describeShortArray(name, elementType, array ? &size : nullptr, count, elements));
    return false;
}

} // namespace ZelvanePlugin
