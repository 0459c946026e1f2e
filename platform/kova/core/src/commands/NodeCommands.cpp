#include "commands/BuiltInCommands.h"
#include "detail/CommandArgs.h"
#include "detail/Dag.h"
#include "detail/Node.h"
#include "detail/Scene.h"
#include "detail/Wildcard.h"

namespace kova::commands {

namespace {

KStatus noNode(const std::string& name) {
    return KStatus(KStatus::kInvalidParameter, KString("no node '" + name + "'"));
}

} // namespace

KStatus rename(const Args& args, KStringArray& result) {
    detail::CommandArgs parsed;
    if (KStatus status = parsed.parse(args, {}); !status) {
        return status;
    }
    if (parsed.positional().size() != 2) {
        return KStatus(KStatus::kInvalidParameter, "expected the old and the new name");
    }
    detail::Node* node = detail::findNode(parsed.positional()[0]);
    if (node == nullptr) {
        return noNode(parsed.positional()[0]);
    }
    KStatus status = detail::Scene::current().rename(*node, parsed.positional()[1]);
    return status ? result.append(KString(node->name)) : status;
}

KStatus deleteNodes(const Args& args, KStringArray&) {
    detail::CommandArgs parsed;
    if (KStatus status = parsed.parse(args, {}); !status) {
        return status;
    }
    if (parsed.positional().empty()) {
        return KStatus(KStatus::kInvalidParameter, "expected the nodes to delete");
    }
    std::vector<std::shared_ptr<detail::Node>> nodes;
    for (const std::string& name : parsed.positional()) {
        detail::Node* node = detail::findNode(name);
        if (node == nullptr) {
            return noNode(name);
        }
        nodes.push_back(node->shared());
    }
    for (const auto& node : nodes) {
        if (node->inScene) { // may have gone with a parent deleted before it
            if (KStatus status = detail::Scene::current().remove(*node); !status) {
                return status;
            }
        }
    }
    return KStatus();
}

KStatus ls(const Args& args, KStringArray& result) {
    detail::CommandArgs parsed;
    if (KStatus status = parsed.parse(args, {{"type", "typ", 1}}); !status) {
        return status;
    }
    const std::string type = parsed.value("type");
    for (const auto& node : detail::Scene::current().nodes()) {
        bool matches = parsed.positional().empty();
        for (const std::string& pattern : parsed.positional()) {
            matches = matches || detail::wildcardMatch(pattern, node->name);
        }
        if (matches && (type.empty() || node->type->name == type)) {
            if (KStatus status = result.append(KString(node->name)); !status) {
                return status;
            }
        }
    }
    return KStatus();
}

} // namespace kova::commands
