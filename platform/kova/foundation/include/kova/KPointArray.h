#pragma once

#include <kova/KPoint.h>
#include <kova/detail/KArray.h>

// Host array of double-precision points; see kova::detail::KArray for the behaviour of its
// operations.
class KPointArray : public kova::detail::KArray<KPoint> {
public:
    using KArray::KArray;
};
