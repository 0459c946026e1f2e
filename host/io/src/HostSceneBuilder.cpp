#include <algorithm>
#include <cctype>
#include <cmath>
#include <kova/KColorArray.h>
#include <kova/KDGModifier.h>
#include <kova/KDagModifier.h>
#include <kova/KDoubleArray.h>
#include <kova/KFloatArray.h>
#include <kova/KFloatPointArray.h>
#include <kova/KFnDagNode.h>
#include <kova/KFnMesh.h>
#include <kova/KFnMeshData.h>
#include <kova/KFnNurbsCurve.h>
#include <kova/KFnNurbsCurveData.h>
#include <kova/KFnSet.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/KPointArray.h>
#include <kova/KScene.h>
#include <kova/detail/MeshData.h>
#include <kova_io/FileText.h>
#include <kova_io/HostSceneBuilder.h>
#include <map>

namespace KovaIo {

namespace {

std::string hostName(const std::string& wanted, const char* fallback) {
    std::string name = wanted;
    std::replace_if(
        name.begin(), name.end(),
        [](char c) { return !std::isalnum(static_cast<unsigned char>(c)) && c != '_'; }, '_');
    if (name.empty()) {
        return fallback;
    }
    return std::isdigit(static_cast<unsigned char>(name.front())) ? "_" + name : name;
}

KStatus failure(const char* kind, const std::string& name, const KStatus& status) {
    return ioFailure(std::string(kind) + " '" + name + "': " + status.errorString().str());
}

template <class Array, class T>
Array hostArray(const std::vector<T>& values) {
    return Array(values.data(), static_cast<unsigned int>(values.size()));
}

// Normals go straight into the mesh data: the function set only takes them per face-vertex
// and would give every face-vertex a normal of its own, losing the file's sharing.
KStatus setNormals(const KObject& data, const NormalsRecord& normals) {
    kova::detail::MeshData* mesh = kova::detail::meshDataOf(data);
    const int count = static_cast<int>(normals.xyz.size() / 3);
    if (normals.ids.size() != static_cast<std::size_t>(mesh->numFaceVertices()) ||
        normals.xyz.size() % 3 != 0 ||
        std::any_of(normals.ids.begin(), normals.ids.end(), [&](int id) { return id >= count; })) {
        return KStatus(KStatus::kInvalidParameter, "normal ids do not fit the mesh");
    }
    using kova::detail::BulkVector;
    if (std::all_of(normals.ids.begin(), normals.ids.end(), [](int id) { return id >= 0; })) {
        mesh->setNormals(BulkVector<float>(normals.xyz.begin(), normals.xyz.end()),
                         BulkVector<int>(normals.ids.begin(), normals.ids.end()));
        return KStatus();
    }
    // Face-vertices without a normal keep the computed one of their vertex.
    auto [values, ids] = mesh->takeNormals();
    const int base = static_cast<int>(values.size() / 3);
    values.insert(values.end(), normals.xyz.begin(), normals.xyz.end());
    for (std::size_t k = 0; k < normals.ids.size(); ++k) {
        if (normals.ids[k] >= 0) {
            ids[k] = base + normals.ids[k];
        }
    }
    mesh->setNormals(std::move(values), std::move(ids));
    mesh->compactNormals();
    return KStatus();
}

KStatus setUVSets(KFnMesh& fn, const MeshRecord& m) {
    bool keepsDefault = false;
    for (const UVSetRecord& set : m.uvSets) {
        const KString name(set.name);
        keepsDefault = keepsDefault || set.name == "map1";
        if (set.name != "map1") {
            if (KStatus s = fn.createUVSetDataMesh(name); !s) {
                return s;
            }
        }
        if (set.ids.size() != m.faceVertices.size() || set.u.size() != set.v.size()) {
            return KStatus(KStatus::kInvalidParameter,
                           KString("UV set '" + set.name + "' does not fit the mesh"));
        }
        KIntArray counts;
        KIntArray ids;
        std::size_t first = 0;
        for (int count : m.faceCounts) {
            const auto begin = set.ids.begin() + static_cast<std::ptrdiff_t>(first);
            const bool mapped = std::all_of(begin, begin + count, [](int id) { return id >= 0; });
            counts.append(mapped ? count : 0);
            for (int k = 0; mapped && k < count; ++k) {
                ids.append(begin[k]);
            }
            first += static_cast<std::size_t>(count);
        }
        KStatus s = fn.setUVs(hostArray<KFloatArray>(set.u), hostArray<KFloatArray>(set.v), &name);
        s = s ? fn.assignUVs(counts, ids, &name) : s;
        if (!s) {
            return s;
        }
    }
    if (!m.uvSets.empty()) {
        if (KStatus s = fn.setCurrentUVSetName(KString(m.uvSets.front().name)); !s) {
            return s;
        }
        if (!keepsDefault) {
            return fn.deleteUVSet("map1");
        }
    }
    return KStatus();
}

KStatus setColorSets(KFnMesh& fn, const MeshRecord& m) {
    for (const ColorSetRecord& set : m.colorSets) {
        const KString name(set.name);
        KColorArray colors;
        for (const auto& c : set.colors) {
            colors.append(KColor(c[0], c[1], c[2], c[3]));
        }
        KStatus s = fn.createColorSetDataMesh(name, false, set.representation);
        s = s ? fn.setColors(colors, &name) : s;
        s = s ? fn.assignColors(hostArray<KIntArray>(set.ids), &name) : s;
        if (!s) {
            return s;
        }
    }
    return KStatus();
}

KStatus checkFaceSets(const std::vector<FaceSetRecord>& sets, int faceCount) {
    for (const FaceSetRecord& set : sets) {
        for (int f : set.faces) {
            if (f < 0 || f >= faceCount) {
                return KStatus(KStatus::kInvalidParameter,
                               KString("'" + set.name + "' names face " + std::to_string(f) +
                                       " of " + std::to_string(faceCount)));
            }
        }
    }
    return KStatus();
}

KStatus makeMeshData(const MeshRecord& m, KObject& data) {
    KStatus status;
    KFnMeshData dataFn;
    data = dataFn.create(&status);
    if (!status) {
        return status;
    }
    KFloatPointArray points;
    for (std::size_t i = 0; i + 2 < m.points.size(); i += 3) {
        points.append(KFloatPoint(m.points[i], m.points[i + 1], m.points[i + 2]));
    }
    KFnMesh fn;
    fn.create(m.pointCount(), m.faceCount(), points, hostArray<KIntArray>(m.faceCounts),
              hostArray<KIntArray>(m.faceVertices), data, &status);
    status = status ? setUVSets(fn, m) : status;
    status = status ? setColorSets(fn, m) : status;
    if (status && !m.normals.ids.empty()) {
        status = setNormals(data, m.normals);
    }
    status = status ? checkFaceSets(m.groups, m.faceCount()) : status;
    return status ? checkFaceSets(m.materials, m.faceCount()) : status;
}

KStatus makeCurveData(const CurveRecord& c, KObject& data) {
    KStatus status;
    KFnNurbsCurveData dataFn;
    data = dataFn.create(&status);
    if (!status) {
        return status;
    }
    KPointArray cvs;
    for (const auto& cv : c.cvs) {
        const double w = c.rational ? cv[3] : 1.0;
        cvs.append(KPoint(cv[0] * w, cv[1] * w, cv[2] * w, w));
    }
    if (c.degree < 1 || c.form < KFnNurbsCurve::kOpen || c.form > KFnNurbsCurve::kPeriodic) {
        return KStatus(KStatus::kInvalidParameter, "invalid degree or form");
    }
    KFnNurbsCurve fn;
    fn.create(cvs, hostArray<KDoubleArray>(c.knots), static_cast<unsigned int>(c.degree),
              static_cast<KFnNurbsCurve::Form>(c.form), false, c.rational, data, &status);
    return status;
}

// Builds the nodes once all data has been made.
class NodeBuilder {
public:
    NodeBuilder(const HostBuildOptions& options, HostNodes& nodes,
                std::vector<std::string>& renamed)
        : options_(options), nodes_(nodes), renamed_(renamed) {}

    KStatus shape(const std::string& name, const char* kind, const char* type, const char* input,
                  const KObject& data, KObject& shape);
    KStatus meshSets(const MeshRecord& m, const KObject& shape);

private:
    std::string named(const char* kind, const std::string& wanted, const KString& got) {
        if (got.str() != wanted) {
            renamed_.push_back(std::string(kind) + " '" + wanted + "' -> '" + got.str() + "'");
        }
        return got.str();
    }
    KStatus faceSet(const std::string& name, KObject& set);
    KStatus shadingGroup(const std::string& name, KObject& group);
    static KStatus addFaces(const KObject& set, const KDagPath& path, const std::vector<int>& faces,
                            int faceCount);

    const HostBuildOptions& options_;
    HostNodes& nodes_;
    std::vector<std::string>& renamed_;
    std::map<std::string, KObject> sets_;
    std::map<std::string, KObject> groups_;
};

KStatus NodeBuilder::shape(const std::string& name, const char* kind, const char* type,
                           const char* input, const KObject& data, KObject& shape) {
    KStatus status;
    KFnDagNode dagFn;
    const KObject transform =
        dagFn.create("transform", KString(hostName(name, kind)), KObject::kNullObj, &status);
    if (!status) {
        return status;
    }
    const std::string transformName = named(kind, name, dagFn.name());
    KDagModifier modifier;
    shape = modifier.createNode(type, transform, &status);
    status = status ? modifier.doIt() : status;
    if (!status) {
        return status;
    }
    KFnDependencyNode shapeFn(shape);
    shapeFn.setName(KString(transformName + "Shape"), &status);
    return status ? shapeFn.findPlug(input, false).setKObject(data) : status;
}

KStatus NodeBuilder::faceSet(const std::string& name, KObject& set) {
    if (auto at = sets_.find(name); at != sets_.end()) {
        set = at->second;
        return KStatus();
    }
    KStatus status;
    KFnSet setFn;
    set = setFn.create(KSelectionList(), KFnSet::kNone, &status);
    if (status) {
        named("face set", name, setFn.setName(KString(hostName(name, "set")), &status));
    }
    if (status) {
        sets_.emplace(name, set);
        nodes_.faceSets.push_back(set);
    }
    return status;
}

KStatus NodeBuilder::shadingGroup(const std::string& name, KObject& group) {
    if (auto at = groups_.find(name); at != groups_.end()) {
        group = at->second;
        return KStatus();
    }
    KStatus status;
    KFnDependencyNode fn;
    const KObject shader = fn.create("lambert", KString(hostName(name, "material")), &status);
    if (!status) {
        return status;
    }
    const std::string shaderName = named("material", name, fn.name());
    const KPlug message = fn.findPlug("message", false);
    group = fn.create("shadingEngine", KString(shaderName + "SG"), &status);
    KDGModifier modifier;
    status = status ? modifier.connect(message, fn.findPlug("surfaceShader", false)) : status;
    status = status ? modifier.doIt() : status;
    if (status) {
        groups_.emplace(name, group);
        nodes_.shadingGroups.push_back(group);
    }
    return status;
}

KStatus NodeBuilder::addFaces(const KObject& set, const KDagPath& path,
                              const std::vector<int>& faces, int faceCount) {
    if (static_cast<int>(faces.size()) == faceCount) {
        return KFnSet(set).addMember(path);
    }
    KFnSingleIndexedComponent componentFn;
    const KObject component = componentFn.create(KFn::kMeshPolygonComponent);
    KStatus status = componentFn.addElements(hostArray<KIntArray>(faces));
    return status ? KFnSet(set).addMember(path, component) : status;
}

KStatus NodeBuilder::meshSets(const MeshRecord& m, const KObject& shape) {
    KDagPath path;
    KStatus status = KDagPath::getAPathTo(shape, path);
    for (std::size_t i = 0; status && options_.faceSets && i < m.groups.size(); ++i) {
        KObject set;
        status = faceSet(m.groups[i].name, set);
        status = status ? addFaces(set, path, m.groups[i].faces, m.faceCount()) : status;
    }
    if (!status || !options_.materials) {
        return status;
    }
    std::vector<int> unassigned(static_cast<std::size_t>(m.faceCount()), 1);
    for (const FaceSetRecord& material : m.materials) {
        KObject group;
        status = shadingGroup(material.name, group);
        status = status ? addFaces(group, path, material.faces, m.faceCount()) : status;
        if (!status) {
            return status;
        }
        for (int f : material.faces) {
            unassigned[static_cast<std::size_t>(f)] = 0;
        }
    }
    std::vector<int> rest;
    for (int f = 0; f < m.faceCount(); ++f) {
        if (unassigned[static_cast<std::size_t>(f)] != 0) {
            rest.push_back(f);
        }
    }
    const KObject initial = KScene::current().findNode("initialShadingGroup");
    return rest.empty() || initial.isNull() ? status : addFaces(initial, path, rest, m.faceCount());
}

// A file's numbers must be finite: the formats allow writing infinities and NaNs, but no
// geometry is made of them and they would not survive a round trip.
KStatus checkFinite(const MeshRecord& m) {
    const auto finite = [](float value) { return std::isfinite(value); };
    if (!std::all_of(m.points.begin(), m.points.end(), finite)) {
        return ioFailure("a point coordinate is not a finite number");
    }
    if (!std::all_of(m.normals.xyz.begin(), m.normals.xyz.end(), finite)) {
        return ioFailure("a normal is not finite");
    }
    for (const UVSetRecord& set : m.uvSets) {
        if (!std::all_of(set.u.begin(), set.u.end(), finite) ||
            !std::all_of(set.v.begin(), set.v.end(), finite)) {
            return ioFailure("UV set '" + set.name + "' holds a value that is not finite");
        }
    }
    for (const ColorSetRecord& set : m.colorSets) {
        for (const auto& color : set.colors) {
            if (!std::all_of(color.begin(), color.end(), finite)) {
                return ioFailure("colour set '" + set.name + "' holds a value that is not finite");
            }
        }
    }
    return KStatus();
}

KStatus checkFinite(const CurveRecord& c) {
    for (const auto& cv : c.cvs) {
        if (!std::all_of(cv.begin(), cv.end(), [](double value) { return std::isfinite(value); })) {
            return ioFailure("a CV is not finite");
        }
    }
    return KStatus();
}

} // namespace

KStatus buildHostScene(const SceneData& scene, const HostBuildOptions& options, HostNodes& nodes,
                       std::vector<std::string>& renamed) {
    nodes = HostNodes();
    std::vector<KObject> meshData(scene.meshes.size());
    std::vector<KObject> curveData(scene.curves.size());
    for (std::size_t i = 0; i < scene.meshes.size(); ++i) {
        KStatus s = checkFinite(scene.meshes[i]);
        if (s = s ? makeMeshData(scene.meshes[i], meshData[i]) : s; !s) {
            return failure("mesh", scene.meshes[i].name, s);
        }
    }
    for (std::size_t i = 0; i < scene.curves.size(); ++i) {
        KStatus s = checkFinite(scene.curves[i]);
        if (s = s ? makeCurveData(scene.curves[i], curveData[i]) : s; !s) {
            return failure("curve", scene.curves[i].name, s);
        }
    }
    NodeBuilder builder(options, nodes, renamed);
    for (std::size_t i = 0; i < scene.meshes.size(); ++i) {
        const MeshRecord& m = scene.meshes[i];
        KObject shape;
        KStatus s = builder.shape(m.name, "mesh", "mesh", "inMesh", meshData[i], shape);
        s = s ? builder.meshSets(m, shape) : s;
        if (!s) {
            return failure("mesh", m.name, s);
        }
        nodes.meshShapes.push_back(shape);
    }
    for (std::size_t i = 0; i < scene.curves.size(); ++i) {
        KObject shape;
        if (KStatus s = builder.shape(scene.curves[i].name, "curve", "nurbsCurve", "create",
                                      curveData[i], shape);
            !s) {
            return failure("curve", scene.curves[i].name, s);
        }
        nodes.curveShapes.push_back(shape);
    }
    return KStatus();
}

} // namespace KovaIo
