#pragma once

#include <kova/KDagPath.h>
#include <kova/KExport.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KMatrix.h>

// Function set of DAG nodes: parents, children, paths and transforms.
class KOVA_API KFnDagNode : public KFnDependencyNode {
public:
    KFnDagNode() = default;
    explicit KFnDagNode(const KObject& node, KStatus* status = nullptr);
    // Attaches to the last node of `path` and remembers the path.
    explicit KFnDagNode(const KDagPath& path, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kDagNode; }

    // Creates a DAG node of `typeName` under `parent` (a transform; null for the root).
    KObject create(const KString& typeName, const KString& name, const KObject& parent,
                   KStatus* status = nullptr);

    unsigned int parentCount(KStatus* status = nullptr) const;
    KObject parent(unsigned int index, KStatus* status = nullptr) const;
    unsigned int childCount(KStatus* status = nullptr) const;
    KObject child(unsigned int index, KStatus* status = nullptr) const;
    bool isInstanced() const;

    // The remembered path, or the node's first path.
    KStatus getPath(KDagPath& path) const;
    KDagPath dagPath(KStatus* status = nullptr) const;
    KString fullPathName(KStatus* status = nullptr) const;
    KString partialPathName(KStatus* status = nullptr) const;
    // The node's local matrix (identity for shapes).
    KMatrix transformationMatrix(KStatus* status = nullptr) const;

private:
    KDagPath path_;
};
