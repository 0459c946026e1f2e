#pragma once

#include <kova/KExport.h>
#include <kova/KFn.h>
#include <kova/KObject.h>
#include <kova/KStatus.h>
#include <vector>

// Walks the dependency graph from a root node along its edges: connections (source to
// destination) and set membership (a member's node to the set; sets hold their members
// without connections, so each membership counts as an edge from the last node of the
// member's DAG path to the set). Each node is visited once; the root is the first item when
// it passes the filter. The walk is taken when the iterator is made (or reset), so later
// graph edits do not disturb it.
class KOVA_API KItDependencyGraph {
public:
    enum Direction {
        kUpstream = 0,   // against the edges: connection sources, a set's members
        kDownstream = 1, // along the edges: connection destinations, sets holding the node
    };
    enum Traversal { kDepthFirst = 0, kBreadthFirst = 1 };

    // `filter` keeps the nodes of that kind (and kinds below it); kInvalid keeps all.
    explicit KItDependencyGraph(const KObject& root, KFn::Type filter = KFn::kInvalid,
                                Direction direction = kDownstream,
                                Traversal traversal = kDepthFirst, KStatus* status = nullptr);

    bool isDone() const { return position_ >= items_.size(); }
    // The current node; the null object (and a failed status) once done.
    KObject currentItem(KStatus* status = nullptr) const;
    KStatus next();
    // Walks again from the root.
    KStatus reset();
    KObject rootNode() const { return root_; }

private:
    KObject root_;
    KFn::Type filter_;
    Direction direction_;
    Traversal traversal_;
    std::vector<KObject> items_;
    std::size_t position_ = 0;
};
