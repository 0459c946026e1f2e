#include "detail/ComputeCall.h"

#include "detail/Attribute.h"
#include "detail/DagCompute.h"
#include "detail/Evaluator.h"
#include "detail/Node.h"

#include <kova/KDataBlock.h>
#include <kova/KPlug.h>
#include <kova/detail/Guarded.h>

namespace kova::detail {

namespace {

KStatus callCompute(Node& node, const PlugPath& path) {
    const KPlug plug(node.shared(), path);
    if (path.size() == 1 && isDagAttribute(node, *path.front().attribute)) {
        return computeDagAttribute(node, *path.front().attribute);
    }
    if (!node.user) {
        return KStatus(KStatus::kFailure, "the node has no implementation");
    }
    KDataBlock block(node);
    KStatus status;
    const auto who = [&] {
        KString text;
        text.format("Node '^1s' of type '^2s' computing '^3s'", KString(node.name),
                    KString(node.type->name), plug.name());
        return text;
    };
    if (!runGuarded([&] { status = node.user->compute(plug, block); }, who)) {
        return KStatus(KStatus::kFailure, who() + " threw");
    }
    return status;
}

} // namespace

KStatus computePlug(Node& node, const PlugPath& requested) {
    PlugPath path = requested;
    path.back().index = -1; // an element is computed as its whole array
    KStatus status = callCompute(node, path);
    while (status == KStatus::kUnknownParameter && path.size() > 1) {
        path.pop_back();
        path.back().index = -1;
        status = callCompute(node, path);
    }
    if (status || status == KStatus::kUnknownParameter) {
        markClean(node, *path.back().attribute);
        return KStatus();
    }
    return status;
}

} // namespace kova::detail
