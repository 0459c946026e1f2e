#pragma once

#include <cstdint>
#include <iosfwd>
#include <kova/KExport.h>
#include <kova/KString.h>
#include <string>
#include <vector>

// The host's profiler: named categories, and timed scopes (KProfilingScope) recorded while
// recording is on.
//
// Each thread records into a buffer of its own: the first scope a thread records registers the
// buffer once under a mutex, later scopes append without any lock. A scope becomes an event
// when it closes. Buffers outlive their threads until clear(). Times come from the steady
// clock, in nanoseconds since the profiler's first use.
class KOVA_API KProfiler {
public:
    // One finished scope.
    struct Event {
        int category = -1;
        int colorIndex = 0;
        std::string label;
        std::string description; // empty when none was given
        uint32_t threadId = 0;   // 1, 2, ... in the order threads first recorded
        int64_t startNs = 0;
        int64_t durationNs = 0;
        int depth = 0; // number of recorded scopes open around this one on its thread
    };

    // Registers a category and returns its id; the same name always yields the same id (the
    // first description is kept). Returns -1 for a null or empty name.
    static int addCategory(const char* name, const char* description);
    // Name and description of a category; empty for an unknown id.
    static KString categoryName(int category);
    static KString categoryDescription(int category);
    static int categoryCount();

    static void setRecording(bool recording);
    static bool isRecording();

    // Every event finished so far on every thread, ordered by thread, then start time, then
    // depth.
    static std::vector<Event> events();
    // Forgets all recorded events (and the buffers of threads that have ended).
    static void clear();

    // Writes the events as a Chrome trace: {"traceEvents": [...], "displayTimeUnit": "ns"}
    // with one complete event ("ph": "X") per scope: "name" = label, "cat" = category name,
    // "ts" and "dur" in microseconds, "pid", "tid", and "args" holding "colorIndex" (and
    // "description" when given). Returns false when the stream fails.
    static bool writeChromeTrace(std::ostream& out);
};
