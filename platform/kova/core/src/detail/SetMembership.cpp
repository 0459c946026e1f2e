#include "detail/SetMembership.h"

#include "detail/Node.h"
#include "detail/Scene.h"

#include <algorithm>
#include <kova/KFnSet.h>

namespace kova::detail {

namespace {

bool samePath(const DagNodes& a, const DagNodes& b) {
    return a == b;
}

bool sameKind(const SetMember& member, const ComponentData& component) {
    return member.component && member.component->apiType() == component.apiType();
}

// Takes `path` (whole, or the elements of `component`) out of `members`.
void takeOut(std::vector<SetMember>& members, const DagNodes& path,
             const ComponentData* component) {
    std::erase_if(members, [&](SetMember& member) {
        if (!samePath(member.path, path)) {
            return false;
        }
        if (component == nullptr || !member.component) {
            return true; // a whole path goes; a path held whole leaves for components
        }
        if (!sameKind(member, *component)) {
            return false;
        }
        for (int element : component->allElements()) {
            member.component->remove(element);
        }
        return member.component->count() == 0;
    });
}

} // namespace

KStatus addSetMember(Node& set, const DagNodes& path, const ComponentData* component) {
    if (!set.set || !set.inScene) {
        return KStatus(KStatus::kInvalidParameter, "not a set in the scene");
    }
    if (path.empty() || !path.back()->inScene) {
        return KStatus(KStatus::kInvalidParameter, "not a DAG path in the scene");
    }
    if (set.set->restriction == KFnSet::kRenderableOnly) {
        for (const auto& other : Scene::current().nodes()) {
            if (other.get() != &set && other->set &&
                other->set->restriction == KFnSet::kRenderableOnly) {
                takeOut(other->set->members, path, component);
            }
        }
    }
    auto& members = set.set->members;
    if (component == nullptr) {
        std::erase_if(members, [&](const SetMember& m) { return samePath(m.path, path); });
        members.push_back({path, nullptr});
        return KStatus();
    }
    for (SetMember& member : members) {
        if (samePath(member.path, path) && !member.component) {
            return KStatus(); // held whole: the components are members already
        }
        if (samePath(member.path, path) && sameKind(member, *component)) {
            if (component->complete) {
                member.component = component->clone();
            } else {
                for (int element : component->elements) {
                    member.component->add(element);
                }
            }
            return KStatus();
        }
    }
    members.push_back({path, component->clone()});
    return KStatus();
}

KStatus removeSetMember(Node& set, const DagNodes& path, const ComponentData* component) {
    if (!set.set) {
        return KStatus(KStatus::kInvalidParameter, "not a set");
    }
    auto& members = set.set->members;
    if (component != nullptr &&
        std::any_of(members.begin(), members.end(),
                    [&](const SetMember& m) { return samePath(m.path, path) && !m.component; })) {
        return KStatus(KStatus::kInvalidParameter,
                       "components cannot be removed from a member held whole");
    }
    if (std::none_of(members.begin(), members.end(),
                     [&](const SetMember& m) { return samePath(m.path, path); })) {
        return KStatus(KStatus::kNotFound, "the path is not a member of the set");
    }
    takeOut(members, path, component);
    return KStatus();
}

bool isSetMember(const Node& set, const DagNodes& path, const ComponentData* component) {
    if (!set.set) {
        return false;
    }
    for (const SetMember& member : set.set->members) {
        if (!samePath(member.path, path)) {
            continue;
        }
        if (!member.component) {
            return true;
        }
        if (component != nullptr && sameKind(member, *component)) {
            const auto elements = component->allElements();
            if (std::all_of(elements.begin(), elements.end(),
                            [&](int e) { return member.component->contains(e); })) {
                return true;
            }
        }
    }
    return false;
}

} // namespace kova::detail
