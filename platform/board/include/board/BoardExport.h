#pragma once

// Marks the symbols that the board library exports.
#define BOARD_API __attribute__((visibility("default")))
