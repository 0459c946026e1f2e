#include "Offsets.h"

#include <zelvane/geometry/ElementCount.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/geometry/Strand.h>

namespace Zelvane::Geometry {

bool populateStrand(Orsel::Ptr<Orsel::Array<Math::float3>> positions,
                    Orsel::Ptr<Orsel::Array<std::uint32_t>> offsets, Object& strands) {
    if (!positions) {
        positions = Orsel::make<Orsel::Array<Math::float3>>();
    }
    if (!offsets || !detail::isPrefixSum(*offsets, positions->size())) {
        return false;
    }
    strands.setPrototype(getStrandPrototype());
    setElementCount(sPointComp, positions->size(), strands);
    setElementCount(sStrandComp, offsets->size() - 1, strands);
    strands.set(sPointPosition, std::move(positions));
    strands.set(sStrandOffset, std::move(offsets));
    return true;
}

} // namespace Zelvane::Geometry
