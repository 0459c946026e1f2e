#pragma once

#include <kova/detail/KArray.h>

// Host array of doubles; see kova::detail::KArray for the behaviour of its operations.
class KDoubleArray : public kova::detail::KArray<double> {
public:
    using KArray::KArray;
};
