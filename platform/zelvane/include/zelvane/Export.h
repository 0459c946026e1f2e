#pragma once

// Marks the symbols that the Zelvane runtime library exports; everything else stays hidden.
#define ZELVANE_API __attribute__((visibility("default")))
