#include "detail/DirtyPropagation.h"

#include "detail/Attribute.h"
#include "detail/Node.h"

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

namespace kova::detail {

namespace {

// The attribute, the compounds above it and everything below it.
std::vector<Attribute*> related(Attribute& attribute) {
    std::vector<Attribute*> out;
    attribute.collect(out);
    for (Attribute* p = attribute.parent; p != nullptr; p = p->parent) {
        out.push_back(p);
    }
    return out;
}

} // namespace

void propagateDirty(Node& start, Attribute& startAttribute, bool includeSelf) {
    std::vector<std::pair<Node*, Attribute*>> work{{&start, &startAttribute}};
    std::set<std::pair<Node*, Attribute*>> visited;
    bool first = true;
    while (!work.empty()) {
        auto [node, attribute] = work.back();
        work.pop_back();
        if (!visited.insert({node, attribute}).second || !node->inScene) {
            continue;
        }
        const std::vector<Attribute*> group = related(*attribute);
        if (!first || includeSelf) {
            std::lock_guard lock(node->mutex);
            for (Attribute* a : group) {
                node->setDirty(*a, true);
            }
        }
        first = false;
        for (Attribute* a : group) {
            if (a->owner == node->type.get()) {
                for (int affected : node->type->affects[static_cast<std::size_t>(a->index)]) {
                    work.emplace_back(node, node->type->attributes.at(affected).get());
                }
            }
        }
        if (node->type->dynamicOutputsComputed && attribute->writable) {
            for (const auto& output : node->dynamicAttributes.live()) {
                if (node->computesDynamic(*output)) {
                    work.emplace_back(node, output.get());
                }
            }
        }
        for (const auto& connection : node->outgoing) {
            Attribute* source = connection->sourcePath.back().attribute.get();
            if (std::find(group.begin(), group.end(), source) != group.end()) {
                work.emplace_back(connection->destination,
                                  connection->destinationPath.back().attribute.get());
            }
        }
        if (node->type->isDag() && attribute == node->type->dag.worldMatrix.get()) {
            for (Node* child : node->children) {
                work.emplace_back(child, child->type->dag.parentMatrix.get());
            }
        }
    }
}

} // namespace kova::detail
