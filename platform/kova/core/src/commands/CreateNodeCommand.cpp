#include "commands/BuiltInCommands.h"
#include "detail/CommandArgs.h"
#include "detail/Dag.h"
#include "detail/Node.h"
#include "detail/NodeCreation.h"

#include <kova/KDagModifier.h>
#include <kova/KFnDagNode.h>

namespace kova::commands {

KStatus createNode(const Args& args, KStringArray& result) {
    detail::CommandArgs parsed;
    if (KStatus status = parsed.parse(args, {{"name", "n", 1}, {"parent", "p", 1}}); !status) {
        return status;
    }
    if (parsed.positional().size() != 1) {
        return KStatus(KStatus::kInvalidParameter, "expected one node type");
    }
    const std::string& typeName = parsed.positional().front();
    KStatus status;
    const auto type = detail::findNodeType(typeName, status);
    if (!type) {
        return status;
    }
    detail::Node* parent = nullptr;
    if (parsed.has("parent")) {
        parent = detail::findNode(parsed.value("parent"));
        if (parent == nullptr) {
            return KStatus(KStatus::kInvalidParameter,
                           KString("no parent node '" + parsed.value("parent") + "'"));
        }
    }
    KObject created;
    if (type->isShape() && parent == nullptr) {
        KDagModifier modifier;
        const KObject transform = modifier.createNode(KString(typeName), KObject(), &status);
        if (status) {
            status = modifier.doIt();
        }
        if (!status) {
            return status;
        }
        created = KFnDagNode(transform).child(0);
        if (parsed.has("name")) {
            KFnDependencyNode(created).setName(KString(parsed.value("name")), &status);
        }
    } else {
        auto node = detail::createNode(typeName, parsed.value("name"), parent, status);
        created = node ? detail::objectOf(*node) : KObject();
    }
    if (status) {
        status = result.append(KFnDependencyNode(created).name());
    }
    return status;
}

} // namespace kova::commands
