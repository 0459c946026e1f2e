// The host's OBJ reader on any text, then what `kova import` does with what it read: host
// nodes are built in a fresh scene and read back. Checked besides crashes and hangs: a failed
// read names its line and leaves no data; what was read is consistent; a failed build leaves
// the scene as it was; a build keeps every mesh's topology and every curve's shape.

#include "FuzzCheck.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <kova/KMessageCapture.h>
#include <kova/KScene.h>
#include <kova_io/HostSceneBuilder.h>
#include <kova_io/HostSceneReader.h>
#include <kova_io/ObjReader.h>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

namespace {

using ZelFuzz::check;

using namespace KovaIo;

bool idsInRange(const std::vector<int>& ids, std::size_t faceVertices, std::size_t values) {
    if (ids.size() != faceVertices) {
        return false;
    }
    return std::all_of(ids.begin(), ids.end(), [values](int id) {
        return id >= -1 && id < static_cast<long long>(values);
    });
}

void checkMesh(const MeshRecord& mesh) {
    check(mesh.points.size() % 3 == 0, "a mesh has a partial point");
    check(std::all_of(mesh.faceCounts.begin(), mesh.faceCounts.end(),
                      [](int count) { return count >= 3; }),
          "a face has fewer than 3 vertices");
    check(std::accumulate(mesh.faceCounts.begin(), mesh.faceCounts.end(), std::size_t{0}) ==
              mesh.faceVertices.size(),
          "face counts do not add up to the face-vertices");
    const std::size_t faceVertices = mesh.faceVertices.size();
    check(std::all_of(mesh.faceVertices.begin(), mesh.faceVertices.end(),
                      [&](int point) { return point >= 0 && point < mesh.pointCount(); }),
          "a face-vertex names a missing point");
    for (const UVSetRecord& set : mesh.uvSets) {
        check(set.u.size() == set.v.size() && idsInRange(set.ids, faceVertices, set.u.size()),
              "UV ids out of range");
    }
    for (const ColorSetRecord& set : mesh.colorSets) {
        check(idsInRange(set.ids, faceVertices, set.colors.size()), "colour ids out of range");
    }
    if (!mesh.normals.ids.empty()) {
        check(idsInRange(mesh.normals.ids, faceVertices, mesh.normals.xyz.size() / 3),
              "normal ids out of range");
    }
}

void checkCurve(const CurveRecord& curve) {
    check(curve.degree >= 1 && curve.cvs.size() >= static_cast<std::size_t>(curve.degree) + 1,
          "a curve has too few control points for its degree");
    check(curve.knots.size() == curve.cvs.size() + curve.degree - 1,
          "a curve's knots are not in the host's convention");
    check(curve.form >= 1 && curve.form <= 3, "a curve has no valid form");
}

// The scene built from `read`, read back, must hold the same meshes and curves.
void checkBuiltScene(const SceneData& read, const HostNodes& nodes) {
    check(nodes.meshShapes.size() == read.meshes.size(), "a mesh made no shape");
    check(nodes.curveShapes.size() == read.curves.size(), "a curve made no shape");
    SceneData back;
    const KStatus status = readHostScene(geometryShapes(), back);
    check(static_cast<bool>(status), "the built scene does not read back");
    check(back.meshes.size() == read.meshes.size() && back.curves.size() == read.curves.size(),
          "the scene reads back other geometry");
    for (std::size_t i = 0; i < read.meshes.size(); ++i) {
        check(back.meshes[i].points.size() == read.meshes[i].points.size() &&
                  back.meshes[i].faceCounts == read.meshes[i].faceCounts &&
                  back.meshes[i].faceVertices == read.meshes[i].faceVertices,
              "a mesh reads back with other topology");
    }
    for (std::size_t i = 0; i < read.curves.size(); ++i) {
        check(back.curves[i].degree == read.curves[i].degree &&
                  back.curves[i].cvs.size() == read.curves[i].cvs.size() &&
                  back.curves[i].knots == read.curves[i].knots,
              "a curve reads back with another shape");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    SceneData scene;
    const KStatus status = readObj(text, "fuzz", scene);
    if (!status) {
        const std::string reason = status.errorString().str();
        check(reason.starts_with("line ") || reason.starts_with("not an OBJ text file"),
              "a failure does not name its line");
        check(scene.meshes.empty() && scene.curves.empty(), "a failed read left data");
        return 0;
    }
    for (const MeshRecord& mesh : scene.meshes) {
        checkMesh(mesh);
    }
    for (const CurveRecord& curve : scene.curves) {
        checkCurve(curve);
    }

    KMessageCapture messages; // the host's reports are not of interest here
    KScene::reset();
    const unsigned int defaultNodes = KScene::current().nodeCount();
    HostNodes nodes;
    std::vector<std::string> renamed;
    if (!buildHostScene(scene, HostBuildOptions(), nodes, renamed)) {
        check(KScene::current().nodeCount() == defaultNodes, "a failed build changed the scene");
        return 0;
    }
    checkBuiltScene(scene, nodes);
    return 0;
}
