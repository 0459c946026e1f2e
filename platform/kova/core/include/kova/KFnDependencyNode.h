#pragma once

#include <kova/KExport.h>
#include <kova/KFnBase.h>
#include <kova/KObjectArray.h>
#include <kova/KPlug.h>
#include <kova/KPlugArray.h>
#include <kova/KStatus.h>
#include <kova/KString.h>
#include <kova/KTypeId.h>

class KPxNode;

// Function set of dependency nodes: creation, names, attributes, plugs and connections.
class KOVA_API KFnDependencyNode : public KFnBase {
public:
    KFnDependencyNode() = default;
    explicit KFnDependencyNode(const KObject& node, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kDependencyNode; }

    // Creates a node of the registered type `typeName` in the scene, named `name` (made
    // unique; empty for the type's default name), and attaches to it. Returns the null object
    // on failure. For DAG types the node is created at the root.
    KObject create(const KString& typeName, const KString& name = KString(),
                   KStatus* status = nullptr);

    KString name(KStatus* status = nullptr) const;
    // Renames the node; a name another node has is made unique (see the scene's naming).
    // Returns the name it got.
    KString setName(const KString& name, KStatus* status = nullptr);
    KString typeName(KStatus* status = nullptr) const;
    KTypeId typeId(KStatus* status = nullptr) const;
    // The classification string of the node's type.
    KString classification() const;
    // The user object of a node whose type was registered by a plug-in.
    KPxNode* userNode(KStatus* status = nullptr) const;

    bool hasAttribute(const KString& name, KStatus* status = nullptr) const;
    KObject attribute(const KString& name, KStatus* status = nullptr) const;
    // All attributes, compound children included, static before dynamic.
    unsigned int attributeCount(KStatus* status = nullptr) const;
    KObject attribute(unsigned int index, KStatus* status = nullptr) const;
    // Adds a dynamic attribute to this node only.
    KStatus addAttribute(const KObject& attribute);
    KStatus removeAttribute(const KObject& attribute);

    // The plug of the attribute named `attributeName`. `wantNetworkedPlug` is accepted for
    // compatibility: plugs are values here, networked or not.
    KPlug findPlug(const KString& attributeName, bool wantNetworkedPlug,
                   KStatus* status = nullptr) const;
    KPlug findPlug(const KObject& attribute, bool wantNetworkedPlug,
                   KStatus* status = nullptr) const;
    // The node's plugs that take part in connections (as source or destination).
    KStatus getConnections(KPlugArray& plugs) const;
    // The attributes of this node that a change of `attribute` dirties directly (declared
    // with KPxNode::attributeAffects), in declaration order; empty for dynamic attributes.
    KStatus getAffectedAttributes(const KObject& attribute, KObjectArray& affected) const;

    // The classification string registered for the node type `typeName`.
    static KString classification(const KString& typeName);
};
