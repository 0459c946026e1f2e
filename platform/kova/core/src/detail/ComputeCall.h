#pragma once

#include <kova/KStatus.h>
#include <kova/detail/PlugStep.h>

namespace kova::detail {

class Node;

// Has `node` compute the plug `path` (lock held by the caller). An element is computed as
// its whole array; when the node answers kUnknownParameter for a compound child, its parent
// is asked next. Success and kUnknownParameter (the stored value stands) leave the plug
// clean; a failure leaves it dirty. Exceptions are caught and reported through the message
// sink with the node and plug names, and count as failures.
KStatus computePlug(Node& node, const PlugPath& path);

} // namespace kova::detail
