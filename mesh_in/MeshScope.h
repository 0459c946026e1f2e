#pragma once

#include "common/ProfilerCategories.h"

#include <kova/KProfilingScope.h>

namespace ZelvanePlugin::MeshInput {

// A profiling scope of the mesh converter: its category, its colour, and a label that names
// the step (a string literal, as the profiler keeps the pointer until the scope closes).
class MeshScope : public KProfilingScope {
public:
    explicit MeshScope(const char* label)
        : KProfilingScope(meshConverterCategory(), kProfilerColor, label) {}
};

} // namespace ZelvanePlugin::MeshInput
