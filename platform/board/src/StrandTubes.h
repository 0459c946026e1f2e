#pragma once

#include <board/Graph.h>

namespace ZelvaneBoard::detail {

// The "strandsToTubes" operator: input "strands" (a strand object or an array of them),
// optional "radius" (float, default 0.05) and "sides" (int, default 8, clamped to 3..64);
// output "meshes", an array with one mesh object per strand object holding an open tube of
// quads around every strand of two or more points. Frames follow the strand by parallel
// transport, so tubes do not twist. Strand objects whose layout is inconsistent, or that have
// no strand of two or more points, give no mesh.
PortValues strandsToTubes(const PortValues& inputs);

} // namespace ZelvaneBoard::detail
