#include "detail/StrandArrays.h"

#include "detail/Validation.h"

#include <zelvane/geometry/ElementCount.h>
#include <zelvane/geometry/Names.h>

namespace Zelvane::GeometryAlgorithms::detail {

bool readStrandArrays(const Object& strands, StrandArrays& out) {
    out.positionArray = strands.getArray<Math::float3>(Geometry::sPointPosition);
    out.offsetArray = strands.getArray<std::uint32_t>(Geometry::sStrandOffset);
    if (!out.positionArray || !out.offsetArray || out.offsetArray->empty()) {
        return false;
    }
    const bool countsMatch =
        Geometry::getElementCount(strands, Geometry::sPointComp) == out.pointCount() &&
        Geometry::getElementCount(strands, Geometry::sStrandComp) == out.strandCount();
    return countsMatch && isPrefixSum(out.offsetArray->span(), out.pointCount());
}

} // namespace Zelvane::GeometryAlgorithms::detail
