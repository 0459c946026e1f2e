#include "detail/Connect.h"

#include "detail/Attribute.h"
#include "detail/DirtyPropagation.h"
#include "detail/Node.h"

#include <algorithm>
#include <set>

namespace kova::detail {

namespace {

using Kind = Attribute::Kind;

KStatus refuse(const KPlug& source, const KPlug& destination, const char* why) {
    KString text;
    text.format("cannot connect '^1s' to '^2s': ^3s", source.name(), destination.name(),
                KString(why));
    return KStatus(KStatus::kInvalidParameter, text);
}

unsigned int componentCount(const Attribute& a) {
    return a.kind == Kind::Numeric ? KFnNumericData::componentCount(a.numericType) : 1;
}

bool fits(const Attribute& source, const Attribute& destination) {
    switch (destination.kind) {
    case Kind::Message:
        return source.kind == Kind::Message;
    case Kind::Numeric:
    case Kind::Unit: {
        const bool sourceTime =
            source.kind == Kind::Unit && source.unitType == KFnUnitAttribute::kTime;
        const bool destinationTime =
            destination.kind == Kind::Unit && destination.unitType == KFnUnitAttribute::kTime;
        return (source.kind == Kind::Numeric || source.kind == Kind::Unit) &&
               sourceTime == destinationTime &&
               componentCount(source) == componentCount(destination);
    }
    case Kind::Matrix:
        return source.kind == Kind::Matrix;
    case Kind::Typed:
    case Kind::Generic:
        switch (source.kind) {
        case Kind::Typed:
            return source.dataType == KFnData::kPlugin
                       ? destination.acceptsPluginType(source.pluginType)
                       : destination.acceptsData(source.dataType);
        case Kind::Generic:
            return destination.kind == Kind::Generic || destination.dataType == KFnData::kAny ||
                   std::any_of(source.acceptedTypes.begin(), source.acceptedTypes.end(),
                               [&](KFnData::Type t) { return destination.acceptsData(t); }) ||
                   std::any_of(source.acceptedPluginTypes.begin(),
                               source.acceptedPluginTypes.end(),
                               [&](const KTypeId& id) { return destination.acceptsPluginType(id); });
        case Kind::Numeric:
        case Kind::Unit:
            return destination.acceptsData(KFnData::kNumeric);
        case Kind::Matrix:
            return destination.acceptsData(KFnData::kMatrix);
        case Kind::Message: // a generic input may name a node (a shader, an operator)
            return destination.kind == Kind::Generic;
        default:
            return false;
        }
    case Kind::Compound:
        if (source.kind != Kind::Compound ||
            source.children.size() != destination.children.size()) {
            return false;
        }
        for (std::size_t i = 0; i < source.children.size(); ++i) {
            if (!fits(*source.children[i], *destination.children[i])) {
                return false;
            }
        }
        return true;
    }
    return false;
}

// True when `target` is `from` or lies downstream of it.
bool reaches(const Node& from, const Node& target) {
    std::set<const Node*> seen;
    std::vector<const Node*> work{&from};
    while (!work.empty()) {
        const Node* node = work.back();
        work.pop_back();
        if (node == &target) {
            return true;
        }
        if (seen.insert(node).second) {
            for (const auto& c : node->outgoing) {
                work.push_back(c->destination);
            }
        }
    }
    return false;
}

// True when one path is the other or lies above it.
bool overlaps(const PlugPath& a, const PlugPath& b) {
    const std::size_t n = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < n; ++i) {
        if (a[i].attribute != b[i].attribute) {
            return false;
        }
        if (a[i].index != b[i].index) {
            // Differing indices overlap only where one path ends on the whole array.
            return (a[i].index == -1 && i + 1 == a.size()) ||
                   (b[i].index == -1 && i + 1 == b.size());
        }
    }
    return true;
}

unsigned int nextFreeIndex(Node& node, const PlugPath& arrayPath) {
    unsigned int next = 0;
    std::lock_guard lock(node.mutex);
    if (const Value* value = node.slot(arrayPath, false); value && !value->elements.empty()) {
        next = value->elements.rbegin()->first + 1;
    }
    for (const auto& c : node.incoming) {
        const PlugPath& dst = c->destinationPath;
        if (dst.size() == arrayPath.size() && dst.back().attribute == arrayPath.back().attribute &&
            dst.back().index >= 0) {
            next = std::max(next, static_cast<unsigned int>(dst.back().index) + 1);
        }
    }
    return next;
}

void removeConnection(const std::shared_ptr<Connection>& connection) {
    std::erase(connection->source->outgoing, connection);
    std::erase(connection->destination->incoming, connection);
    propagateDirty(*connection->destination, *connection->destinationPath.back().attribute, false);
}

// `plug` equals `path`, or is an array plug of which `path` is an element.
bool matches(const KPlug& plug, const PlugPath& path) {
    if (plug.path() == path) {
        return true;
    }
    if (!plug.isArray() || plug.path().size() != path.size()) {
        return false;
    }
    PlugPath element = plug.path();
    element.back().index = path.back().index;
    return element == path;
}

} // namespace

bool hasSource(const Node& node, const PlugPath& destination) {
    return std::any_of(node.incoming.begin(), node.incoming.end(),
                       [&](const auto& c) { return overlaps(c->destinationPath, destination); });
}

KStatus connectPlugs(KPlug source, KPlug destination, bool force) {
    if (source.isNull() || destination.isNull()) {
        return KStatus(KStatus::kInvalidParameter, "cannot connect a null plug");
    }
    Node& from = *source.nodeEntity();
    Node& to = *destination.nodeEntity();
    if (!from.inScene || !to.inScene) {
        return refuse(source, destination, "a node is not in the scene");
    }
    if (source.isArray() && !destination.isArray()) {
        source = source.elementByLogicalIndex(0);
    } else if (destination.isArray() && !source.isArray()) {
        destination = destination.elementByLogicalIndex(nextFreeIndex(to, destination.path()));
    }
    const Attribute& sourceAttribute = *source.path().back().attribute;
    const Attribute& destinationAttribute = *destination.path().back().attribute;
    for (const PlugStep& step : source.path()) {
        if (!step.attribute->readable || !step.attribute->connectable) {
            return refuse(source, destination, "the source is not readable and connectable");
        }
    }
    for (const PlugStep& step : destination.path()) {
        if (!step.attribute->writable || !step.attribute->connectable) {
            return refuse(source, destination, "the destination is not writable and connectable");
        }
    }
    if (!fits(sourceAttribute, destinationAttribute)) {
        return refuse(source, destination, "the attribute kinds do not match");
    }
    if (&from == &to || reaches(to, from)) {
        return refuse(source, destination, "the connection would create a cycle");
    }
    if (hasSource(to, destination.path())) {
        if (!force) {
            return refuse(source, destination, "the destination already has a source");
        }
        for (const auto& c : std::vector(to.incoming)) {
            if (overlaps(c->destinationPath, destination.path())) {
                removeConnection(c);
            }
        }
    }
    auto connection =
        std::make_shared<Connection>(Connection{&from, source.path(), &to, destination.path()});
    from.outgoing.push_back(connection);
    to.incoming.push_back(connection);
    {
        std::lock_guard lock(to.mutex);
        to.slot(destination.path(), true);
    }
    propagateDirty(to, *destination.path().back().attribute, true);
    return KStatus();
}

KStatus disconnectPlugs(const KPlug& source, const KPlug& destination) {
    if (source.isNull() || destination.isNull()) {
        return KStatus(KStatus::kInvalidParameter, "cannot disconnect a null plug");
    }
    Node& to = *destination.nodeEntity();
    for (const auto& c : to.incoming) {
        if (c->source == source.nodeEntity().get() && matches(source, c->sourcePath) &&
            matches(destination, c->destinationPath)) {
            removeConnection(std::shared_ptr<Connection>(c));
            return KStatus();
        }
    }
    KString text;
    text.format("'^1s' is not connected to '^2s'", source.name(), destination.name());
    return KStatus(KStatus::kNotFound, text);
}

void disconnectAttribute(Node& node, const Attribute& attribute) {
    const auto uses = [&](const PlugPath& path) {
        return std::any_of(path.begin(), path.end(), [&](const PlugStep& step) {
            return step.attribute.get() == &attribute;
        });
    };
    for (const auto& c : std::vector(node.incoming)) {
        if (uses(c->destinationPath)) {
            removeConnection(c);
        }
    }
    for (const auto& c : std::vector(node.outgoing)) {
        if (uses(c->sourcePath)) {
            removeConnection(c);
        }
    }
}

void disconnectAll(Node& node) {
    while (!node.incoming.empty()) {
        removeConnection(std::shared_ptr<Connection>(node.incoming.back()));
    }
    while (!node.outgoing.empty()) {
        removeConnection(std::shared_ptr<Connection>(node.outgoing.back()));
    }
}

} // namespace kova::detail
