#pragma once

// Marks the symbols that the Orsel core library exports; everything else stays hidden.
#define ORSEL_API __attribute__((visibility("default")))
