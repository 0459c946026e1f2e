#pragma once

#include <kova/KFloatPoint.h>
#include <kova/detail/KArray.h>

// Host array of single-precision points; see kova::detail::KArray for the behaviour of its
// operations.
class KFloatPointArray : public kova::detail::KArray<KFloatPoint> {
public:
    using KArray::KArray;
};
