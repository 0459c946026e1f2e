#include "detail/NodeTypeFactory.h"

#include "detail/Attribute.h"
#include "detail/AttributeFactory.h"

namespace kova::detail {

namespace {

std::shared_ptr<Attribute> computedMatrix(const char* longName, const char* shortName, bool array) {
    KStatus status;
    auto a = makeMatrixAttribute(longName, shortName, KFnMatrixAttribute::kDouble, status);
    a->writable = false;
    a->storable = false;
    a->array = array;
    return a;
}

std::shared_ptr<Attribute> vector3(const char* longName, const char* shortName, double value) {
    KStatus status;
    auto a = makeNumericAttribute(longName, shortName, KFnNumericData::k3Double, value, status);
    a->keyable = true;
    return a;
}

bool isDagKind(KPxNode::Type kind) {
    return kind == KPxNode::kLocatorNode || kind == KPxNode::kSurfaceShape ||
           kind == KPxNode::kTransformNode;
}

} // namespace

KFn::Type pluginApiType(KPxNode::Type kind) {
    switch (kind) {
    case KPxNode::kLocatorNode:
        return KFn::kPluginLocatorNode;
    case KPxNode::kSurfaceShape:
        return KFn::kPluginShape;
    case KPxNode::kTransformNode:
        return KFn::kPluginTransformNode;
    case KPxNode::kObjectSet:
        return KFn::kPluginObjectSet;
    default:
        return KFn::kPluginDependNode;
    }
}

std::shared_ptr<NodeType> newNodeType(const std::string& name, const KTypeId& id,
                                      KPxNode::Type kind, KFn::Type apiType) {
    auto type = std::make_shared<NodeType>();
    type->name = name;
    type->id = id;
    type->kind = kind;
    type->apiType = apiType;

    KStatus status;
    type->message = makeMessageAttribute("message", "msg", status);
    type->addAttribute(type->message);
    if (!isDagKind(kind)) {
        return type;
    }
    DagAttributes& dag = type->dag;
    if (kind == KPxNode::kTransformNode) {
        dag.translate = vector3("translate", "t", 0.0);
        dag.rotate = vector3("rotate", "r", 0.0);
        dag.scale = vector3("scale", "s", 1.0);
        dag.matrix = computedMatrix("matrix", "m", false);
    }
    dag.parentMatrix = computedMatrix("parentMatrix", "pm", true);
    dag.worldMatrix = computedMatrix("worldMatrix", "wm", true);
    dag.worldInverseMatrix = computedMatrix("worldInverseMatrix", "wim", true);
    for (const auto* a : {&dag.translate, &dag.rotate, &dag.scale, &dag.matrix, &dag.parentMatrix,
                          &dag.worldMatrix, &dag.worldInverseMatrix}) {
        if (*a) {
            type->addAttribute(*a);
        }
    }
    if (dag.matrix) {
        for (const auto* input : {&dag.translate, &dag.rotate, &dag.scale}) {
            for (const auto* output : {&dag.matrix, &dag.worldMatrix, &dag.worldInverseMatrix}) {
                type->addAffects(**input, **output);
            }
        }
    }
    type->addAffects(*dag.parentMatrix, *dag.worldMatrix);
    type->addAffects(*dag.parentMatrix, *dag.worldInverseMatrix);
    type->addAffects(*dag.worldMatrix, *dag.worldInverseMatrix);
    type->computed[static_cast<std::size_t>(dag.parentMatrix->index)] = 1;
    return type;
}

} // namespace kova::detail
