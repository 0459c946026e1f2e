#pragma once

namespace kova::detail {

class Node;
class Attribute;

// Marks everything that depends on `attribute` of `node` dirty: the attributes it affects
// (attributeAffects, and the compounds above and children below each), the destinations
// of connections out of any of them, onward through the graph, and the world matrices of
// DAG children when a world matrix changes. `includeSelf` also marks the attribute itself
// (a new connection into it); a value just set on it stays clean. Each node is locked only
// while its own flags change.
void propagateDirty(Node& node, Attribute& attribute, bool includeSelf);

} // namespace kova::detail
