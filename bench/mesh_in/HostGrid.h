#pragma once

#include <cstddef>
#include <kova/KObject.h>
#include <kova/KPlug.h>
#include <mesh_in/MeshOptions.h>
#include <orsel/Ptr.h>
#include <zelvane/Object.h>

class KDataHandle;

namespace bench {

// A host mesh shape of side x side quads on a gently wavy sheet, with one UV set ("map1")
// holding one UV per point, read as the board reads it: through its world mesh plug.
struct HostGrid {
    int side = 0;
    KObject shape;
    KPlug source;
    std::size_t points = 0;
    std::size_t faces = 0;
    std::size_t faceVertices = 0;

    // Bytes of the graph arrays a conversion fills: positions, face offsets, face-vertices,
    // the UV table and its indices, and the point normals when asked for.
    std::size_t graphBytes(bool pointNormals) const;
};

HostGrid makeHostGrid(int side);

// The plug-in's exported mesh converter, with the plug-in loaded through the host's loader.
// Null (with the reason on stderr) when the plug-in can't be loaded.
using MeshConverter = Orsel::MutablePtr<Zelvane::Object> (*)(const KPlug&, KDataHandle&,
                                                             const MeshOptions&);
MeshConverter loadMeshConverter();

// What the benchmarks convert: point normals as asked, no face-vertex normals.
MeshOptions benchOptions(bool pointNormals);

} // namespace bench
