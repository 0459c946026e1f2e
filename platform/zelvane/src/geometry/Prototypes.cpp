#include <zelvane/geometry/Mesh.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/geometry/Strand.h>

namespace Zelvane::Geometry {

namespace {

Orsel::Ptr<Object> makePrototype(const char* name) {
    Orsel::MutablePtr<Object> prototype = createObject();
    prototype->set(sPrototypeName, name);
    return prototype;
}

} // namespace

const Orsel::Ptr<Object>& getMeshPrototype() {
    static const Orsel::Ptr<Object> prototype = makePrototype("mesh");
    return prototype;
}

const Orsel::Ptr<Object>& getStrandPrototype() {
    static const Orsel::Ptr<Object> prototype = makePrototype("strand");
    return prototype;
}

} // namespace Zelvane::Geometry
