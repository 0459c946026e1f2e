#pragma once

#include <array>
#include <kova/KMatrix.h>
#include <kova/KTime.h>
#include <kova/detail/DataObject.h>
#include <map>
#include <memory>
#include <vector>

namespace kova::detail {

// The value of one plug in a node's data block. Which members are used depends on `kind`:
// numeric and unit values use `numbers` (unit values in internal units: centimetres,
// radians), time values `time`, matrix values `matrix`, typed and generic values `data`,
// compounds hold one child value per child attribute and arrays their elements by logical
// index. Messages carry no value.
struct Value {
    enum class Kind : unsigned char { Empty, Numeric, Time, Matrix, Data, Compound, Array };

    Kind kind = Kind::Empty;
    std::array<double, 4> numbers{};
    KTime time;
    KMatrix matrix;
    std::shared_ptr<DataObject> data;
    std::vector<Value> children;
    std::map<unsigned int, Value> elements;
    // World matrix of the DAG node whose world-space attribute produced `data`, when the
    // value was read from such an attribute.
    std::shared_ptr<const KMatrix> geometryMatrix;
};

} // namespace kova::detail
