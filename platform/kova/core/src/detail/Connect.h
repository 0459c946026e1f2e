#pragma once

#include <kova/KPlug.h>
#include <kova/KStatus.h>

namespace kova::detail {

class Node;
class Attribute;

// Connects `source` to `destination`. An array plug used as the source of a connection to a
// single plug stands for its element 0; a single source connected to an array plug goes to
// the array's next free logical index. Fails when a plug is null or not in the scene, the
// source is not readable or the destination not writable, either is not connectable, the
// kinds do not fit, the destination already has a source (unless `force`, which replaces
// it), or the connection would close a cycle (the source node lies downstream of the
// destination node, or is the same node). Everything downstream of the destination is
// marked dirty.
KStatus connectPlugs(KPlug source, KPlug destination, bool force);

// Removes the connection from `source` to `destination` (same rules for array plugs).
// The destination keeps the value it last received; its dependents are marked dirty.
KStatus disconnectPlugs(const KPlug& source, const KPlug& destination);

// Removes every connection into and out of `node`.
void disconnectAll(Node& node);

// Removes every connection of `node` that goes through `attribute` or an attribute below it.
void disconnectAttribute(Node& node, const Attribute& attribute);

// True when `destination` or a plug above or below it already has a source.
bool hasSource(const Node& node, const PlugPath& destination);

} // namespace kova::detail
