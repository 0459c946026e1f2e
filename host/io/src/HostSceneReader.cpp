#include <algorithm>
#include <kova/KColorArray.h>
#include <kova/KDagPath.h>
#include <kova/KDoubleArray.h>
#include <kova/KFloatArray.h>
#include <kova/KFloatPointArray.h>
#include <kova/KFnDagNode.h>
#include <kova/KFnMesh.h>
#include <kova/KFnMeshData.h>
#include <kova/KFnNurbsCurve.h>
#include <kova/KFnSet.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/KGlobal.h>
#include <kova/KPlugArray.h>
#include <kova/KPointArray.h>
#include <kova/KScene.h>
#include <kova/KStringArray.h>
#include <kova/detail/MeshData.h>
#include <kova_io/FileText.h>
#include <kova_io/HostSceneReader.h>
#include <map>

namespace KovaIo {

namespace {

bool isGeometry(const KObject& object) {
    const KFn::Type type = object.apiType();
    return type == KFn::kMesh || type == KFn::kNurbsCurve || type == KFn::kMeshData ||
           type == KFn::kNurbsCurveData;
}

bool isShape(const KObject& object) {
    return object.apiType() == KFn::kMesh || object.apiType() == KFn::kNurbsCurve;
}

// The current set's name first, then the others in host order.
std::vector<KString> currentFirst(const KStringArray& names, const KString& current) {
    std::vector<KString> ordered;
    if (!current.isEmpty()) {
        ordered.push_back(current);
    }
    for (const KString& name : names) {
        if (!(name == current)) {
            ordered.push_back(name);
        }
    }
    return ordered;
}

// Geometry is read in world space; `identity` tells when that changes nothing.
struct Placement {
    KSpace::Space space = KSpace::kObject;
    KMatrix world;
    bool identity = true;
};

Placement placementOf(const KObject& object) {
    Placement placement;
    KDagPath path;
    if (isShape(object) && KDagPath::getAPathTo(object, path)) {
        placement.space = KSpace::kWorld;
        placement.world = path.inclusiveMatrix();
        placement.identity = placement.world == KMatrix::identity;
    }
    return placement;
}

// True when `fn`'s normals are the ones the host computes for its points and faces.
bool computedNormals(const KFnMesh& fn, const KIntArray& counts, const KIntArray& connects,
                     const KIntArray& normalIds) {
    KFloatPointArray points;
    fn.getPoints(points, KSpace::kObject);
    KFnMeshData dataFn;
    const KObject reference = dataFn.create();
    KFnMesh referenceFn;
    KStatus status;
    referenceFn.create(fn.numVertices(), fn.numPolygons(), points, counts, connects, reference,
                       &status);
    KIntArray referenceCounts, referenceIds;
    if (!status || !referenceFn.getNormalIds(referenceCounts, referenceIds) ||
        !(referenceIds == normalIds) || referenceFn.numNormals() != fn.numNormals()) {
        return false;
    }
    const float* mine = fn.getRawNormals();
    const float* computed = referenceFn.getRawNormals();
    return std::equal(mine, mine + 3 * static_cast<std::size_t>(fn.numNormals()), computed);
}

void readNormals(const KFnMesh& fn, const KIntArray& counts, const KIntArray& connects,
                 const Placement& placement, MeshRecord& m) {
    KIntArray normalCounts, normalIds;
    if (!fn.getNormalIds(normalCounts, normalIds) ||
        computedNormals(fn, counts, connects, normalIds)) {
        return;
    }
    const float* raw = fn.getRawNormals();
    m.normals.xyz.assign(raw, raw + 3 * static_cast<std::size_t>(fn.numNormals()));
    m.normals.ids.assign(normalIds.begin(), normalIds.end());
    if (placement.identity) {
        return;
    }
    const KMatrix normalMatrix = placement.world.inverse().transpose();
    for (std::size_t i = 0; i + 2 < m.normals.xyz.size(); i += 3) {
        float* n = &m.normals.xyz[i];
        // Row vectors: a normal maps by the transpose of the inverse.
        KVector v = KVector(n[0], n[1], n[2]);
        v = KVector(normalMatrix(0, 0) * v.x + normalMatrix(0, 1) * v.y + normalMatrix(0, 2) * v.z,
                    normalMatrix(1, 0) * v.x + normalMatrix(1, 1) * v.y + normalMatrix(1, 2) * v.z,
                    normalMatrix(2, 0) * v.x + normalMatrix(2, 1) * v.y + normalMatrix(2, 2) * v.z);
        const double length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
        const double scale = length > 0.0 ? 1.0 / length : 1.0;
        n[0] = static_cast<float>(v.x * scale);
        n[1] = static_cast<float>(v.y * scale);
        n[2] = static_cast<float>(v.z * scale);
    }
}

void readUVSets(const KFnMesh& fn, MeshRecord& m) {
    KStringArray names;
    fn.getUVSetNames(names);
    for (const KString& name : currentFirst(names, fn.getCurrentUVSetName())) {
        KFloatArray u, v;
        KIntArray uvCounts, uvIds;
        if (!fn.getUVs(u, v, &name) || !fn.getAssignedUVs(uvCounts, uvIds, &name) ||
            uvIds.length() == 0) {
            continue;
        }
        UVSetRecord set{name.str(), {u.begin(), u.end()}, {v.begin(), v.end()}, {}};
        unsigned int next = 0;
        for (unsigned int f = 0; f < uvCounts.length(); ++f) {
            const int count = m.faceCounts[f];
            for (int k = 0; k < count; ++k) {
                set.ids.push_back(uvCounts[f] > 0 ? uvIds[next++] : -1);
            }
        }
        m.uvSets.push_back(std::move(set));
    }
}

// Colour ids come from the mesh data: the function set hands out colours per face-vertex
// only, which would lose the table's indexing.
void readColorSets(const KFnMesh& fn, const KObject& object, MeshRecord& m) {
    const KObject data = object.apiType() == KFn::kMesh
                             ? KFnDependencyNode(object).findPlug("outMesh", false).asKObject()
                             : object;
    kova::detail::MeshData* mesh = kova::detail::meshDataOf(data);
    KStringArray names;
    fn.getColorSetNames(names);
    for (const KString& name : currentFirst(names, fn.getCurrentColorSetName())) {
        KColorArray colors;
        const kova::detail::MeshData::ColorSet* stored =
            mesh != nullptr ? mesh->findColorSet(name.str()) : nullptr;
        if (stored == nullptr || !fn.getColors(colors, &name)) {
            continue;
        }
        ColorSetRecord set{name.str(),
                           fn.getColorRepresentation(name),
                           {},
                           {stored->ids.begin(), stored->ids.end()}};
        for (const KColor& c : colors) {
            set.colors.push_back({c.r, c.g, c.b, c.a});
        }
        set.ids.resize(m.faceVertices.size(), -1);
        m.colorSets.push_back(std::move(set));
    }
}

// The faces of `shape` that `set` holds; nothing when it holds none.
std::vector<int> facesInSet(const KObject& set, const KObject& shape, int faceCount,
                            const std::string& meshName, std::vector<std::string>& warnings) {
    std::vector<int> faces;
    KSelectionList members;
    KFnSet(set).getMembers(members, true);
    for (unsigned int i = 0; i < members.length(); ++i) {
        KDagPath path;
        KObject component;
        if (!members.getDagPath(i, path, component) || !path.extendToShape() ||
            path.node() != shape) {
            continue;
        }
        if (component.isNull()) {
            faces.resize(static_cast<std::size_t>(faceCount));
            for (int f = 0; f < faceCount; ++f) {
                faces[static_cast<std::size_t>(f)] = f;
            }
        } else if (component.apiType() == KFn::kMeshPolygonComponent) {
            KIntArray elements;
            KFnSingleIndexedComponent(component).getElements(elements);
            faces.insert(faces.end(), elements.begin(), elements.end());
        } else {
            warnings.push_back("mesh '" + meshName + "': set '" +
                               KFnDependencyNode(set).name().str() +
                               "' holds components other than faces; they are not kept");
        }
    }
    std::sort(faces.begin(), faces.end());
    faces.erase(std::unique(faces.begin(), faces.end()), faces.end());
    return faces;
}

std::string materialName(const KObject& shadingGroup) {
    KFnDependencyNode fn(shadingGroup);
    KPlugArray sources;
    if (fn.findPlug("surfaceShader", false).connectedTo(sources, true, false)) {
        for (unsigned int i = 0; i < sources.length(); ++i) {
            if (!sources[i].node().isNull()) {
                return KFnDependencyNode(sources[i].node()).name().str();
            }
        }
    }
    return fn.name().str();
}

void readSets(const KObject& shape, MeshRecord& m, std::vector<std::string>& warnings) {
    KDagPath path;
    KSelectionList items;
    KObjectArray sets;
    if (!KDagPath::getAPathTo(shape, path) || !items.add(path) ||
        !KGlobal::getAssociatedSets(items, sets)) {
        return;
    }
    for (unsigned int i = 0; i < sets.length(); ++i) {
        const KObject set = sets[i];
        const std::string name = KFnDependencyNode(set).name().str();
        const bool renderable = KFnSet(set).restriction() == KFnSet::kRenderableOnly;
        if (name == "initialShadingGroup") {
            continue;
        }
        std::vector<int> faces = facesInSet(set, shape, m.faceCount(), m.name, warnings);
        if (faces.empty()) {
            continue;
        }
        if (renderable) {
            m.materials.push_back(FaceSetRecord{materialName(set), std::move(faces)});
        } else {
            m.groups.push_back(FaceSetRecord{name, std::move(faces)});
        }
    }
}

KStatus readMesh(const KObject& object, const std::string& name, SceneData& scene) {
    KStatus status;
    KFnMesh fn(object, &status);
    const Placement placement = placementOf(object);
    KFloatPointArray points;
    KIntArray counts, connects;
    status = status ? fn.getPoints(points, placement.space) : status;
    status = status ? fn.getVertices(counts, connects) : status;
    if (!status) {
        return ioFailure("mesh '" + name + "': " + status.errorString().str());
    }
    MeshRecord m;
    m.name = name;
    for (const KFloatPoint& p : points) {
        m.points.insert(m.points.end(), {p.x, p.y, p.z});
    }
    m.faceCounts.assign(counts.begin(), counts.end());
    m.faceVertices.assign(connects.begin(), connects.end());
    readNormals(fn, counts, connects, placement, m);
    readUVSets(fn, m);
    readColorSets(fn, object, m);
    if (isShape(object)) {
        readSets(object, m, scene.warnings);
    }
    scene.meshes.push_back(std::move(m));
    return KStatus();
}

KStatus readCurve(const KObject& object, const std::string& name, SceneData& scene) {
    KStatus status;
    KFnNurbsCurve fn(object, &status);
    KPointArray cvs;
    KDoubleArray knots;
    status = status ? fn.getCVs(cvs, placementOf(object).space) : status;
    status = status ? fn.getKnots(knots) : status;
    CurveRecord c;
    c.name = name;
    c.degree = status ? fn.degree(&status) : 0;
    c.form = status ? static_cast<int>(fn.form(&status)) : 0;
    if (!status) {
        return ioFailure("curve '" + name + "': " + status.errorString().str());
    }
    for (const KPoint& cv : cvs) {
        c.cvs.push_back({cv.x / cv.w, cv.y / cv.w, cv.z / cv.w, cv.w});
        c.rational = c.rational || cv.w != 1.0;
    }
    c.knots.assign(knots.begin(), knots.end());
    scene.curves.push_back(std::move(c));
    return KStatus();
}

// The transform's name for a shape; a numbered name for data.
std::string nameOf(const KObject& object, std::map<std::string, int>& dataCount) {
    if (isShape(object)) {
        KFnDagNode fn(object);
        const KObject parent = fn.parent(0);
        return (parent.isNull() ? fn.name() : KFnDependencyNode(parent).name()).str();
    }
    const std::string kind = object.apiType() == KFn::kMeshData ? "mesh" : "curve";
    return kind + std::to_string(++dataCount[kind]);
}

} // namespace

std::vector<KObject> geometryShapes() {
    std::vector<KObject> shapes;
    for (const KObject& node : KScene::current().nodes()) {
        if (isShape(node)) {
            shapes.push_back(node);
        }
    }
    return shapes;
}

KStatus readHostScene(const std::vector<KObject>& objects, SceneData& scene) {
    scene = SceneData();
    std::vector<KObject> geometry;
    for (const KObject& object : objects) {
        if (isGeometry(object)) {
            geometry.push_back(object);
        } else if (object.hasFn(KFn::kTransform)) {
            KFnDagNode fn(object);
            for (unsigned int i = 0; i < fn.childCount(); ++i) {
                if (isShape(fn.child(i))) {
                    geometry.push_back(fn.child(i));
                }
            }
        } else {
            scene = SceneData();
            return ioFailure(std::string("cannot export a ") + object.apiTypeStr() +
                             ": only meshes, NURBS curves and their transforms");
        }
    }
    std::map<std::string, int> dataCount;
    for (const KObject& object : geometry) {
        const std::string name = nameOf(object, dataCount);
        const bool mesh = object.apiType() == KFn::kMesh || object.apiType() == KFn::kMeshData;
        if (KStatus s = mesh ? readMesh(object, name, scene) : readCurve(object, name, scene); !s) {
            scene = SceneData();
            return s;
        }
    }
    return KStatus();
}

} // namespace KovaIo
