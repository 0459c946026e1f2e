#pragma once

// Host profiler categories of the converters, registered when the library loads. Every
// conversion step opens a scope in its converter's category with colour index 9.
namespace ZelvanePlugin {

inline constexpr int kProfilerColor = 9;

int meshConverterCategory();  // "Zelvane/MeshConverter"
int curveConverterCategory(); // "Zelvane/CurveConverter"

} // namespace ZelvanePlugin
