#pragma once

#include <kova/KExport.h>
#include <kova/KObject.h>
#include <kova/KStatus.h>
#include <kova/KString.h>
#include <kova/KTypeId.h>
#include <memory>

class KPlug;
class KDataBlock;

namespace kova::detail {
class Entity;
struct NodeAccess;
} // namespace kova::detail

// Creates a new instance of a node class (a KPxNode) or of a plug-in data class (a KPxData),
// allocated with `new`; the host deletes it.
using KCreatorFunction = void* (*)();
// Creates and adds the static attributes of a node type and their affects relations.
using KInitializeFunction = KStatus (*)();

// Base class of node types. A node type is registered with KFnPlugin::registerNode(name, id,
// creator, initialize, kind): `initialize` runs once, at registration, and declares the
// type's attributes with addAttribute() and their relations with attributeAffects(); the
// creator then makes one instance per node of the type.
//
// The host calls compute(plug, block) when a dirty output of the node is read. Return
// success after writing the value through `block`, kUnknownParameter for plugs the node
// does not compute (the stored value is kept), or a failure (the plug stays dirty and the
// read fails). Exceptions thrown out of compute, the creator, initialize or
// postConstructor are caught by the host and reported; the node or plug is left as if the
// call had failed.
class KOVA_API KPxNode {
public:
    // What kind of node a type is. DAG kinds (locators, surface shapes, transforms) get the
    // host's DAG attributes ("parentMatrix", "worldMatrix", "worldInverseMatrix", and for
    // transforms "translate", "rotate", "scale", "matrix") in front of their own.
    enum Type { kDependNode, kLocatorNode, kSurfaceShape, kTransformNode, kObjectSet, kLast };

    KPxNode() = default;
    virtual ~KPxNode();
    KPxNode(const KPxNode&) = delete;
    KPxNode& operator=(const KPxNode&) = delete;

    virtual KStatus compute(const KPlug& plug, KDataBlock& block);
    // Runs once the node is part of the scene (it has its name and attributes).
    virtual void postConstructor();

    // The node this instance belongs to.
    KObject thisKObject() const;
    KString name() const;
    KString typeName() const;
    KTypeId typeId() const;

    // Only inside the type's initialize function: adds a static attribute (with its
    // children), or declares that a change of `whenChanges` dirties `isAffected`.
    static KStatus addAttribute(const KObject& attribute);
    static KStatus attributeAffects(const KObject& whenChanges, const KObject& isAffected);
    // Only inside initialize: for nodes that add their attributes at run time. Every writable
    // attribute of a node of the type (static or dynamic) then affects every dynamic attribute
    // that can't be written, and the node computes those.
    static KStatus computeDynamicOutputs();

private:
    friend struct kova::detail::NodeAccess;
    std::weak_ptr<kova::detail::Entity> node_;
};
