#include "commands/BuiltInCommands.h"
#include "detail/CommandArgs.h"
#include "detail/Dag.h"
#include "detail/Node.h"
#include "detail/NodeCreation.h"
#include "detail/SetMembership.h"
#include "mesh/ComponentNames.h"

namespace kova::commands {

namespace {

// A set member named on the command line: a DAG path, whole or with a component.
struct Member {
    detail::DagNodes path;
    std::shared_ptr<detail::ComponentData> component;
};

// The members named by `names` (full paths or names, or component names like "a.f[0:3]").
KStatus parseMembers(const std::vector<std::string>& names, std::size_t first,
                     std::vector<Member>& members) {
    for (std::size_t i = first; i < names.size(); ++i) {
        KDagPath dagPath;
        KObject component;
        KStatus status;
        if (mesh::parseComponentName(names[i], dagPath, component, status)) {
            if (!status) {
                return status;
            }
            members.push_back({dagPath.nodes(),
                               detail::sharedEntityAs<detail::ComponentData>(component.entity())});
            continue;
        }
        detail::DagNodes path;
        if (!detail::findPath(names[i], path)) {
            return KStatus(KStatus::kInvalidParameter,
                           KString("'" + names[i] + "' is not a DAG node"));
        }
        members.push_back({std::move(path), nullptr});
    }
    return KStatus();
}

detail::Node* findSet(const std::string& name) {
    detail::Node* node = detail::findNode(name);
    return node && node->set ? node : nullptr;
}

KStatus editSet(const detail::CommandArgs& parsed, bool remove) {
    const std::string setName = parsed.value(remove ? "remove" : "forceElement");
    detail::Node* set = findSet(setName);
    if (set == nullptr) {
        return KStatus(KStatus::kInvalidParameter, KString("no set '" + setName + "'"));
    }
    std::vector<Member> paths;
    KStatus status = parseMembers(parsed.positional(), 0, paths);
    for (std::size_t i = 0; status && i < paths.size(); ++i) {
        const Member& m = paths[i];
        status = remove ? detail::removeSetMember(*set, m.path, m.component.get())
                        : detail::addSetMember(*set, m.path, m.component.get());
    }
    return status;
}

} // namespace

KStatus sets(const Args& args, KStringArray& result) {
    detail::CommandArgs parsed;
    KStatus status = parsed.parse(args, {{"edit", "e", 0},
                                         {"forceElement", "fe", 1},
                                         {"remove", "rm", 1},
                                         {"name", "n", 1},
                                         {"empty", "em", 0}});
    if (!status) {
        return status;
    }
    if (parsed.has("edit")) {
        if (parsed.has("forceElement") == parsed.has("remove")) {
            return KStatus(KStatus::kInvalidParameter,
                           "-edit needs one of -forceElement SET or -remove SET");
        }
        return editSet(parsed, parsed.has("remove"));
    }
    if (parsed.has("forceElement") || parsed.has("remove")) {
        return KStatus(KStatus::kInvalidParameter, "-forceElement and -remove need -edit");
    }
    std::vector<Member> paths;
    if (!parsed.has("empty")) {
        status = parseMembers(parsed.positional(), 0, paths);
    } else if (!parsed.positional().empty()) {
        status = KStatus(KStatus::kInvalidParameter, "-empty takes no members");
    }
    if (!status) {
        return status;
    }
    auto set = detail::createNode("objectSet", parsed.value("name"), nullptr, status);
    for (std::size_t i = 0; set && status && i < paths.size(); ++i) {
        status = detail::addSetMember(*set, paths[i].path, paths[i].component.get());
    }
    return set && status ? result.append(KString(set->name)) : status;
}

} // namespace kova::commands
