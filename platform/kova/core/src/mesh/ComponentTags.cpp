#include <algorithm>
#include <kova/detail/ComponentTags.h>

namespace kova::detail {

int ComponentTags::categoryOf(KFn::Type componentType) {
    switch (componentType) {
    case KFn::kMeshVertComponent:
    case KFn::kCurveCVComponent:
        return 2;
    case KFn::kMeshEdgeComponent:
        return 3;
    case KFn::kMeshPolygonComponent:
        return 4;
    default:
        return 0;
    }
}

const ComponentTags::Tag* ComponentTags::find(const std::string& name) const {
    const auto at =
        std::find_if(tags_.begin(), tags_.end(), [&](const Tag& tag) { return tag.name == name; });
    return at == tags_.end() ? nullptr : &*at;
}

bool ComponentTags::add(const std::string& name) {
    if (name.empty() || find(name) != nullptr) {
        return false;
    }
    tags_.push_back({name, nullptr});
    return true;
}

bool ComponentTags::remove(const std::string& name) {
    const auto at =
        std::find_if(tags_.begin(), tags_.end(), [&](const Tag& tag) { return tag.name == name; });
    if (at == tags_.end()) {
        return false;
    }
    tags_.erase(at);
    return true;
}

bool ComponentTags::setContents(const std::string& name, const ComponentData& contents) {
    auto at =
        std::find_if(tags_.begin(), tags_.end(), [&](const Tag& tag) { return tag.name == name; });
    if (at == tags_.end()) {
        return false;
    }
    at->contents = contents.clone();
    return true;
}

ComponentTags ComponentTags::deepCopy() const {
    ComponentTags copy;
    for (const Tag& tag : tags_) {
        copy.tags_.push_back({tag.name, tag.contents ? tag.contents->clone() : nullptr});
    }
    return copy;
}

} // namespace kova::detail
