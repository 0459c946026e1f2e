#pragma once

#include <kova/KFloatVector.h>
#include <kova/detail/KArray.h>

// Host array of single-precision vectors; see kova::detail::KArray for the behaviour of its
// operations.
class KFloatVectorArray : public kova::detail::KArray<KFloatVector> {
public:
    using KArray::KArray;
};
