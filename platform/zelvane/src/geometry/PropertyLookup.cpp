#include <string>
#include <zelvane/geometry/GeoProperty.h>
#include <zelvane/geometry/PropertyLookup.h>
#include <zelvane/utils/ChannelParser.h>

namespace Zelvane::Geometry {

Orsel::Array<Orsel::String> getGeoPropsByName(const Object& geometry,
                                              const Orsel::String& pattern) {
    Orsel::Array<Orsel::String> names;
    ZEL::Utils::ChannelParser parser;
    if (!parser.parses(pattern)) {
        return names;
    }
    geometry.forEachProperty([&](const Orsel::String& name, const PropertyValue&) {
        if (parser.accepts(name) && getDataGeoProperty(geometry, name)) {
            names.push_back(name);
        }
    });
    return names;
}

Orsel::String getUniqueGeoPropName(const Orsel::String& name, const Object& geometry) {
    if (!geometry.has(name)) {
        return name;
    }
    // Among n + 1 candidates at most n are taken, so the loop ends.
    for (std::size_t number = 1;; ++number) {
        Orsel::String candidate = name + std::to_string(number).c_str();
        if (!geometry.has(candidate)) {
            return candidate;
        }
    }
}

} // namespace Zelvane::Geometry
