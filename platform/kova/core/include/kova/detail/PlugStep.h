#pragma once

#include <memory>
#include <vector>

namespace kova::detail {

class Attribute;

// One level of a plug's path from its node: an attribute, and for an element of an array
// attribute its logical index (-1 for the attribute itself).
struct PlugStep {
    std::shared_ptr<Attribute> attribute;
    int index = -1;

    bool operator==(const PlugStep& other) const {
        return attribute == other.attribute && index == other.index;
    }
};

using PlugPath = std::vector<PlugStep>;

} // namespace kova::detail
