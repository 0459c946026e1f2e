#pragma once

#include <atomic>
#include <kova/KColor.h>
#include <kova/detail/BulkAllocator.h>
#include <kova/detail/GeometryData.h>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace kova::detail {

// A polygon mesh: points, polygons as counts plus a flat vertex list, normals, UV sets,
// colour sets and (through GeometryData) component tags.
//
// Face-vertices are numbered in polygon order: face f owns the entries offset(f) ..
// offset(f) + counts[f] - 1 of `connects`.
//
// Normals are a value table (three floats each) plus one normal id per face-vertex. A mesh
// without user normals carries computed ones: one per vertex, the normalised sum of the
// (area-weighted) normals of the faces around it, with normal id = vertex id. Computed normals
// are made when they are first read (points and faces only change through reset, which makes
// them due again), so a mesh whose normals are replaced before anyone reads them never pays
// for them. Reads from several threads at once are safe.
//
// A UV set stores UV ids only for mapped faces, in face-vertex order, so its id count is below
// the face-vertex count whenever some face is unmapped. Only then does it also store, per
// face, either 0 (face unmapped) or the face's vertex count; with no ids no face is mapped,
// with one per face-vertex every face is.
//
// A colour set stores a colour table and one colour id per face-vertex, -1 where no colour
// is assigned; until colours are assigned its id list is empty (nothing assigned).
//
// Copies (clone) are deep: nothing is shared between the original and the copy.
//
// The per-element arrays are BulkVectors: big ones sit in huge pages that are reused from one
// evaluation to the next, and growing them does not zero-fill what is overwritten next.
class KOVA_API MeshData : public GeometryData {
public:
    struct UVSet {
        std::string name;
        BulkVector<float> u;
        BulkVector<float> v;
        BulkVector<int> faceCounts; // per face: 0 or its vertex count; empty: none or all mapped
        BulkVector<int> ids;        // mapped faces only, in face-vertex order
    };
    struct ColorSet {
        std::string name;
        int representation = 4; // 1 alpha, 3 RGB, 4 RGBA
        bool clamped = false;
        BulkVector<KColor> colors;
        BulkVector<int> ids; // per face-vertex (-1: none), or empty
    };

    MeshData();

    std::shared_ptr<DataObject> clone() const override;
    KString toText() const override;
    int elementCount(KFn::Type componentType) const override;

    int numVertices() const { return static_cast<int>(points.size() / 3); }
    int numPolygons() const { return static_cast<int>(counts.size()); }
    int numFaceVertices() const { return static_cast<int>(connects.size()); }
    // One per vertex while the computed normals are due, without computing them.
    int numNormals() const;
    // The start of a float buffer, never null (even when the buffer is empty), so that
    // callers can tell an empty mesh from a failed read.
    static const float* rawStart(const BulkVector<float>& values);
    // Start of each face's face-vertices, plus the face-vertex count at the end.
    BulkVector<int> faceOffsets() const;

    // Replaces the whole mesh with valid topology: computed normals, one empty UV set
    // "map1" (current), no colour sets, no tags.
    void reset(BulkVector<float> newPoints, BulkVector<int> newCounts, BulkVector<int> newConnects);

    // The normal table (three floats per normal) and the normal id of every face-vertex; the
    // computed normals are made first when they are due.
    const BulkVector<float>& normals() const;
    const BulkVector<int>& normalIds() const;
    // Makes `values` (three floats per normal) and `ids` (one per face-vertex, each naming a
    // normal) the mesh's normals, as they are: nothing is dropped or renumbered.
    void setNormals(BulkVector<float> values, BulkVector<int> ids);
    // Hands the normals over for an edit (computed ones made first when due); the mesh has
    // none until setNormals gives them back.
    std::pair<BulkVector<float>, BulkVector<int>> takeNormals();
    // Drops normals that no face-vertex refers to and renumbers the ids in order of first use.
    void compactNormals();

    UVSet* findUVSet(const std::string& name);
    ColorSet* findColorSet(const std::string& name);

    BulkVector<float> points; // x, y, z per vertex
    BulkVector<int> counts;   // vertices per polygon
    BulkVector<int> connects; // vertex per face-vertex
    std::vector<UVSet> uvSets;
    std::string currentUVSet;
    std::vector<ColorSet> colorSets;
    std::string currentColorSet;

private:
    // Makes the computed normals when they are due.
    void settleNormals() const;
    void computeVertexNormals() const;

    // Set under normalsMutex_; read without it once false (double-checked).
    mutable std::atomic<bool> normalsDue_{true};
    mutable std::mutex normalsMutex_;
    mutable BulkVector<float> normals_;
    mutable BulkVector<int> normalIds_; // per face-vertex
};

// The mesh data behind `object`, or null.
inline MeshData* meshDataOf(const KObject& object) {
    return entityAs<MeshData>(object.entity());
}

} // namespace kova::detail
