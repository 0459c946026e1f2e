#include "detail/PlugPaths.h"

#include "detail/Attribute.h"
#include "detail/Node.h"

namespace kova::detail {

std::optional<PlugPath> mapPath(const PlugPath& from, const PlugPath& to, const PlugPath& path) {
    if (from.empty() || to.empty() || from.size() > path.size()) {
        return std::nullopt;
    }
    const std::size_t last = from.size() - 1;
    for (std::size_t i = 0; i < last; ++i) {
        if (!(from[i] == path[i])) {
            return std::nullopt;
        }
    }
    if (from[last].attribute != path[last].attribute) {
        return std::nullopt;
    }
    PlugPath out = to;
    if (from[last].index != path[last].index) {
        if (from[last].index != -1 || to.back().index != -1) {
            return std::nullopt;
        }
        out.back().index = path[last].index; // an element of a whole-array connection
    }
    for (std::size_t i = from.size(); i < path.size(); ++i) {
        const Attribute& compound = *out.back().attribute;
        const auto position = static_cast<std::size_t>(path[i].attribute->indexInParent);
        if (compound.kind != Attribute::Kind::Compound || position >= compound.children.size()) {
            return std::nullopt;
        }
        out.push_back({compound.children[position], path[i].index});
    }
    return out;
}

bool hasElementIndex(const PlugPath& path) {
    for (const PlugStep& step : path) {
        if (step.index >= 0) {
            return true;
        }
    }
    return false;
}

std::set<unsigned int> elementIndices(Node& node, const PlugPath& path) {
    std::set<unsigned int> indices;
    if (const Value* value = node.slot(path, false)) {
        for (const auto& entry : value->elements) {
            indices.insert(entry.first);
        }
    }
    for (const auto& connection : node.incoming) {
        const PlugPath& dst = connection->destinationPath;
        if (dst.size() < path.size()) {
            continue;
        }
        const std::size_t last = path.size() - 1;
        bool below = dst[last].attribute == path[last].attribute && dst[last].index >= 0;
        for (std::size_t i = 0; below && i < last; ++i) {
            below = dst[i] == path[i];
        }
        if (below) {
            indices.insert(static_cast<unsigned int>(dst[last].index));
        }
    }
    return indices;
}

} // namespace kova::detail
