// Host calls of the mesh output conversion and of the "zelvaneGeoToKova" node made to fail.
// The host mesh that comes back is written as text: its point and face counts, whether its
// normals are the object's ("down") or the host's own ("up"), its UV sets with their assigned
// face-vertices, its colour sets with their coloured face-vertices and its tags with their
// elements ("-" for none).
//
// Host call                                    Result
// KArray::allocate of a host array             the empty mesh, one message naming the array
// KFnMesh::create of the empty mesh            nothing: the mesh is made all the same
// KFnMesh::setVertexNormals,                   the host's own normals
//   setFaceVertexNormals
// KFnMesh::createUVSetDataMesh, assignUVs      UV sets from the failing one on are left out
// KFnMesh::createColorSetDataMesh              that colour set is left out
// KFnMesh::setColors, assignColors             that colour set is left uncoloured
// KFnMesh::setIsColorClamped                   nothing
// KFnSingleIndexedComponent::create,           the tag is named without contents, reported
//   KFnGeometryData::setComponentTagContents
// Node: KDataBlock::inputValue, outputValue;   the evaluation fails; the objects are released
//   KArrayDataHandle (attach), builder, set;
//   KArrayDataBuilder::addElement,
//   removeElement; KDataHandle::set

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

struct UnwritableMesh : FailureRow {
    bool faceVertexNormals;
    Injection injection;
    const char* mesh;    // the host mesh that comes back
    const char* message; // the one error reported; "" for none
};

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
        row.injection.arm();
        const KObject data = convert(*object, everything());
        EXPECT_TRUE(row.injection.fired());
        KFailureInjection::reset();
        EXPECT_EQ(describe(data), row.mesh);
        EXPECT_EQ(capture.errors(),
                  *row.message ? std::vector<KString>{row.message} : std::vector<KString>{});
    }
    EXPECT_TRUE(before.unchanged());
}

INSTANTIATE_TEST_SUITE_P(
    EveryMeshWrite, UnwritableMeshes,
    ::testing::Values(
        // On one thread the fills run last made first: colour sets, UV sets (u, v and ids),
        // normals, face-vertices, faces, points.
        UnwritableMesh{"ColorSetMemory",
                       false,
                       {"KArray::allocate", 1},
                       "0 points 0 faces",
                       "Graph mesh object not converted: no memory for colour set \"c_a\""},
        UnwritableMesh{"UVSetMemory",
                       false,
                       {"KArray::allocate", 5},
                       "0 points 0 faces",
                       "Graph mesh object not converted: no memory for UV set \"map1\""},
        UnwritableMesh{"PointNormalsMemory",
                       false,
                       {"KArray::allocate", 8},
                       "0 points 0 faces",
                       "Graph mesh object not converted: no memory for 10 normals"},
        UnwritableMesh{"FaceVertexNormalsMemory",
                       true,
                       {"KArray::allocate", 8},
                       "0 points 0 faces",
                       "Graph mesh object not converted: no memory for 12 normals"},
        UnwritableMesh{"FaceVerticesMemory",
                       false,
                       {"KArray::allocate", 10},
                       "0 points 0 faces",
                       "Graph mesh object not converted: no memory for 12 face-vertices"},
        UnwritableMesh{"FacesMemory",
                       false,
                       {"KArray::allocate", 11},
                       "0 points 0 faces",
                       "Graph mesh object not converted: no memory for 3 faces"},
        UnwritableMesh{"PointsMemory",
                       false,
                       {"KArray::allocate", 12},
                       "0 points 0 faces",
                       "Graph mesh object not converted: no memory for 10 points"},
        UnwritableMesh{"VertexNormals",
                       false,
                       {"KFnMesh::setVertexNormals"},
                       "10 points 3 faces; normals up; uv map1:12,second:12; colour "
                       "c_a:12,c_b:12; tag top:0",
                       ""},
        UnwritableMesh{"FaceVertexNormals",
                       true,
                       {"KFnMesh::setFaceVertexNormals"},
                       "10 points 3 faces; normals up; uv map1:12,second:12; colour "
                       "c_a:12,c_b:12; tag top:0",
                       ""},
        UnwritableMesh{"UVSet",
                       false,
                       {"KFnMesh::createUVSetDataMesh"},
                       "10 points 3 faces; normals down; uv map1:12; colour c_a:12,c_b:12; tag "
                       "top:0",
                       ""},
        UnwritableMesh{"UVAssign",
                       false,
                       {"KFnMesh::assignUVs"},
                       "10 points 3 faces; normals down; uv map1:0; colour c_a:12,c_b:12; tag "
                       "top:0",
                       ""},
        UnwritableMesh{"ColorSet",
                       false,
                       {"KFnMesh::createColorSetDataMesh"},
                       "10 points 3 faces; normals down; uv map1:12,second:12; colour c_b:12; "
                       "tag top:0",
                       ""},
        // The mesh that stands for an early stop can't be made; the mesh itself still is.
        UnwritableMesh{"EmptyMesh", false, {"KFnMesh::create"}, kEverything, ""},
        UnwritableMesh{"ColorClamp", false, {"KFnMesh::setIsColorClamped"}, kEverything, ""},
        UnwritableMesh{"Colors",
                       false,
                       {"KFnMesh::setColors"},
                       "10 points 3 faces; normals down; uv map1:12,second:12; colour "
                       "c_a:0,c_b:12; tag top:0",
                       ""},
        UnwritableMesh{"ColorAssign",
                       false,
                       {"KFnMesh::assignColors"},
                       "10 points 3 faces; normals down; uv map1:12,second:12; colour "
                       "c_a:0,c_b:12; tag top:0",
                       ""},
        UnwritableMesh{"TagComponent",
                       false,
                       {"KFnSingleIndexedComponent::create"},
                       "10 points 3 faces; normals down; uv map1:12,second:12; colour "
                       "c_a:12,c_b:12; tag top:-",
                       "Could not set component tag content for: top"},
        UnwritableMesh{"TagContents",
                       false,
                       {"KFnGeometryData::setComponentTagContents"},
                       "10 points 3 faces; normals down; uv map1:12,second:12; colour "
                       "c_a:12,c_b:12; tag top:-",
                       "Could not set component tag content for: top"}),
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
    row.injection.arm();
    EXPECT_FALSE(evaluate());
    EXPECT_TRUE(row.injection.fired());
    KFailureInjection::reset();
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
