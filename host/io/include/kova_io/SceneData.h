#pragma once

#include <array>
#include <string>
#include <vector>

// Geometry as files hold it, independent of any one format and of the host scene: what the
// file readers produce, what the file writers consume, and what the host scene is built from
// and read back into.
//
// Indexing follows indexed formats such as OBJ: points are shared by the faces that use them,
// and every per-face-vertex channel (normals, UVs, colours) is a table of values plus one
// table index per face-vertex, -1 where the face-vertex has no value.
namespace KovaIo {

// A named per-face-vertex UV channel. A face counts as mapped only when all its face-vertices
// have an id; the host keeps UVs per face, mapped or not.
struct UVSetRecord {
    std::string name;
    std::vector<float> u;
    std::vector<float> v;
    std::vector<int> ids; // per face-vertex, into u/v, or -1
};

// A named per-face-vertex colour channel; colours are RGBA (alpha 1 for RGB data).
struct ColorSetRecord {
    std::string name;
    int representation = 3; // 3 RGB, 4 RGBA (the host's values)
    std::vector<std::array<float, 4>> colors;
    std::vector<int> ids; // per face-vertex, into colors, or -1
};

// User normals: a table of xyz triples and one id per face-vertex. Empty ids: the mesh has
// none, and the host computes its own.
struct NormalsRecord {
    std::vector<float> xyz;
    std::vector<int> ids; // per face-vertex, into xyz (by triple), or -1
};

// Faces by name: an OBJ group (`g`) or a material (`usemtl`).
struct FaceSetRecord {
    std::string name;
    std::vector<int> faces; // ascending face indices
};

struct MeshRecord {
    std::string name;
    std::vector<float> points;     // xyz per point
    std::vector<int> faceCounts;   // vertices per face (>= 3)
    std::vector<int> faceVertices; // point index per face-vertex, faces in order
    NormalsRecord normals;
    std::vector<UVSetRecord> uvSets; // the first one is the current set
    std::vector<ColorSetRecord> colorSets;
    std::vector<FaceSetRecord> groups;
    std::vector<FaceSetRecord> materials; // each face in at most one

    int pointCount() const { return static_cast<int>(points.size() / 3); }
    int faceCount() const { return static_cast<int>(faceCounts.size()); }
    int faceVertexCount() const { return static_cast<int>(faceVertices.size()); }
};

// A NURBS curve in the host's knot convention (numCVs + degree - 1 knots: the full vector of
// a file without its first and last knot).
struct CurveRecord {
    std::string name;
    int degree = 3;
    int form = 1; // the host's forms: 1 open, 2 closed, 3 periodic
    bool rational = false;
    std::vector<std::array<double, 4>> cvs; // cartesian x, y, z and the weight w
    std::vector<double> knots;
};

struct SceneData {
    std::vector<MeshRecord> meshes;
    std::vector<CurveRecord> curves;
    // What a reader or writer passed over or could not carry, one line each.
    std::vector<std::string> warnings;
};

} // namespace KovaIo
