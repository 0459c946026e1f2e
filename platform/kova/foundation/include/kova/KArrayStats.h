#pragma once

#include <cstddef>
#include <kova/KExport.h>

// Counters of the buffers held by host arrays, so tests can prove that nothing leaks.
struct KOVA_API KArrayStats {
    // Number of array buffers currently allocated, over all host array types.
    static std::size_t liveBuffers();
    // Bytes of capacity currently allocated by host arrays.
    static std::size_t liveBytes();
};
