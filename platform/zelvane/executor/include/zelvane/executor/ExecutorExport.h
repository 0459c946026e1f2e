#pragma once

// Marks the symbols that the board executor library exports.
#define ZELVANE_EXECUTOR_API __attribute__((visibility("default")))
