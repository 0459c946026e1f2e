#include <limits>
#include <numeric>
#include <zelvane/geometry/Names.h>
#include <zelvane/geometry/RangeProperty.h>

namespace Zelvane::Geometry {

Orsel::String getGeoPropRangeName(std::string_view name) {
    return Orsel::String(name) + sIndexSuffix;
}

void populateRangeGeoProperty(Object& property, Orsel::Ptr<Orsel::Array<std::uint32_t>> indices) {
    if (!indices) {
        indices = Orsel::make<Orsel::Array<std::uint32_t>>();
    }
    property.set(sTarget, sFaceVertexComp);
    property.set(sIndices, std::move(indices));
}

Orsel::Ptr<Orsel::Array<std::uint32_t>> getRangeGeoPropIndices(const Object& geometry,
                                                               std::string_view rangePropName) {
    const Orsel::Ptr<Object> property = geometry.getObject(rangePropName);
    return property ? property->getArray<std::uint32_t>(sIndices)
                    : Orsel::Ptr<Orsel::Array<std::uint32_t>>();
}

Orsel::Ptr<Orsel::Array<std::uint32_t>> populateTrivialRangeIndices(std::uint64_t count) {
    constexpr auto addressable = std::uint64_t(std::numeric_limits<std::uint32_t>::max()) + 1;
    if (count > addressable) {
        return {};
    }
    auto indices = Orsel::make<Orsel::Array<std::uint32_t>>();
    indices->resizeForOverwrite(count);
    std::iota(indices->begin(), indices->end(), 0u);
    return indices;
}

} // namespace Zelvane::Geometry
