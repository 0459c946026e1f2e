#pragma once

#include <kova/KDagPath.h>
#include <kova/KExport.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KSelectionList.h>

// Function set of sets: nodes whose members are DAG paths, each whole or with components.
// Membership is kept by the host, not through connections.
//
// Renderable sets (restriction kRenderableOnly: shading groups) are exclusive: adding a
// member to one removes it from every other renderable set. Adding a whole path removes the
// path and its components from the others; adding components removes those elements from the
// others, and takes the path out of another set that held it whole.
class KOVA_API KFnSet : public KFnDependencyNode {
public:
    enum Restriction {
        kNone = 0,
        kVerticesOnly = 1,
        kEdgesOnly = 2,
        kFacetsOnly = 3,
        kEditPointsOnly = 4,
        kRenderableOnly = 5,
    };

    KFnSet() = default;
    explicit KFnSet(const KObject& set, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kSet; }

    // Creates an "objectSet" node with `restriction` holding the DAG items of `members`, and
    // attaches to it.
    KObject create(const KSelectionList& members, Restriction restriction = kNone,
                   KStatus* status = nullptr);

    Restriction restriction(KStatus* status = nullptr) const;
    KStatus addMember(const KDagPath& path, const KObject& component = KObject::kNullObj);
    KStatus addMembers(const KSelectionList& members);
    // Removes the path (whole: with all its components) or some of its components. Components
    // cannot be taken out of a member held whole.
    KStatus removeMember(const KDagPath& path, const KObject& component = KObject::kNullObj);
    KStatus clear();
    // The members as DAG paths with their components. Sets hold no other sets, so flattening
    // changes nothing.
    KStatus getMembers(KSelectionList& members, bool flatten) const;
    // Whether the path is a member as a whole, or (with a component) all of its elements are.
    bool isMember(const KDagPath& path, const KObject& component = KObject::kNullObj,
                  KStatus* status = nullptr) const;
};
