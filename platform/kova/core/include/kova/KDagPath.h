#pragma once

#include <kova/KExport.h>
#include <kova/KMatrix.h>
#include <kova/KObject.h>
#include <kova/KStatus.h>
#include <kova/KString.h>
#include <memory>
#include <vector>

namespace kova::detail {
class Node;
}

// A path through the DAG from a root to one node: which instance of the node is meant.
class KOVA_API KDagPath {
public:
    KDagPath() = default;
    // Host internals: the nodes from the root down.
    explicit KDagPath(std::vector<std::shared_ptr<kova::detail::Node>> nodes);

    // The first path to `node` (following first parents).
    static KStatus getAPathTo(const KObject& node, KDagPath& path);

    // True when the path is not empty and every node on it is still in the scene.
    bool isValid() const;
    // Number of nodes on the path ("|a|b" has 2).
    unsigned int length() const;

    // "|transform|shape".
    KString fullPathName(KStatus* status = nullptr) const;
    // The shortest name that identifies the node: its name (names are unique in the scene).
    KString partialPathName(KStatus* status = nullptr) const;
    // The last node of the path.
    KObject node(KStatus* status = nullptr) const;
    // The last transform on the path (the node itself when it is a transform).
    KObject transform(KStatus* status = nullptr) const;

    // Extends a path that ends at a transform to its only shape child; a path that ends at a
    // shape stays. Fails when the transform has no shape child or several.
    KStatus extendToShape();
    // Adds `child` (a DAG child of the last node) to the path.
    KStatus push(const KObject& child);
    KStatus pop(unsigned int count = 1);
    unsigned int childCount() const;
    KObject child(unsigned int index) const;

    // Product of the local matrices of the transforms on the path (with / without the last
    // node's own).
    KMatrix inclusiveMatrix(KStatus* status = nullptr) const;
    KMatrix exclusiveMatrix(KStatus* status = nullptr) const;
    KMatrix inclusiveMatrixInverse(KStatus* status = nullptr) const;

    bool operator==(const KDagPath& other) const { return nodes_ == other.nodes_; }
    bool operator!=(const KDagPath& other) const { return nodes_ != other.nodes_; }

    // Host internals.
    const std::vector<std::shared_ptr<kova::detail::Node>>& nodes() const { return nodes_; }

private:
    std::vector<std::shared_ptr<kova::detail::Node>> nodes_;
};
