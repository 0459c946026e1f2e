#pragma once

// Marks the symbols that the Kova plug-in signing library exports; everything else stays hidden.
#define KOVA_SIGNING_API __attribute__((visibility("default")))
