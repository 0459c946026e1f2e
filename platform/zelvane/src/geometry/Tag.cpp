#include <zelvane/geometry/Names.h>
#include <zelvane/geometry/Tag.h>

namespace Zelvane::Geometry {

Orsel::String createTagName(std::string_view target, std::string_view tagName) {
    const Orsel::String* prefix = nullptr;
    if (sPointComp == target) {
        prefix = &sComponentTagPrefix_point;
    } else if (sFaceComp == target) {
        prefix = &sComponentTagPrefix_face;
    } else {
        return {};
    }
    return *prefix + Orsel::String(tagName) + sComponentTagSuffix;
}

bool populateTag(const Orsel::String& target, Orsel::Ptr<Orsel::Array<bool>> membership,
                 Object& tag) {
    if (!membership) {
        return false;
    }
    tag.set(sTarget, target);
    tag.set(sData, std::move(membership));
    return true;
}

bool populateTag(const Orsel::String& target, Orsel::Ptr<Orsel::Array<std::uint32_t>> indices,
                 std::uint64_t elementCount, Object& tag) {
    if (!indices) {
        return false;
    }
    auto membership = Orsel::make<Orsel::Array<bool>>(elementCount, false);
    bool allInRange = true;
    for (const std::uint32_t index : *indices) {
        if (index < elementCount) {
            (*membership)[index] = true;
        } else {
            allInRange = false;
        }
    }
    populateTag(target, std::move(membership), tag);
    return allInRange;
}

} // namespace Zelvane::Geometry
