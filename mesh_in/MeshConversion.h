#pragma once

#include "mesh_in/FillableArray.h"
#include "mesh_in/MeshOptions.h"

#include <cstddef>
#include <cstdint>
#include <kova/KFnMesh.h>
#include <kova/KObject.h>
#include <kova/KString.h>
#include <memory>
#include <tbb/task_group.h>
#include <zelvane/Object.h>
#include <zelvane/algorithms/FaceVertexAdjacency.h>
#include <zelvane/math/Matrix.h>
#include <zelvane/math/Vector.h>

namespace ZelvanePlugin::MeshInput {

// What the steps of one mesh conversion share: the host mesh and its counts, the new object
// and its core arrays, and the two task groups the copies run in.
//
// Group A fills positions and faces, then builds the face-vertex adjacency and runs the
// colour and set copies; group B runs the normals and UV copies. Host queries stay on the
// calling thread; tasks only write their own arrays. A step that reads positions or faces
// waits for group A first.
struct MeshConversion {
    const MeshOptions& options;
    const KFnMesh& mesh;
    KObject node; // the node of the converted plug; null when the mesh came from no node
    Zelvane::Math::float4x4 normalMatrix;
    std::size_t pointCount = 0;
    std::size_t faceCount = 0;
    std::size_t faceVertexCount = 0;

    Zelvane::Object& object;
    tbb::task_group& groupA;
    tbb::task_group& groupB;

    FillableArray<Zelvane::Math::float3> positions;
    FillableArray<std::uint32_t> faceOffsets;
    FillableArray<std::uint32_t> faceVertices;

    // Built by a task of group A once a colour set is accepted; null until then.
    std::shared_ptr<Zelvane::GeometryAlgorithms::FaceVertexAdjacency> adjacency;

    // Whether the options' channel filter selects the UV set, colour set or set `name`.
    bool acceptsChannel(const KString& name) const {
        return options.channelFilter && options.channelFilter->accepts(name.view());
    }
    void waitForCoreArrays() { groupA.wait(); }
    // A mesh object of the converted positions and faces (shared, not copied) for the
    // geometry algorithms, which must not read the object that is still being filled. Call
    // after waitForCoreArrays. Null when the host's faces name points that don't exist.
    Orsel::Ptr<Zelvane::Object> temporaryMesh() const;
};

} // namespace ZelvanePlugin::MeshInput
