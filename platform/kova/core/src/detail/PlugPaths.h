#pragma once

#include <kova/detail/PlugStep.h>
#include <optional>
#include <set>

namespace kova::detail {

class Node;

// Where `path` lands when the plug `from` is mapped onto the plug `to` (the two ends of a
// connection): `to` itself when `path` is `from`; for a path below `from` (an element of a
// whole array, a child of a compound) the matching element or child below `to`. Nothing
// when `path` is neither `from` nor below it.
std::optional<PlugPath> mapPath(const PlugPath& from, const PlugPath& to, const PlugPath& path);

// True when `path` names an element somewhere along it.
bool hasElementIndex(const PlugPath& path);

// Logical indices of the elements of the array plug `path` on `node`: those stored and those
// that are destinations of connections (lock held by the caller).
std::set<unsigned int> elementIndices(Node& node, const PlugPath& path);

} // namespace kova::detail
