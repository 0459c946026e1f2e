#pragma once

#include <kova/detail/PlugStep.h>

namespace kova::detail {

class Node;

// A connection from a source plug to a destination plug. Both nodes keep it (in their
// outgoing and incoming lists) until it is removed, which the scene does before a node
// leaves it, so the node pointers are always valid.
struct Connection {
    Node* source = nullptr;
    PlugPath sourcePath;
    Node* destination = nullptr;
    PlugPath destinationPath;
};

} // namespace kova::detail
