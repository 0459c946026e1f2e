#pragma once

#include "detail/Report.h"

#include <algorithm>
#include <kova/KStatus.h>
#include <kova/KString.h>
#include <kova/KStringArray.h>
#include <string>
#include <string_view>
#include <vector>

// What the UV and colour set functions of KFnMesh share: sets are looked up by name, a null
// name meaning the mesh's current set, and listed in their order.
namespace kova::mesh {

// The set of `sets` named `name`, or named `current` when `name` is null; null with the failed
// status "no <kind> set '<name>'" when there is none.
template <class Set>
Set* namedSet(std::vector<Set>& sets, const KString* name, const std::string& current,
              std::string_view kind, KStatus& status) {
    const std::string wanted = name ? std::string(name->view()) : current;
    const auto at =
        std::find_if(sets.begin(), sets.end(), [&](const Set& set) { return set.name == wanted; });
    if (at == sets.end()) {
        status = detail::invalid("no " + std::string(kind) + " set '" + wanted + "'");
        return nullptr;
    }
    return &*at;
}

// Replaces `names` by the names of `sets`, in order.
template <class Set>
KStatus copySetNames(const std::vector<Set>& sets, KStringArray& names) {
    names.clear();
    for (const Set& set : sets) {
        if (KStatus status = names.append(KString(set.name)); !status) {
            return status;
        }
    }
    return KStatus();
}

} // namespace kova::mesh
