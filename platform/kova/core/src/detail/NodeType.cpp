#include "detail/NodeType.h"

#include "detail/Attribute.h"

#include <algorithm>

namespace kova::detail {

KStatus NodeType::addAttribute(const std::shared_ptr<Attribute>& attribute) {
    KStatus status = attributes.add(attribute, this);
    if (status) {
        affects.resize(static_cast<std::size_t>(attributes.end()));
        computed.resize(static_cast<std::size_t>(attributes.end()), 0);
    }
    return status;
}

KStatus NodeType::addAffects(const Attribute& when, Attribute& affected) {
    if (when.owner != this || affected.owner != this) {
        return KStatus(KStatus::kInvalidParameter,
                       "attributeAffects needs two attributes of the type being initialized");
    }
    auto& list = affects[static_cast<std::size_t>(when.index)];
    if (std::find(list.begin(), list.end(), affected.index) == list.end()) {
        list.push_back(affected.index);
    }
    std::vector<Attribute*> below;
    affected.collect(below);
    for (Attribute* a : below) {
        computed[static_cast<std::size_t>(a->index)] = 1;
    }
    return KStatus();
}

bool NodeType::isComputed(const Attribute& attribute) const {
    return attribute.owner == this && computed[static_cast<std::size_t>(attribute.index)] != 0;
}

} // namespace kova::detail
