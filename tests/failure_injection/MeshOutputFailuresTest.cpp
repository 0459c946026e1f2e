// Host calls of the mesh output conversion and of the "zelvaneGeoToKova" node made to fail.
// Memory for a host array that can't be had gives the empty mesh and one message naming it; a
// normal, UV, colour or tag write that fails leaves that part out; a failing node call fails
// the evaluation and releases the objects. The host mesh that comes back is written as text:
// its point and face counts, whether its normals are the object's ("down") or the host's own
// ("up"), its UV sets with their assigned face-vertices, its colour sets with their coloured
// face-vertices and its tags with their elements ("-" for none).

#include "../mesh_out/MeshOutputFixture.h"
#include "InjectedFailure.h"

#include <tbb/global_control.h>

namespace MeshOutputTest {
namespace {

std::string listed(const std::vector<std::string>& items) {
    std::string text;
    for (const std::string& item : items) {
        text += (text.empty() ? "" : ",") + item;
    }
    return text;
}

// What a host mesh holds, as the table below writes it.
std::string describe(const KObject& data) {
    if (data.isNull()) {
        return "null";
    }
    KFnMesh fn(data);
    std::string text =
        std::to_string(fn.numVertices()) + " points " + std::to_string(fn.numPolygons()) + " faces";
    if (fn.numPolygons() == 0) {
        return text;
    }
    const std::vector<float3> normals = faceVertexNormals(data);
    const bool down = std::all_of(normals.begin(), normals.end(), [](const float3& n) {
        return n == float3{0, 0, -1};
    });
    text += down ? "; normals down" : "; normals up";

    std::vector<std::string> uvSets;
    for (const KString& name : uvSetNames(data)) {
        KIntArray counts, ids;
        fn.getAssignedUVs(counts, ids, &name);
        uvSets.push_back(name.str() + ":" + std::to_string(ids.length()));
    }
    text += "; uv " + listed(uvSets);

    KStringArray colorSetNames;
    fn.getColorSetNames(colorSetNames);
    std::vector<std::string> colorSets;
    for (const KString& name : colorSetNames) {
        KColorArray colors;
        fn.getFaceVertexColors(colors, &name);
        const auto colored = std::count_if(colors.begin(), colors.end(), [](const KColor& c) {
            return !(c == KColor(-1.0f, -1.0f, -1.0f, -1.0f));
        });
        colorSets.push_back(name.str() + ":" + std::to_string(colored));
    }
    text += "; colour " + listed(colorSets);

    std::vector<std::string> tags;
    for (const KString& name : tagNames(data)) {
        const KIntArray elements = tagElements(data, name.asChar());
        std::vector<std::string> members;
        for (int element : elements) {
            members.push_back(std::to_string(element));
        }
        tags.push_back(name.str() + ":" + (members.empty() ? "-" : listed(members)));
    }
    return text + "; tag " + listed(tags);
}

// The n-gon with normals pointing down (point normals, or face-vertex normals), UV sets "map1"
// and "second", colour sets "c_a" and "c_b" and the face tag "top" on face 0, all of it
// written.
ObjectPtr meshWithEverything(bool faceVertexNormals) {
    ObjectPtr mesh = ngonObject();
    std::vector<float2> uvs;
    std::vector<std::uint32_t> indices;
    for (std::uint32_t k = 0; k < 12; ++k) {
        uvs.push_back({float(k), 0});
        indices.push_back(k);
    }
    if (faceVertexNormals) {
        addIndexedProperty(*mesh, Geo::sFaceVertexNormal, std::vector<float3>(12, {0, 0, -1}),
                           indices);
    } else {
        addProperty(*mesh, Geo::sPointNormal, Geo::sPointComp, std::vector<float3>(10, {0, 0, -1}));
    }
    addIndexedProperty(*mesh, Geo::sFaceVertexUV, uvs, indices, "map1");
    addIndexedProperty(*mesh, Orsel::String(Geo::sFaceVertexUV.toStdString() + "1"), uvs, indices,
                       "second");
    addProperty(*mesh, "c_a", Geo::sPointComp, std::vector<float3>(10, {1, 0, 0}));
    addProperty(*mesh, "c_b", Geo::sPointComp, std::vector<float3>(10, {0, 1, 0}));
    addTag(*mesh, Geo::sFaceComp, "top", {true, false, false});
    return mesh;
}

ZelvaneMeshToKovaOpts everything() {
    ZelvaneMeshToKovaOpts options;
    options.transferNormals = true;
    options.properties = "c_*";
    return options;
}

constexpr const char* kEverything =
    "10 points 3 faces; normals down; uv map1:12,second:12; colour c_a:12,c_b:12; tag top:0";

// kEverything with the part that `part` names ("uv map1:0") replaced by it.
std::string everythingBut(const std::string& part) {
    std::string text = kEverything;
    const std::size_t start = text.find("; " + part.substr(0, part.find(' ')) + " ") + 2;
    const std::size_t end = text.find(';', start);
    return text.replace(start, end == std::string::npos ? end : end - start, part);
}

struct UnwritableMesh : FailureRow {
    Injection injection;
    std::string mesh;               // the host mesh that comes back
    std::string message{};          // the one error reported, if any
    bool faceVertexNormals = false; // rather than point normals
};

// No memory for the host array the `successes`-th allocation makes: the empty mesh.
UnwritableMesh noMemory(const char* name, int successes, const std::string& array,
                        bool faceVertexNormals = false) {
    return {{name},
            {"KArray::allocate", successes},
            "0 points 0 faces",
            "Graph mesh object not converted: no memory for " + array,
            faceVertexNormals};
}

class UnwritableMeshes : public MeshOutput, public ::testing::WithParamInterface<UnwritableMesh> {};

TEST_P(UnwritableMeshes, GiveWhatCouldBeWritten) {
    const UnwritableMesh& row = GetParam();
    const ObjectPtr object = meshWithEverything(row.faceVertexNormals);
    ASSERT_EQ(describe(convert(*object, everything())), kEverything);
    // One thread, so that host arrays are allocated in the same order every time.
    const tbb::global_control serial(tbb::global_control::max_allowed_parallelism, 1);
    const LiveArrays before;
    {
        KMessageCapture capture;
        const KObject data = row.injection.during([&] { return convert(*object, everything()); });
        EXPECT_EQ(describe(data), row.mesh);
        EXPECT_EQ(capture.errors(), row.message.empty()
                                        ? std::vector<KString>{}
                                        : std::vector<KString>{KString(row.message)});
    }
    EXPECT_TRUE(before.unchanged());
}

INSTANTIATE_TEST_SUITE_P(
    EveryMeshWrite, UnwritableMeshes,
    ::testing::ValuesIn(std::vector<UnwritableMesh>{
        // On one thread the fills run last made first: colour sets, UV sets (u, v and ids),
        // normals, face-vertices, faces, points.
        noMemory("ColorSetMemory", 1, "colour set \"c_a\""),
        noMemory("UVSetMemory", 5, "UV set \"map1\""),
        noMemory("PointNormalsMemory", 8, "10 normals"),
        noMemory("FaceVertexNormalsMemory", 8, "12 normals", true),
        noMemory("FaceVerticesMemory", 10, "12 face-vertices"),
        noMemory("FacesMemory", 11, "3 faces"),
        noMemory("PointsMemory", 12, "10 points"),
        {"VertexNormals", {"KFnMesh::setVertexNormals"}, everythingBut("normals up")},
        {"FaceVertexNormals",
         {"KFnMesh::setFaceVertexNormals"},
         everythingBut("normals up"),
         "",
         true},
        {"UVSet", {"KFnMesh::createUVSetDataMesh"}, everythingBut("uv map1:12")},
        {"UVAssign", {"KFnMesh::assignUVs"}, everythingBut("uv map1:0")},
        {"ColorSet", {"KFnMesh::createColorSetDataMesh"}, everythingBut("colour c_b:12")},
        // The mesh data can't be made: no mesh at all. The empty mesh, made first, can't be
        // made: the mesh itself still is; the mesh can't be made: the empty mesh.
        {"MeshData", {"KFnMeshData::create"}, "null"},
        {"EmptyMesh", {"KFnMesh::create"}, kEverything},
        {"Mesh", {"KFnMesh::create", 1}, "0 points 0 faces"},
        {"ColorClamp", {"KFnMesh::setIsColorClamped"}, kEverything},
        {"Colors", {"KFnMesh::setColors"}, everythingBut("colour c_a:0,c_b:12")},
        {"ColorAssign", {"KFnMesh::assignColors"}, everythingBut("colour c_a:0,c_b:12")},
        {"TagComponent",
         {"KFnSingleIndexedComponent::create"},
         everythingBut("tag top:-"),
         "Could not set component tag content for: top"},
        {"TagContents",
         {"KFnGeometryData::setComponentTagContents"},
         everythingBut("tag top:-"),
         "Could not set component tag content for: top"}}),
    RowName());

struct FailedEvaluation : FailureRow {
    Injection injection;
};

class FailedEvaluations : public GeoToKovaCompute,
                          public ::testing::WithParamInterface<FailedEvaluation> {};

TEST_P(FailedEvaluations, FailTheNodeAndKeepItsMeshesUntilTheNext) {
    const FailedEvaluation& row = GetParam();
    const Orsel::Ptr<Zelvane::Object> object = triangles(2);
    feed({object, object, object});
    ASSERT_TRUE(evaluate());
    ASSERT_EQ(meshCount(), 3u);
    // Two objects now, so that the surplus mesh has to go.
    feed({object, object});
    const std::size_t owners = object.useCount();
    const LiveArrays before;
    EXPECT_FALSE(row.injection.during([this] { return evaluate(); }));
    EXPECT_EQ(object.useCount(), owners);
    EXPECT_TRUE(before.unchanged());
    EXPECT_EQ(meshCount(), 3u);
    ASSERT_TRUE(evaluate()) << "the next evaluation goes through";
    EXPECT_EQ(meshCount(), 2u);
}

INSTANTIATE_TEST_SUITE_P(
    EveryNodeCall, FailedEvaluations,
    ::testing::Values(FailedEvaluation{"Objects", {"KDataBlock::inputValue"}},
                      FailedEvaluation{"TransferNormals", {"KDataBlock::inputValue", 1}},
                      FailedEvaluation{"Properties", {"KDataBlock::inputValue", 2}},
                      FailedEvaluation{"ComponentTags", {"KDataBlock::inputValue", 3}},
                      FailedEvaluation{"Meshes", {"KDataBlock::outputValue"}},
                      FailedEvaluation{"MeshArray", {"KArrayDataHandle::KArrayDataHandle"}},
                      FailedEvaluation{"Builder", {"KArrayDataHandle::builder"}},
                      FailedEvaluation{"Element", {"KArrayDataBuilder::addElement", 1}},
                      FailedEvaluation{"ElementMesh", {"KDataHandle::set", 1}},
                      FailedEvaluation{"Surplus", {"KArrayDataBuilder::removeElement"}},
                      FailedEvaluation{"Store", {"KArrayDataHandle::set"}}),
    RowName());

} // namespace
} // namespace MeshOutputTest
