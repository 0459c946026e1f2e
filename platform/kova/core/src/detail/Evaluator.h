#pragma once

#include "detail/Value.h"

#include <kova/KStatus.h>
#include <kova/detail/PlugStep.h>
#include <optional>

namespace kova::detail {

class Node;
class Attribute;

// Pull evaluation.
//
// Reading a plug brings its value up to date: a connected destination pulls its source's
// value, and a dirty computed attribute calls its node's compute. The reading thread holds
// the lock of every node it is evaluating: its own node while it computes, then, nested,
// each upstream node it pulls from. Locks are therefore taken downstream before upstream
// (and DAG child before parent, for world matrices); since connecting a cycle is refused,
// two threads can never wait on each other. No lock but node locks is held during a
// compute, and each node's values and dirty flags are only touched under its lock, so
// several threads may pull outputs that share upstream nodes.

// Where the value of a destination path comes from.
struct Source {
    Node* node = nullptr;
    PlugPath path;
};

// The source feeding `path`: a connection on the path itself or on one of its ancestors
// (a whole array or compound connection feeds each element and child).
std::optional<Source> sourceOf(const Node& node, const PlugPath& path);

// Brings the value of `path` up to date. Takes the node's lock (recursively).
KStatus evaluate(Node& node, const PlugPath& path);

// Evaluates `path` and copies its value into `out`; for an attribute marked world space, on
// a DAG node, also records the node's world matrix with the value.
KStatus readValue(Node& node, const PlugPath& path, Value& out);

// The value a path has when nothing was stored for it.
Value defaultValue(const PlugPath& path);

// Marks `attribute` and everything below it clean on `node` (lock held by the caller).
void markClean(Node& node, Attribute& attribute);

} // namespace kova::detail
