#include "plugin/PortAttributes.h"

#include <kova/KDGModifier.h>
#include <kova/KDagModifier.h>
#include <kova/KFnCompoundAttribute.h>
#include <kova/KFnDagNode.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnGenericAttribute.h>
#include <kova/KFnMatrixAttribute.h>
#include <kova/KFnNumericAttribute.h>
#include <kova/KFnTypedAttribute.h>
#include <kova/KFnUnitAttribute.h>
#include <kova/KPlug.h>
#include <kova/KSelectionList.h>
#include <zeldata/ZelData.h>

namespace ZelvanePlugin {
namespace {

using ZelvaneGraph::Executor::PortDirection;

KString hostName(const Orsel::String& name) {
    return KString(name.c_str());
}

bool addToNode(const KObject& node, const KObject& attribute) {
    if (attribute.isNull()) {
        return false;
    }
    KDGModifier modifier;
    return modifier.addAttribute(node, attribute) && modifier.doIt();
}

bool connect(const KPlug& source, const KPlug& destination) {
    if (source.isNull() || destination.isNull()) {
        return false;
    }
    KDGModifier modifier;
    return modifier.connect(source, destination) && modifier.doIt();
}

KPlug plugOf(const KObject& node, const KString& attributeName) {
    KFnDependencyNode fnNode(node);
    return fnNode.findPlug(attributeName, false);
}

// The first node found by path that can show geometry.
KObject firstDisplayNode(const std::vector<KObject>& inputsByPath) {
    for (const KObject& candidate : inputsByPath) {
        if (KFnDependencyNode(candidate).hasAttribute("inputSurface")) {
            return candidate;
        }
    }
    return KObject::kNullObj;
}

// Creates a "zelShape" under a transform named like the shape without "Shape", and puts it
// in the default shading group so that it is drawn. Returns the shape, null on failure.
KObject createDisplayShape() {
    KDagModifier dagModifier;
    const KObject transform = dagModifier.createNode("zelShape");
    if (transform.isNull() || !dagModifier.doIt()) {
        return KObject::kNullObj;
    }
    KFnDagNode fnTransform(transform);
    if (fnTransform.childCount() == 0) {
        return KObject::kNullObj;
    }
    const KObject shape = fnTransform.child(0);
    KString transformName = KFnDependencyNode(shape).name();
    transformName.substitute("Shape", "");
    if (!dagModifier.renameNode(transform, transformName) || !dagModifier.doIt()) {
        return KObject::kNullObj;
    }
    return shape;
}

bool assignDefaultShadingGroup(const KObject& shape) {
    KString command;
    command.format("sets -edit -forceElement \"initialShadingGroup\" \"^1s\"",
                   KFnDagNode(shape).fullPathName());
    KDGModifier modifier;
    return modifier.commandToExecute(command) && modifier.doIt();
}

bool showOutput(const KPlug& output, const std::vector<KObject>& inputsByPath) {
    if (const KObject existing = firstDisplayNode(inputsByPath); !existing.isNull()) {
        return connect(output, plugOf(existing, "inputSurface"));
    }
    const KObject shape = createDisplayShape();
    if (shape.isNull() || !connect(output, plugOf(shape, "inputSurface"))) {
        return false;
    }
    return assignDefaultShadingGroup(shape);
}

} // namespace

bool addObjectPortAttribute(const KObject& node, const Orsel::String& portName,
                            PortDirection direction, const Orsel::Type& type,
                            const ZelvaneBoardInputByPath::Options& options,
                            const std::vector<KObject>& inputsByPath) {
    const KString name = hostName(portName);
    KFnDependencyNode fnNode(node);
    if (!fnNode.hasAttribute(name)) {
        const bool isOutput = direction == PortDirection::Output;
        KFnGenericAttribute fnGeneric;
        const KObject attribute = fnGeneric.create(name, name);
        if (attribute.isNull()) {
            return false;
        }
        fnGeneric.setReadable(isOutput);
        fnGeneric.setWritable(!isOutput);
        fnGeneric.setKeyable(!isOutput);
        if (type.isArray()) {
            fnGeneric.setArray(true);
        }
        // An attribute that refuses one of the kinds would drop those sources unseen.
        for (const KFnData::Type kind :
             {KFnData::kMesh, KFnData::kNurbsCurve, KFnData::kDoubleArray, KFnData::kVectorArray}) {
            if (!fnGeneric.addDataAccept(kind)) {
                return false;
            }
        }
        if (!fnGeneric.addDataAccept(ZelData::id) || !addToNode(node, attribute)) {
            return false;
        }
    }
    const KObject attribute = fnNode.attribute(name);
    if (attribute.isNull()) {
        return false;
    }
    if (KFnAttribute(attribute).isWritable() || options.noShape) {
        return true;
    }
    return showOutput(fnNode.findPlug(name, false), inputsByPath);
}

bool addTransformsPortAttribute(const KObject& node, const Orsel::String& portName) {
    const KString name = hostName(portName);
    KFnMatrixAttribute fnMatrix;
    const KObject totalTransform =
        fnMatrix.create("totalTransform", "totalTransform", KFnMatrixAttribute::kFloat);
    if (totalTransform.isNull()) {
        return false;
    }
    fnMatrix.setDefault(KFloatMatrix());

    KFnCompoundAttribute fnCompound;
    const KObject compound = fnCompound.create(name, name);
    if (compound.isNull() || !fnCompound.addChild(totalTransform)) {
        return false;
    }

    // A DAG node follows its parent transform; anything else keeps the identity.
    KObject parent;
    if (node.hasFn(KFn::kDagNode)) {
        KFnDagNode fnDag(node);
        if (fnDag.parentCount() > 0) {
            parent = fnDag.parent(0);
        }
    }
    if (parent.isNull()) {
        fnCompound.setConnectable(false);
        fnCompound.setHidden(true);
    }
    if (!addToNode(node, compound)) {
        return false;
    }
    if (parent.isNull()) {
        return true;
    }
    const KPlug worldMatrix = plugOf(parent, "worldMatrix").elementByLogicalIndex(0);
    return connect(worldMatrix, plugOf(node, "totalTransform"));
}

bool addSceneInfoPortAttribute(const KObject& node, const Orsel::String& portName) {
    const KString name = hostName(portName);
    KFnCompoundAttribute fnCompound;
    const KObject compound = fnCompound.create(name, name);
    if (compound.isNull()) {
        return false;
    }
    for (const char* suffix : {"_scene", "_scene_directory", "_project_directory"}) {
        KFnTypedAttribute fnTyped;
        const KString childName = name + suffix;
        const KObject child = fnTyped.create(childName, childName, KFnData::kString);
        if (child.isNull() || !fnCompound.addChild(child)) {
            return false;
        }
    }
    KFnNumericAttribute fnNumeric;
    const KString hasProject = name + "_has_project";
    const KObject hasProjectAttribute =
        fnNumeric.create(hasProject, hasProject, KFnNumericData::kBoolean, 0.0);
    if (hasProjectAttribute.isNull() || !fnCompound.addChild(hasProjectAttribute)) {
        return false;
    }
    return addToNode(node, compound);
}

bool addTimePortAttribute(const KObject& node, const Orsel::String& portName,
                          PortDirection direction) {
    const KString name = hostName(portName);
    KFnDependencyNode fnNode(node);
    if (!fnNode.hasAttribute(name)) {
        KFnUnitAttribute fnUnit;
        const KObject attribute = fnUnit.create(name, name, KFnUnitAttribute::kTime, 0.0);
        if (attribute.isNull() || !addToNode(node, attribute)) {
            return false;
        }
    }
    // An input follows the scene's time; an output is written back by the evaluation.
    if (direction == PortDirection::Output) {
        return true;
    }
    KSelectionList timeNodes;
    KObject timeNode;
    if (!timeNodes.add("time1") || !timeNodes.getDependNode(0, timeNode)) {
        return false;
    }
    return connect(plugOf(timeNode, "outTime"), fnNode.findPlug(name, false));
}

} // namespace ZelvanePlugin
