#pragma once

#include <board/Graph.h>
#include <orsel/Ptr.h>
#include <string>
#include <vector>
#include <zelvane/Object.h>

namespace ZelvaneBoard::detail {

// A built-in operator kind: its port names and what it computes.
struct OperatorKind {
    std::vector<std::string> inputs;
    std::vector<std::string> outputs;
    PortValues (*run)(const PortValues& inputs);
};

// The built-in kind of `name`, or null.
const OperatorKind* findOperatorKind(const std::string& name);

// The objects a value holds: its one object or its array's entries, null ones skipped; none
// for a null value.
std::vector<Orsel::Ptr<Zelvane::Object>> objectsOf(const Orsel::Value* value);

} // namespace ZelvaneBoard::detail
