#pragma once

#include <kova/KExport.h>

class KPlug;

// Instrumentation of pulls through connections, for tests of code that must not read one host
// source from two threads at once. While enabled, every pull of a source plug's value through a
// connection counts the pulls of that source (node and attribute) in progress, before the host's
// own per-node locking orders them, and keeps the highest count seen per source. Disabled, a
// pull pays one relaxed atomic load.
struct KOVA_API KSourceReadProbe {
    // Starts counting afresh.
    static void enable();
    static void disable();
    // The most pulls of `source` seen in progress at once since enable().
    static int maxConcurrentReads(const KPlug& source);
};
