#pragma once

#include <kova/detail/KArray.h>

// Host array of 32-bit signed integers; see kova::detail::KArray for the behaviour of its
// operations.
class KIntArray : public kova::detail::KArray<int> {
public:
    using KArray::KArray;
};
