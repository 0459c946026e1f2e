#include "detail/Dag.h"
#include "detail/Node.h"
#include "detail/NodeCreation.h"
#include "detail/Report.h"
#include "detail/Scene.h"
#include "detail/TypeRegistry.h"

#include <cctype>
#include <kova/KDagModifier.h>
#include <kova/KFailureInjection.h>

using kova::detail::Node;
using kova::detail::report;
using kova::detail::Scene;

namespace {

// "zelShape1" -> "zelShapeShape1": "Shape" goes before the trailing number.
std::string shapeNameFor(const std::string& transformName) {
    std::size_t digits = transformName.size();
    while (digits > 0 && std::isdigit(static_cast<unsigned char>(transformName[digits - 1]))) {
        --digits;
    }
    return transformName.substr(0, digits) + "Shape" + transformName.substr(digits);
}

} // namespace

KObject KDagModifier::createNode(const KString& typeName, const KObject& parent, KStatus* status) {
    if (KFailureInjection::shouldFail("KDagModifier::createNode")) {
        report(status, KFailureInjection::failure("KDagModifier::createNode"));
        return KObject();
    }
    KStatus result;
    auto type = kova::detail::findNodeType(typeName.view(), result);
    auto parentNode = kova::detail::sharedNodeOf(parent);
    if (type && !type->isDag()) {
        result =
            KStatus(KStatus::kInvalidParameter, KString("'" + type->name + "' is not a DAG type"));
    } else if (type && !parent.isNull() && (!parentNode || !parentNode->type->isTransform())) {
        result = KStatus(KStatus::kInvalidParameter, "the parent must be a transform");
    }
    if (!result) {
        report(status, result);
        return KObject();
    }
    auto node = Scene::instantiate(type);
    if (!parentNode && type->isShape()) {
        auto transformType = kova::detail::TypeRegistry::instance().findNode("transform");
        auto transform = Scene::instantiate(transformType);
        queue("create a '" + type->name + "' shape and its transform", [transform, node, type] {
            Scene& scene = Scene::current();
            KStatus s = scene.insert(transform, type->name + "1");
            if (s) {
                s = scene.insert(node, shapeNameFor(transform->name));
                if (s) {
                    s = kova::detail::reparent(*node, transform.get());
                }
                if (!s) {
                    scene.remove(*transform);
                }
            }
            return s;
        });
        report(status, KStatus());
        return kova::detail::objectOf(*transform);
    }
    queue("create a node of type '" + type->name + "'", [node, parentNode] {
        KStatus s = Scene::current().insert(node, "");
        if (s && parentNode) {
            s = kova::detail::reparent(*node, parentNode.get());
            if (!s) {
                Scene::current().remove(*node);
            }
        }
        return s;
    });
    report(status, KStatus());
    return kova::detail::objectOf(*node);
}

KStatus KDagModifier::reparentNode(const KObject& node, const KObject& newParent) {
    if (KFailureInjection::shouldFail("KDagModifier::reparentNode")) {
        return KFailureInjection::failure("KDagModifier::reparentNode");
    }
    auto child = kova::detail::sharedNodeOf(node);
    auto parent = kova::detail::sharedNodeOf(newParent);
    if (!child || (!newParent.isNull() && !parent)) {
        return KStatus(KStatus::kInvalidParameter, "needs a node and a parent node or none");
    }
    queue("reparent '" + child->name + "'",
          [child, parent] { return kova::detail::reparent(*child, parent.get()); });
    return KStatus();
}
