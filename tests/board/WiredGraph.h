#pragma once

#include <board/Graph.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <utility>

// A graph of `operators` (name, kind) joined by `wires` (from, to), each step expected to be
// accepted.
inline ZelvaneBoard::Graph
wiredGraph(std::initializer_list<std::pair<const char*, const char*>> operators,
           std::initializer_list<std::pair<const char*, const char*>> wires) {
    ZelvaneBoard::Graph graph;
    for (const auto& [name, kind] : operators) {
        EXPECT_TRUE(graph.addOperator(name, kind)) << name;
    }
    for (const auto& [from, to] : wires) {
        EXPECT_TRUE(graph.connect(from, to)) << from << " -> " << to;
    }
    return graph;
}
