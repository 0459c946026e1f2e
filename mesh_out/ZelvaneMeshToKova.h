#pragma once

#include <kova/KObject.h>
#include <orsel/String.h>
#include <zelvane/Object.h>
#include <zelvane/geometry/Names.h>

// Options of the graph-to-host mesh conversion.
struct ZelvaneMeshToKovaOpts {
    // When false, point and face-vertex normals are not written.
    bool transferNormals = false;
    // Channel expression selecting the graph properties written as colour sets.
    Orsel::String properties = Zelvane::Geometry::sPointColor;
    // Channel expression selecting the boolean properties written as component tags.
    Orsel::String componentTags = "*";
};

// Turns a graph mesh object into host mesh data (a KFnMeshData object): points, faces and
// face-vertices, then normals (face-vertex normals before point normals), UV sets, colour
// sets and component tags. Steps are timed in the "Zelvane/MeshConverter" profiler category.
//
// Always returns mesh data: an object that is not a mesh gives the empty mesh (no points, no
// faces), silently. An inconsistent mesh object (element counts larger than its arrays, face
// offsets that do not start at 0, decrease or overrun the face-vertices, faces of fewer than
// three vertices, point or value indices out of range, core arrays of the wrong element type)
// also gives the empty mesh, with one message through KGlobal::displayError naming the first
// fault; nothing is read out of bounds. Only when the host can't make mesh data at all is the
// result the null object.
//
// Component tags that can't be added or filled are reported and the rest goes on. The one
// exception that leaves this function: a UV set named "map" followed by text that is not a
// decimal integer throws std::invalid_argument ("invalid stoi argument"), or
// std::out_of_range ("stoi argument out of range") for a number beyond int.
__attribute__((visibility("default"))) KObject
zelvaneMeshToKova(const Zelvane::Object& object, const ZelvaneMeshToKovaOpts& options);
