#pragma once

// Marks the symbols that the Kova SDK libraries export; everything else stays hidden.
#define KOVA_API __attribute__((visibility("default")))
