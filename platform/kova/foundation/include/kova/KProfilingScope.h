#pragma once

#include <cstdint>
#include <kova/KExport.h>

// Times the enclosing block into the profiler when recording is on (KProfiler::setRecording).
// When recording is off, construction costs one relaxed atomic load and nothing is kept.
// The label and description must stay valid until the scope closes (string literals, or
// strings that outlive the block); they are copied into the event then. A scope records only
// if recording was on when it opened.
class KOVA_API KProfilingScope {
public:
    KProfilingScope(int category, int colorIndex, const char* label,
                    const char* description = nullptr);
    ~KProfilingScope();
    KProfilingScope(const KProfilingScope&) = delete;
    KProfilingScope& operator=(const KProfilingScope&) = delete;

private:
    const char* label_ = nullptr;
    const char* description_ = nullptr;
    int64_t startNs_ = 0;
    int category_ = -1;
    int colorIndex_ = 0;
    int depth_ = 0;
    bool active_ = false;
};
