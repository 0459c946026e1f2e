#include "common/ProfilerCategories.h"

#include <kova/KProfiler.h>

namespace ZelvanePlugin {
namespace {
const int gMeshConverterCategory =
    KProfiler::addCategory("Zelvane/MeshConverter", "Events from the Zelvane mesh converter");
const int gCurveConverterCategory =
    KProfiler::addCategory("Zelvane/CurveConverter", "Events from the Zelvane curve converter");
} // namespace

int meshConverterCategory() {
    return gMeshConverterCategory;
}
int curveConverterCategory() {
    return gCurveConverterCategory;
}

} // namespace ZelvanePlugin
