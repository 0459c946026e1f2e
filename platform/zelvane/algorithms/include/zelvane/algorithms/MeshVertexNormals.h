#pragma once

#include <orsel/Array.h>
#include <zelvane/Object.h>
#include <zelvane/algorithms/Export.h>
#include <zelvane/math/Vector.h>

namespace Zelvane::GeometryAlgorithms {

/// Computes one normal per point of `mesh` from its positions and faces.
///
/// `mesh` must carry the mesh layout (see `zelvane/geometry/Mesh.h`): `sPointPosition` (float3
/// per point), `sFaceOffset` (faces + 1 uint32 prefix sums, first 0, non-decreasing, last the
/// face-vertex count), `sFaceVertex` (a point index below the point count per face-vertex),
/// and element counts on `sPointComp`, `sFaceComp` and `sFaceVertexComp` equal to the sizes of
/// those arrays. Anything else is rejected: the result is false and `normals` is left empty.
/// No array is read outside its bounds during the check.
///
/// Every face contributes a vector to each of its corners; a point's normal is the sum of the
/// contributions at its corners, scaled to unit length. A face's direction is its Newell
/// normal (its vector area, which is the exact normal of a planar polygon and the best-fit
/// normal of a non-planar one), so n-gons, concave and non-planar faces need no
/// triangulation. The contribution of a face at a corner is its unit normal times
///   - the face's area (the length of its vector area) when `weightByArea` is set;
///   - the interior angle of the corner in radians (measured in 0..2*pi, so a reflex corner
///     of a concave face weighs more than pi) when `weightByAngle` is set;
///   - the product of both when both are set; 1 when neither is set (unit face normals are
///     averaged).
/// A face of zero area (fewer than three corners, coincident or collinear points) contributes
/// nothing. A point that no face uses, or whose contributions cancel out, gets (0, 0, 0).
/// Face geometry is computed in double precision, so tiny faces keep their direction; the
/// per-corner contributions are kept in single precision, so with area weighting a face whose
/// area underflows a float (below about 1e-38) counts as degenerate. Positions that are not
/// finite give unspecified normals at the points of their faces.
///
/// On success `normals` holds exactly one entry per point (resized as needed) and the result is
/// true. Runs in parallel with oneTBB; the result is bit-identical whatever the number of
/// threads (every point sums its contributions in ascending face-vertex order). Scratch
/// memory, each allocated once per call: the contributions (one float3 per face-vertex) and a
/// point-to-face-vertex table (see `FaceVertexAdjacency`) with the counters that build it.
ZELVANE_ALGORITHMS_API bool computeMeshVertexNormals(const Object& mesh, bool weightByArea,
                                                     bool weightByAngle,
                                                     Orsel::Array<Math::float3>& normals);

} // namespace Zelvane::GeometryAlgorithms
