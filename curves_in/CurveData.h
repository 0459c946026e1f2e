#pragma once

#include <cstddef>
#include <kova/KDataHandle.h>
#include <kova/KObject.h>
#include <vector>

namespace ZelvanePlugin::CurvesInput {

// The curve data of curve `index`: the null object when there is no handle for it or its handle
// holds no NURBS curve, so that attaching a function set to it fails like any unreadable curve.
inline KObject curveData(const std::vector<KDataHandle>& handles, std::size_t index) {
    return index < handles.size() ? handles[index].asNurbsCurve() : KObject();
}

} // namespace ZelvanePlugin::CurvesInput
