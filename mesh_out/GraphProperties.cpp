#include "mesh_out/GraphProperties.h"

namespace ZelvanePlugin {

Orsel::String hostSetName(const Zelvane::Object& geometry, const Orsel::String& name) {
    const Orsel::Ptr<Zelvane::Object> property = geometry.getObject(name);
    if (property) {
        if (const auto* dccName = property->get<Orsel::String>(Zelvane::Geometry::sDccName)) {
            return *dccName;
        }
    }
    return name;
}

std::string quoted(std::string_view name) {
    return "\"" + std::string(name) + "\"";
}

} // namespace ZelvanePlugin
