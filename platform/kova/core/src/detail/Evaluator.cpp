#include "detail/Evaluator.h"

#include "detail/Attribute.h"
#include "detail/ComputeCall.h"
#include "detail/Node.h"
#include "detail/PlugPaths.h"
#include "detail/SourceReads.h"

namespace kova::detail {

std::optional<Source> sourceOf(const Node& node, const PlugPath& path) {
    for (const auto& connection : node.incoming) {
        if (auto mapped = mapPath(connection->destinationPath, connection->sourcePath, path)) {
            return Source{connection->source, std::move(*mapped)};
        }
    }
    return std::nullopt;
}

Value defaultValue(const PlugPath& path) {
    const Attribute& leaf = *path.back().attribute;
    return path.back().index >= 0 ? leaf.makeElementValue() : leaf.makeValue();
}

void markClean(Node& node, Attribute& attribute) {
    std::vector<Attribute*> below;
    attribute.collect(below);
    for (Attribute* a : below) {
        node.setDirty(*a, false);
    }
}

KStatus evaluate(Node& node, const PlugPath& path) {
    std::lock_guard lock(node.mutex);
    if (!node.inScene || path.empty() || !node.owns(*path.front().attribute)) {
        return KStatus(KStatus::kInvalidParameter, "the plug's node is not in the scene");
    }
    Attribute& leaf = *path.back().attribute;
    const bool whole = !hasElementIndex(path);

    if (auto source = sourceOf(node, path)) {
        Value pulled;
        const SourceRead read(*source->node, *source->path.back().attribute);
        KStatus status = readValue(*source->node, source->path, pulled);
        if (!status) {
            return status;
        }
        if (Value* slot = node.slot(path, true)) {
            *slot = std::move(pulled);
        }
        if (whole) {
            markClean(node, leaf);
        }
        return KStatus();
    }

    if (node.isDirty(leaf) && (node.type->isComputed(leaf) || node.computesDynamic(leaf))) {
        if (KStatus status = computePlug(node, path); !status) {
            return status;
        }
    }
    if (leaf.array && path.back().index < 0) {
        PlugPath element = path;
        for (unsigned int index : elementIndices(node, path)) {
            element.back().index = static_cast<int>(index);
            if (KStatus status = evaluate(node, element); !status) {
                return status;
            }
        }
    } else if (leaf.kind == Attribute::Kind::Compound) {
        PlugPath child = path;
        child.push_back({});
        for (const auto& childAttribute : leaf.children) {
            child.back() = {childAttribute, -1};
            if (KStatus status = evaluate(node, child); !status) {
                return status;
            }
        }
    }
    if (whole) {
        markClean(node, leaf);
    }
    return KStatus();
}

KStatus readValue(Node& node, const PlugPath& path, Value& out) {
    std::lock_guard lock(node.mutex);
    if (KStatus status = evaluate(node, path); !status) {
        return status;
    }
    const Value* value = node.slot(path, false);
    out = value ? *value : defaultValue(path);
    bool worldSpace = false;
    for (const PlugStep& step : path) {
        worldSpace = worldSpace || step.attribute->worldSpace;
    }
    if (worldSpace && node.type->isDag()) {
        const PlugPath world{{node.type->dag.worldMatrix, 0}};
        if (KStatus status = evaluate(node, world); !status) {
            return status;
        }
        const Value* matrix = node.slot(world, false);
        out.geometryMatrix = std::make_shared<KMatrix>(matrix ? matrix->matrix : KMatrix());
    }
    return KStatus();
}

} // namespace kova::detail
