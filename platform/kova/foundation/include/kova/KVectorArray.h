#pragma once

#include <kova/KVector.h>
#include <kova/detail/KArray.h>

// Host array of double-precision vectors; see kova::detail::KArray for the behaviour of its
// operations.
class KVectorArray : public kova::detail::KArray<KVector> {
public:
    using KArray::KArray;
};
