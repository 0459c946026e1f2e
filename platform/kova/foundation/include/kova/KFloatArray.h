#pragma once

#include <kova/detail/KArray.h>

// Host array of floats; see kova::detail::KArray for the behaviour of its operations.
class KFloatArray : public kova::detail::KArray<float> {
public:
    using KArray::KArray;
};
