#include "mesh_out/ZelvaneMeshToKova.h"

#include "common/ProfilerCategories.h"
#include "mesh_out/MeshObjectValidation.h"
#include "mesh_out/MeshTopology.h"
#include "mesh_out/WriteColors.h"
#include "mesh_out/WriteComponentTags.h"
#include "mesh_out/WriteNormals.h"
#include "mesh_out/WriteUVs.h"

#include <exception>
#include <kova/KFnMesh.h>
#include <kova/KFnMeshData.h>
#include <kova/KProfilingScope.h>
#include <oneapi/tbb/task_group.h>
#include <vector>
#include <zelvane/geometry/Mesh.h>

namespace {

using namespace ZelvanePlugin;

// New mesh data holding an empty mesh; the null object when the host can't make mesh data.
KObject emptyMeshData() {
    KFnMeshData fnData;
    KStatus status;
    const KObject data = fnData.create(&status);
    if (status) {
        KFnMesh fnMesh;
        fnMesh.create(0, 0, KFloatPointArray(), KIntArray(), KIntArray(), data);
    }
    return data;
}

// The four groups of fill tasks of one conversion. They are waited for on every way out,
// cancelled first when an exception is leaving, so that no task outlives the arrays it fills.
struct ConversionTasks {
    oneapi::tbb::task_group topology;
    oneapi::tbb::task_group normals;
    oneapi::tbb::task_group uvs;
    oneapi::tbb::task_group colors;

    ConversionTasks() = default;
    ConversionTasks(const ConversionTasks&) = delete;
    ConversionTasks& operator=(const ConversionTasks&) = delete;
    ~ConversionTasks() {
        if (std::uncaught_exceptions() > 0) {
            for (oneapi::tbb::task_group* group : {&topology, &normals, &uvs, &colors}) {
                group->cancel();
            }
        }
        waitAll();
    }
    void waitAll() {
        topology.wait();
        normals.wait();
        uvs.wait();
        colors.wait();
    }
};

// What one conversion holds while its tasks run. The arrays are declared before the task
// groups so that the groups, destroyed first, wait for the tasks that fill them.
class Conversion {
public:
    Conversion(const Zelvane::Object& object, const ZelvaneMeshToKovaOpts& options)
        : object_(object), options_(options) {}

    KObject run(const KObject& emptyResult) {
        readTopology(object_, topology_, host_, tasks_.topology, validation_);
        if (validation_.failed()) {
            return failed(emptyResult);
        }
        if (options_.transferNormals) {
            readNormals(object_, topology_, normals_, tasks_.normals, validation_);
        }
        uvSets_ = readUVSets(object_, topology_, validation_);
        fillUVSets(uvSets_, topology_, tasks_.uvs, validation_);
        colorSets_ = readColorSets(object_, options_.properties, topology_, validation_);
        fillColorSets(colorSets_, topology_, tasks_.colors, validation_);

        tasks_.topology.wait();
        if (validation_.failed()) {
            return failed(emptyResult);
        }
        KFnMesh fnMesh;
        {
            KProfilingScope scope(meshConverterCategory(), kProfilerColor, "write kova mesh");
            KStatus status;
            fnMesh.create(static_cast<int>(topology_.pointCount),
                          static_cast<int>(topology_.faceCount), host_.points, host_.polygonCounts,
                          host_.polygonConnects, emptyResult, &status);
            if (!status) {
                return emptyResult;
            }
        }
        tasks_.topology.run([this] { host_.points.clear(); });

        tasks_.normals.wait();
        if (validation_.failed()) {
            return failed(emptyMeshData());
        }
        writeNormals(fnMesh, normals_);
        normals_ = NormalsRecord(); // the host holds its copy: lower the memory held from here on

        tasks_.uvs.wait();
        if (validation_.failed()) {
            return failed(emptyMeshData());
        }
        writeUVSets(fnMesh, host_, uvSets_);

        tasks_.colors.wait();
        if (validation_.failed()) {
            return failed(emptyMeshData());
        }
        writeColorSets(fnMesh, host_.polygonConnects, colorSets_);

        writeComponentTags(emptyResult, object_, options_.componentTags, topology_, validation_);
        if (validation_.failed()) {
            return failed(emptyMeshData());
        }
        tasks_.waitAll();
        return emptyResult;
    }

private:
    // Reports the fault once every task is done (so that the first fault is the one shown)
    // and gives back the empty mesh.
    KObject failed(const KObject& emptyResult) {
        tasks_.waitAll();
        validation_.report();
        return emptyResult;
    }

    const Zelvane::Object& object_;
    const ZelvaneMeshToKovaOpts& options_;
    MeshObjectValidation validation_;
    GraphMeshTopology topology_;
    HostMeshArrays host_;
    NormalsRecord normals_;
    std::vector<UVSetRecord> uvSets_;
    std::vector<ColorSetRecord> colorSets_;
    ConversionTasks tasks_;
};

} // namespace

KObject zelvaneMeshToKova(const Zelvane::Object& object, const ZelvaneMeshToKovaOpts& options) {
    KProfilingScope scope(meshConverterCategory(), kProfilerColor,
                          "zelvane to kova mesh conversion");
    const KObject result = emptyMeshData();
    if (result.isNull() || !Zelvane::Object::isA(object, *Zelvane::Geometry::getMeshPrototype())) {
        return result;
    }
    return Conversion(object, options).run(result);
}
