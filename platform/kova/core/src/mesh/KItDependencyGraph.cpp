#include "detail/Connection.h"
#include "detail/Node.h"
#include "detail/Report.h"
#include "detail/Scene.h"

#include <deque>
#include <kova/KFailureInjection.h>
#include <kova/KItDependencyGraph.h>
#include <unordered_set>

using kova::detail::Node;
using kova::detail::report;

namespace {

// The nodes one edge away from `node` in `direction`.
std::vector<Node*> neighbours(Node& node, KItDependencyGraph::Direction direction) {
    std::vector<Node*> next;
    const bool down = direction == KItDependencyGraph::kDownstream;
    for (const auto& connection : down ? node.outgoing : node.incoming) {
        next.push_back(down ? connection->destination : connection->source);
    }
    if (!down && node.set) {
        for (const auto& member : node.set->members) {
            if (!member.path.empty()) {
                next.push_back(member.path.back().get());
            }
        }
    }
    if (down) {
        for (const auto& candidate : kova::detail::Scene::current().nodes()) {
            if (!candidate->set) {
                continue;
            }
            for (const auto& member : candidate->set->members) {
                if (!member.path.empty() && member.path.back().get() == &node) {
                    next.push_back(candidate.get());
                    break;
                }
            }
        }
    }
    return next;
}

} // namespace

KItDependencyGraph::KItDependencyGraph(const KObject& root, KFn::Type filter, Direction direction,
                                       Traversal traversal, KStatus* status)
    : root_(root), filter_(filter), direction_(direction), traversal_(traversal) {
    if (KFailureInjection::shouldFail("KItDependencyGraph::KItDependencyGraph")) {
        report(status, KFailureInjection::failure("KItDependencyGraph::KItDependencyGraph"));
        return;
    }
    report(status, reset());
}

KStatus KItDependencyGraph::reset() {
    items_.clear();
    position_ = 0;
    Node* start = kova::detail::nodeOf(root_);
    if (start == nullptr || !start->inScene) {
        return KStatus(KStatus::kInvalidParameter, "the root is not a node in the scene");
    }
    std::unordered_set<Node*> seen{start};
    std::deque<Node*> pending{start};
    while (!pending.empty()) {
        Node* node;
        if (traversal_ == kBreadthFirst) {
            node = pending.front();
            pending.pop_front();
        } else {
            node = pending.back();
            pending.pop_back();
        }
        const KObject object = kova::detail::objectOf(*node);
        if (filter_ == KFn::kInvalid || object.hasFn(filter_)) {
            items_.push_back(object);
        }
        std::vector<Node*> next = neighbours(*node, direction_);
        if (traversal_ == kDepthFirst) {
            std::reverse(next.begin(), next.end()); // visit the first neighbour first
        }
        for (Node* n : next) {
            if (n->inScene && seen.insert(n).second) {
                pending.push_back(n);
            }
        }
    }
    return KStatus();
}

KObject KItDependencyGraph::currentItem(KStatus* status) const {
    if (isDone()) {
        report(status, KStatus(KStatus::kFailure, "the iteration is done"));
        return KObject();
    }
    report(status, KStatus());
    return items_[position_];
}

KStatus KItDependencyGraph::next() {
    if (isDone()) {
        return KStatus(KStatus::kFailure, "the iteration is done");
    }
    ++position_;
    return KStatus();
}
