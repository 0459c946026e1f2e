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
/// Every face contributes one vector to each of its corners: its vector area (Newell's vector,
/// half the sum of the cross products of consecutive corners, which is the exact area normal
/// of a planar polygon and the best-fit one of a non-planar polygon) when `weightByArea` is
/// set, its unit normal (the vector area scaled to length 1) when not. N-gons, concave and
/// non-planar faces need no triangulation. A face whose vector area is zero (fewer than three
/// corners, coincident or collinear points) contributes nothing. A point's sum is the sum of
/// the contributions at its corners (a face that uses a point twice counts twice). When
/// `normalize` is set the sum is scaled to unit length, and a point whose sum is zero (no face
/// uses it, or its contributions cancel out) gets (0, 0, 0); when not, the sum itself is the
/// result: with area weighting the summed vector areas of the point's faces, without it the
/// summed unit normals. The mesh converter asks for (true, true): area-weighted unit normals.
///
/// Precision: vector areas are computed in double precision and rounded to single precision
/// once, so when weighted by area a face whose vector area underflows a float (below about
/// 1e-38) counts as degenerate, and one whose area overflows it (above about 3e38) gives
/// unspecified results at its points, as do positions that are not finite. Sums are kept in
/// single precision. Unit lengths are taken in single precision, or in double precision when
/// the squared length of a sum is not a normal float, so tiny sums keep their direction.
///
/// On success `normals` holds exactly one entry per point (resized as needed) and the result is
/// true. Runs in parallel with oneTBB; the result is bit-identical whatever the number of
/// threads. The faces are cut into chunks of consecutive faces by face-vertex count alone;
/// each chunk sums its contributions per point in face order into an accumulator spanning the
/// point indices it uses, and each point then adds up the accumulators covering it in chunk
/// order. When those accumulators would hold more entries than the mesh has face-vertices
/// (points badly ordered against faces), the contributions are stored per face-vertex instead
/// and each point adds up its own in ascending face-vertex order. Scratch memory is allocated
/// once per call: the accumulators (at most one float3 per face-vertex), or the per-face-vertex
/// contributions and a point-to-face-vertex table (see `FaceVertexAdjacency`).
ZELVANE_ALGORITHMS_API bool computeMeshVertexNormals(const Object& mesh, bool weightByArea,
                                                     bool normalize,
                                                     Orsel::Array<Math::float3>& normals);

} // namespace Zelvane::GeometryAlgorithms
