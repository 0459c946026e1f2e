#pragma once

// Marks the symbols that the input-by-path options library exports; everything else stays
// hidden.
#define ZELVANE_INPUTBYPATH_API __attribute__((visibility("default")))
