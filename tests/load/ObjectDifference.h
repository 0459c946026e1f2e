#pragma once

#include <string>
#include <vector>
#include <zelvane/Object.h>

// Where `actual` first differs from `expected`, as a property path ("P[12]",
// "uv.data[3]", "renderSettings.surface[0].materialReferenceID"), or empty when both hold the
// same properties in the same order with bit-identical values. `path` prefixes the answer.
std::string objectDifference(const Zelvane::Object& expected, const Zelvane::Object& actual,
                             const std::string& path = "");

// The same for two lists of objects, any of which may be null.
std::string objectsDifference(const std::vector<Orsel::Ptr<Zelvane::Object>>& expected,
                              const std::vector<Orsel::Ptr<Zelvane::Object>>& actual,
                              const std::string& path);
