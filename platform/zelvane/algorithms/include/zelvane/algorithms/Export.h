#pragma once

// Marks the symbols that the geometry algorithms library exports; everything else stays hidden.
#define ZELVANE_ALGORITHMS_API __attribute__((visibility("default")))
