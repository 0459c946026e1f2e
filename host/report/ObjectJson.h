#pragma once

#include <cstddef>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <zelvane/Object.h>

namespace KovaHost {

// A graph object as JSON, property by property in the object's order:
//   {"properties": [{"name": ..., "type": ..., "size": ..., "target": ..., "values": ...}]}
// "type" is the property's runtime type name ("float", "array<float3>", "Object", ...),
// "size" its element count, "target" the component a geometry property runs over (its nested
// object's target; null for other properties). "values" holds the value itself: a number,
// string or bool; a list for vectors ([x, y, z]), matrices (16 numbers, row by row) and
// arrays (at most `valueLimit` elements, then "truncated": true); a nested object in this
// same form; null for a null object or array.
nlohmann::json objectToJson(const Zelvane::Object& object,
                            std::size_t valueLimit = std::numeric_limits<std::size_t>::max());

// A readable outline of the same: one line per property with its type, size, target and its
// first few values; nested objects indented below their property.
std::string objectOutline(const Zelvane::Object& object, int indent = 0);

} // namespace KovaHost
