#pragma once

#include <kova/KColor.h>
#include <kova/detail/KArray.h>

// Host array of colours; see kova::detail::KArray for the behaviour of its operations.
class KColorArray : public kova::detail::KArray<KColor> {
public:
    using KArray::KArray;
};
