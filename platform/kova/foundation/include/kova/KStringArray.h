#pragma once

#include <kova/KString.h>
#include <kova/detail/KArray.h>

// Host array of strings; see kova::detail::KArray for the behaviour of its operations.
class KStringArray : public kova::detail::KArray<KString> {
public:
    using KArray::KArray;
};
