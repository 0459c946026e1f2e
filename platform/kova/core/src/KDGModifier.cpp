#include "detail/Connect.h"
#include "detail/Node.h"
#include "detail/NodeCreation.h"
#include "detail/Report.h"
#include "detail/Scene.h"
#include "detail/TypeRegistry.h"

#include <kova/KDGModifier.h>
#include <kova/KFailureInjection.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KGlobal.h>
#include <kova/KMessageSink.h>

using kova::detail::Node;
using kova::detail::report;

namespace {

KStatus noNode() {
    return KStatus(KStatus::kInvalidParameter, "not a node");
}

} // namespace

KDGModifier::~KDGModifier() = default;

void KDGModifier::queue(std::string what, std::function<KStatus()> run) {
    operations_.push_back({std::move(what), std::move(run)});
}

KObject KDGModifier::createNode(const KString& typeName, KStatus* status) {
    if (KFailureInjection::shouldFail("KDGModifier::createNode")) {
        report(status, KFailureInjection::failure("KDGModifier::createNode"));
        return KObject();
    }
    KStatus result;
    auto type = kova::detail::findNodeType(typeName.view(), result);
    report(status, result);
    if (!type) {
        return KObject();
    }
    auto node = kova::detail::Scene::instantiate(type);
    queue("create a node of type '" + type->name + "'",
          [node] { return kova::detail::Scene::current().insert(node, ""); });
    return kova::detail::objectOf(*node);
}

KObject KDGModifier::createNode(const KTypeId& typeId, KStatus* status) {
    auto type = kova::detail::TypeRegistry::instance().findNode(typeId);
    if (!type) {
        report(status, KStatus(KStatus::kInvalidParameter, "no node type has that id"));
        return KObject();
    }
    return createNode(KString(type->name), status);
}

KStatus KDGModifier::deleteNode(const KObject& node) {
    if (KFailureInjection::shouldFail("KDGModifier::deleteNode")) {
        return KFailureInjection::failure("KDGModifier::deleteNode");
    }
    auto n = kova::detail::sharedNodeOf(node);
    if (!n) {
        return noNode();
    }
    queue("delete a node", [n] { return kova::detail::Scene::current().remove(*n); });
    return KStatus();
}

KStatus KDGModifier::renameNode(const KObject& node, const KString& name) {
    if (KFailureInjection::shouldFail("KDGModifier::renameNode")) {
        return KFailureInjection::failure("KDGModifier::renameNode");
    }
    auto n = kova::detail::sharedNodeOf(node);
    if (!n) {
        return noNode();
    }
    queue("rename a node to '" + name.str() + "'",
          [n, name] { return kova::detail::Scene::current().rename(*n, name.view()); });
    return KStatus();
}

KStatus KDGModifier::connect(const KPlug& source, const KPlug& destination) {
    if (KFailureInjection::shouldFail("KDGModifier::connect")) {
        return KFailureInjection::failure("KDGModifier::connect");
    }
    if (source.isNull() || destination.isNull()) {
        return KStatus(KStatus::kInvalidParameter, "cannot connect a null plug");
    }
    queue("connect",
          [source, destination] { return kova::detail::connectPlugs(source, destination, false); });
    return KStatus();
}

KStatus KDGModifier::connect(const KObject& sourceNode, const KObject& sourceAttribute,
                             const KObject& destinationNode, const KObject& destinationAttribute) {
    return connect(KPlug(sourceNode, sourceAttribute),
                   KPlug(destinationNode, destinationAttribute));
}

KStatus KDGModifier::disconnect(const KPlug& source, const KPlug& destination) {
    if (KFailureInjection::shouldFail("KDGModifier::disconnect")) {
        return KFailureInjection::failure("KDGModifier::disconnect");
    }
    if (source.isNull() || destination.isNull()) {
        return KStatus(KStatus::kInvalidParameter, "cannot disconnect a null plug");
    }
    queue("disconnect",
          [source, destination] { return kova::detail::disconnectPlugs(source, destination); });
    return KStatus();
}

KStatus KDGModifier::disconnect(const KObject& sourceNode, const KObject& sourceAttribute,
                                const KObject& destinationNode,
                                const KObject& destinationAttribute) {
    return disconnect(KPlug(sourceNode, sourceAttribute),
                      KPlug(destinationNode, destinationAttribute));
}

KStatus KDGModifier::addAttribute(const KObject& node, const KObject& attribute) {
    if (KFailureInjection::shouldFail("KDGModifier::addAttribute")) {
        return KFailureInjection::failure("KDGModifier::addAttribute");
    }
    if (kova::detail::nodeOf(node) == nullptr || !attribute.hasFn(KFn::kAttribute)) {
        return KStatus(KStatus::kInvalidParameter, "needs a node and an attribute");
    }
    queue("add an attribute",
          [node, attribute] { return KFnDependencyNode(node).addAttribute(attribute); });
    return KStatus();
}

KStatus KDGModifier::removeAttribute(const KObject& node, const KObject& attribute) {
    if (KFailureInjection::shouldFail("KDGModifier::removeAttribute")) {
        return KFailureInjection::failure("KDGModifier::removeAttribute");
    }
    if (kova::detail::nodeOf(node) == nullptr || !attribute.hasFn(KFn::kAttribute)) {
        return KStatus(KStatus::kInvalidParameter, "needs a node and an attribute");
    }
    queue("remove an attribute",
          [node, attribute] { return KFnDependencyNode(node).removeAttribute(attribute); });
    return KStatus();
}

KStatus KDGModifier::queueSet(const KPlug& plug, const char* operation,
                              std::function<KStatus(KPlug&)> set) {
    if (KFailureInjection::shouldFail(operation)) {
        return KFailureInjection::failure(operation);
    }
    if (plug.isNull()) {
        return KStatus(KStatus::kInvalidParameter, "null plug");
    }
    queue("set the value of '" + plug.name().str() + "'", [plug, set] {
        KPlug target = plug;
        return set(target);
    });
    return KStatus();
}

KStatus KDGModifier::newPlugValue(const KPlug& plug, const KObject& data) {
    return queueSet(plug, "KDGModifier::newPlugValue",
                    [data](KPlug& p) { return p.setKObject(data); });
}

KStatus KDGModifier::newPlugValueDouble(const KPlug& plug, double value) {
    return queueSet(plug, "KDGModifier::newPlugValueDouble",
                    [value](KPlug& p) { return p.setDouble(value); });
}

KStatus KDGModifier::newPlugValueInt(const KPlug& plug, int value) {
    return queueSet(plug, "KDGModifier::newPlugValueInt",
                    [value](KPlug& p) { return p.setInt(value); });
}

KStatus KDGModifier::newPlugValueBool(const KPlug& plug, bool value) {
    return queueSet(plug, "KDGModifier::newPlugValueBool",
                    [value](KPlug& p) { return p.setBool(value); });
}

KStatus KDGModifier::newPlugValueString(const KPlug& plug, const KString& value) {
    return queueSet(plug, "KDGModifier::newPlugValueString",
                    [value](KPlug& p) { return p.setString(value); });
}

KStatus KDGModifier::commandToExecute(const KString& command) {
    if (KFailureInjection::shouldFail("KDGModifier::commandToExecute")) {
        return KFailureInjection::failure("KDGModifier::commandToExecute");
    }
    queue("run '" + command.str() + "'", [command] { return KGlobal::executeCommand(command); });
    return KStatus();
}

KStatus KDGModifier::doIt() {
    if (KFailureInjection::shouldFail("KDGModifier::doIt")) {
        return KFailureInjection::failure("KDGModifier::doIt");
    }
    while (done_ < operations_.size()) {
        const Operation& operation = operations_[done_];
        KStatus status = operation.run();
        if (!status) {
            return KStatus(status.statusCode(),
                           KString("KDGModifier::doIt: cannot " + operation.what + ": ") +
                               status.errorString());
        }
        ++done_;
    }
    return KStatus();
}

unsigned int KDGModifier::pendingCount() const {
    return static_cast<unsigned int>(operations_.size() - done_);
}
