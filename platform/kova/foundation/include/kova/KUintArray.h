#pragma once

#include <kova/detail/KArray.h>

// Host array of 32-bit unsigned integers; see kova::detail::KArray for the behaviour of its
// operations.
class KUintArray : public kova::detail::KArray<unsigned int> {
public:
    using KArray::KArray;
};
