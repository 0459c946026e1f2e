#pragma once

// Marks the symbols that the Kova NURBS library exports; everything else stays hidden.
#define KOVA_NURBS_API __attribute__((visibility("default")))
