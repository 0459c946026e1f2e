#include <array>
#include <zelvane/geometry/GeoProperty.h>

namespace Zelvane::Geometry {

namespace {

bool isComponent(std::string_view name) {
    const std::array<const Orsel::String*, 4> components{&sPointComp, &sFaceComp, &sFaceVertexComp,
                                                         &sStrandComp};
    for (const Orsel::String* component : components) {
        if (*component == name) {
            return true;
        }
    }
    return false;
}

} // namespace

Orsel::Ptr<Object> getDataGeoProperty(const Object& geometry, std::string_view name) {
    Orsel::Ptr<Object> property = geometry.getObject(name);
    if (property && property->get<Orsel::String>(sTarget) && property->has(sData)) {
        return property;
    }
    return {};
}

Orsel::String getGeoPropTargetName(const Object& geometry, std::string_view name) {
    const Orsel::Ptr<Object> property = geometry.getObject(name);
    const Orsel::String* target = property ? property->get<Orsel::String>(sTarget) : nullptr;
    return target ? *target : Orsel::String();
}

Orsel::String getTargetComponent(const Object& geometry, std::string_view name) {
    // Each hop follows a distinct property, so more hops than properties means a circle.
    Orsel::String target = getGeoPropTargetName(geometry, name);
    for (std::size_t hops = 0; hops <= geometry.propertyCount(); ++hops) {
        if (target.empty() || isComponent(target) || !geometry.getObject(target)) {
            return target;
        }
        target = getGeoPropTargetName(geometry, target);
    }
    return {};
}

} // namespace Zelvane::Geometry
