#include <algorithm>
#include <limits>
#include <zelvane/geometry/ElementCount.h>
#include <zelvane/geometry/Names.h>

namespace Zelvane::Geometry {

Orsel::String elementCountName(std::string_view component) {
    return Orsel::String(component) + sElementCountSuffix;
}

bool setElementCount(const Orsel::String& component, std::uint64_t count, Object& geometry) {
    if (component.empty()) {
        return false;
    }
    constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    return geometry.set(elementCountName(component),
                        static_cast<std::int64_t>(std::min(count, largest)));
}

std::uint64_t getElementCount(const Object& geometry, std::string_view component) {
    const auto* count = geometry.get<std::int64_t>(elementCountName(component));
    return count && *count > 0 ? static_cast<std::uint64_t>(*count) : 0;
}

} // namespace Zelvane::Geometry
