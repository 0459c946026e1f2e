#pragma once

#include <cstddef>
#include <cstdint>
#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <orsel/String.h>
#include <string>
#include <string_view>
#include <zelvane/Object.h>
#include <zelvane/geometry/GeoProperty.h>
#include <zelvane/geometry/Names.h>

// Reading graph properties the way the mesh writers need them.
namespace ZelvanePlugin {

// The `sData` of the geometry property `name` when it is an array of `T`; null otherwise.
template <Zelvane::ArrayElement T>
Orsel::Ptr<Orsel::Array<T>> geoPropertyData(const Zelvane::Object& geometry,
                                            std::string_view name) {
    const Orsel::Ptr<Zelvane::Object> property =
        Zelvane::Geometry::getDataGeoProperty(geometry, name);
    return property ? property->getArray<T>(Zelvane::Geometry::sData)
                    : Orsel::Ptr<Orsel::Array<T>>();
}

// The host's name of the set a property stands for: its `sDccName` string when it has one,
// else the property name.
Orsel::String hostSetName(const Zelvane::Object& geometry, const Orsel::String& name);

// `name` in double quotes, for messages.
std::string quoted(std::string_view name);

// The largest element count a host mesh component can hold (host counts are int).
inline constexpr std::uint64_t kMaxHostCount = 0x7fffffff;

} // namespace ZelvanePlugin
