#include "HostGrid.h"

#include <cmath>
#include <iostream>
#include <kova/KFloatArray.h>
#include <kova/KFloatPointArray.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnMesh.h>
#include <kova/KIntArray.h>
#include <kova/KPluginLoader.h>
#include <zelvane/math/Vector.h>

namespace bench {

std::size_t HostGrid::graphBytes(bool pointNormals) const {
    using Zelvane::Math::float2;
    using Zelvane::Math::float3;
    std::size_t bytes = points * sizeof(float3) + (faces + 1) * sizeof(std::uint32_t) +
                        faceVertices * sizeof(std::uint32_t) + points * sizeof(float2) +
                        faceVertices * sizeof(std::uint32_t);
    if (pointNormals) {
        bytes += points * sizeof(float3);
    }
    return bytes;
}

HostGrid makeHostGrid(int side) {
    const int row = side + 1;
    const unsigned int pointCount = static_cast<unsigned int>(row) * row;
    const unsigned int faceCount = static_cast<unsigned int>(side) * side;
    KFloatPointArray points;
    KFloatArray u, v;
    points.setLength(pointCount);
    u.setLength(pointCount);
    v.setLength(pointCount);
    for (int y = 0; y < row; ++y) {
        for (int x = 0; x < row; ++x) {
            const unsigned int p = static_cast<unsigned int>(y * row + x);
            const float height = 0.1f * std::sin(0.05f * float(x)) * std::cos(0.07f * float(y));
            points[p] = KFloatPoint(float(x), float(y), height);
            u[p] = float(x) / float(side);
            v[p] = float(y) / float(side);
        }
    }
    KIntArray counts(faceCount, 4);
    KIntArray connects;
    connects.setLength(4 * faceCount);
    unsigned int corner = 0;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const int p = y * row + x;
            for (int q : {p, p + 1, p + row + 1, p + row}) {
                connects[corner++] = q;
            }
        }
    }
    HostGrid grid;
    grid.side = side;
    KFnMesh fn;
    fn.create(static_cast<int>(pointCount), static_cast<int>(faceCount), points, counts, connects);
    grid.shape = fn.object();
    fn.setUVs(u, v);
    fn.assignUVs(counts, connects);
    grid.source =
        KFnDependencyNode(grid.shape).findPlug("worldMesh", false).elementByLogicalIndex(0);
    grid.points = pointCount;
    grid.faces = faceCount;
    grid.faceVertices = connects.length();
    return grid;
}

MeshConverter loadMeshConverter() {
    KStatus status;
    const KObject plugin = KPluginLoader::load(PLUGIN_PATH, &status);
    if (!status) {
        std::cerr << "cannot load the plug-in: " << status.errorString() << "\n";
        return nullptr;
    }
    return reinterpret_cast<MeshConverter>(
        KPluginLoader::symbol(plugin, "_Z16kovaMeshToObjectRK5KPlugR11KDataHandleRK11MeshOptions"));
}

MeshOptions benchOptions(bool pointNormals) {
    MeshOptions options;
    options.pointNormals = pointNormals;
    options.faceVertexNormals = false;
    return options;
}

} // namespace bench
