#pragma once

#include <board/Graph.h>
#include <string>
#include <vector>

namespace ZelvaneBoard::detail {

// A built-in operator kind: its port names and what it computes.
struct OperatorKind {
    std::vector<std::string> inputs;
    std::vector<std::string> outputs;
    PortValues (*run)(const PortValues& inputs);
};

// The built-in kind of `name`, or null.
const OperatorKind* findOperatorKind(const std::string& name);

} // namespace ZelvaneBoard::detail
