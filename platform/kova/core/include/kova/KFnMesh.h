#pragma once

#include <kova/KColorArray.h>
#include <kova/KExport.h>
#include <kova/KFloatArray.h>
#include <kova/KFloatPointArray.h>
#include <kova/KFnDagNode.h>
#include <kova/KIntArray.h>
#include <kova/KSpace.h>
#include <kova/KStringArray.h>
#include <kova/KVectorArray.h>

namespace kova::detail {
class MeshData;
}

// Function set of polygon meshes. It works on mesh data objects (KFnMeshData) and on mesh
// shape nodes (type "mesh"); on a shape it works on the mesh data the shape outputs, so
// edits through it are seen by everything holding that data.
//
// Every operation validates its input and fails with kInvalidParameter, changing nothing,
// instead of storing a broken mesh. See kova/detail/MeshData.h for how normals, UV sets
// (with unmapped faces) and colour sets are stored.
//
// Spaces: mesh data has no transform, so every space reads and writes object space. On a
// shape, kWorld reads points through the shape's world matrix; the writers take object space
// only and refuse kWorld.
class KOVA_API KFnMesh : public KFnDagNode {
public:
    KFnMesh() = default;
    // Attaches to a mesh data object or a mesh shape node.
    explicit KFnMesh(const KObject& meshOrShape, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kMesh; }
    // Attaches to a mesh data object or a mesh shape node.
    KStatus setObject(const KObject& meshOrShape);

    // Builds a mesh from `numVertices` points and `numPolygons` polygons (each with at least
    // three vertices; `polygonConnects` holds their vertex ids in [0, numVertices)).
    // The owner decides where it goes: a mesh data object is filled (replacing what it held,
    // tags included); a transform node gets a new mesh shape under it (the shape is
    // returned); the null object makes a transform with a mesh shape in the scene (the
    // transform is returned). The function set is attached to the new mesh.
    KObject create(int numVertices, int numPolygons, const KFloatPointArray& vertexArray,
                   const KIntArray& polygonCounts, const KIntArray& polygonConnects,
                   const KObject& parentOrOwner = KObject::kNullObj, KStatus* status = nullptr);

    int numVertices(KStatus* status = nullptr) const;
    int numPolygons(KStatus* status = nullptr) const;
    int numFaceVertices(KStatus* status = nullptr) const;
    int numNormals(KStatus* status = nullptr) const;
    int numUVs(const KString* uvSet = nullptr, KStatus* status = nullptr) const;
    int numColors(const KString* colorSet = nullptr, KStatus* status = nullptr) const;

    // Three floats per vertex, valid until the mesh changes.
    const float* getRawPoints(KStatus* status = nullptr) const;
    KStatus getPoints(KFloatPointArray& points, KSpace::Space space = KSpace::kObject) const;
    // Vertex count per polygon and the flat vertex list.
    KStatus getVertices(KIntArray& vertexCounts, KIntArray& vertexList) const;
    KStatus getPolygonVertices(int polygonId, KIntArray& vertexList) const;

    // Three floats per normal, valid until the mesh changes.
    const float* getRawNormals(KStatus* status = nullptr) const;
    // Normal ids per polygon vertex count and the per-face-vertex normal ids.
    KStatus getNormalIds(KIntArray& normalIdCounts, KIntArray& normalIds) const;
    // Sets the normal of the given face-vertices (faces[i], vertices[i]); each pair must
    // name a vertex of that face.
    KStatus setFaceVertexNormals(const KVectorArray& normals, const KIntArray& faces,
                                 const KIntArray& vertices, KSpace::Space space = KSpace::kObject);
    // Sets the normal of every face-vertex of each given vertex.
    KStatus setVertexNormals(const KVectorArray& normals, const KIntArray& vertices,
                             KSpace::Space space = KSpace::kObject);

    // UV sets. A null set name means the current UV set.
    KStatus getUVSetNames(KStringArray& names) const;
    KString getCurrentUVSetName(KStatus* status = nullptr) const;
    KStatus setCurrentUVSetName(const KString& name);
    // Adds an empty UV set (every face unmapped).
    KStatus createUVSetDataMesh(const KString& name);
    KString createUVSet(const KString& name, KStatus* status = nullptr);
    // Removes a UV set; the last one cannot be removed.
    KStatus deleteUVSet(const KString& name);
    KStatus getUVs(KFloatArray& uArray, KFloatArray& vArray, const KString* uvSet = nullptr) const;
    // Replaces the set's UV table; its assignments are cleared when they no longer fit.
    KStatus setUVs(const KFloatArray& uArray, const KFloatArray& vArray,
                   const KString* uvSet = nullptr);
    // Per polygon 0 (unmapped) or its vertex count, then the UV ids of the mapped faces in
    // face-vertex order.
    KStatus getAssignedUVs(KIntArray& uvCounts, KIntArray& uvIds,
                           const KString* uvSet = nullptr) const;
    KStatus assignUVs(const KIntArray& uvCounts, const KIntArray& uvIds,
                      const KString* uvSet = nullptr);

    // Colour sets. A null set name means the current colour set.
    KStatus getColorSetNames(KStringArray& names) const;
    KString getCurrentColorSetName(KStatus* status = nullptr) const;
    // Adds an empty colour set; `representation` is 1 (alpha), 3 (RGB) or 4 (RGBA). The
    // first colour set made becomes the current one.
    KStatus createColorSetDataMesh(const KString& name, bool clamped = false,
                                   int representation = 4);
    KStatus deleteColorSet(const KString& name);
    // 1, 3 or 4; 0 (with a failed status) for an unknown set.
    int getColorRepresentation(const KString& colorSet, KStatus* status = nullptr) const;
    bool isColorClamped(const KString& colorSet, KStatus* status = nullptr) const;
    // A clamped set keeps its colours within [0, 1]; clamping changes the stored colours.
    KStatus setIsColorClamped(const KString& colorSet, bool clamped);
    KStatus getColors(KColorArray& colors, const KString* colorSet = nullptr) const;
    KStatus setColors(const KColorArray& colors, const KString* colorSet = nullptr);
    // One colour id per face-vertex: an index into the colour table or -1 for none.
    KStatus assignColors(const KIntArray& colorIds, const KString* colorSet = nullptr);
    // One colour per face-vertex; (-1, -1, -1, -1) where none is assigned.
    KStatus getFaceVertexColors(KColorArray& colors, const KString* colorSet = nullptr) const;

private:
    // The mesh behind the attached object (for a shape: its output mesh), or null with a
    // failed status. `operation` names the failure-injection point.
    kova::detail::MeshData* mesh(const char* operation, KStatus& status) const;
    KStatus objectSpaceOnly(KSpace::Space space) const;
};
