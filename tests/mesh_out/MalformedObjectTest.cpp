// Inconsistent graph mesh objects: each gives the empty mesh and one message naming the fault,
// without reading out of bounds (run under AddressSanitizer).

#include "MeshOutputFixture.h"

#include <functional>

namespace MeshOutputTest {
namespace {

struct Malformed {
    const char* name;
    std::function<void(Zelvane::Object&)> spoil;
    const char* fault; // expected within the message
};

template <class T>
void setArray(Zelvane::Object& mesh, const Orsel::String& name, const std::vector<T>& values) {
    mesh.set(name, graphArray(values));
}

void setCount(Zelvane::Object& mesh, const Orsel::String& component, std::uint64_t count) {
    Geo::setElementCount(component, count, mesh);
}

// Spoils the mesh by giving it the face offsets `offsets`.
std::function<void(Zelvane::Object&)> withOffsets(std::vector<std::uint32_t> offsets) {
    return [offsets](Zelvane::Object& m) { setArray(m, Geo::sFaceOffset, offsets); };
}

std::vector<std::uint32_t> identity(std::uint32_t count) {
    std::vector<std::uint32_t> indices(count);
    for (std::uint32_t k = 0; k < count; ++k) {
        indices[k] = k;
    }
    return indices;
}

const Malformed kMalformed[] = {
    {"MorePointsThanPositions", [](auto& m) { setCount(m, Geo::sPointComp, 11); },
     "\"P\" holds 10 float3 values for 11 points"},
    {"PositionsOfAnotherType",
     [](auto& m) { setArray(m, Geo::sPointPosition, std::vector<float2>(10)); },
     "\"P\" is missing or not an array of float3"},
    {"CountBeyondAHostMesh", [](auto& m) { setCount(m, Geo::sPointComp, 1ull << 31); },
     "2147483648 points are more than a host mesh can hold"},
    {"MoreFacesThanOffsets", [](auto& m) { setCount(m, Geo::sFaceComp, 4); },
     "\"faceOffset\" holds 4 uint32 values for 5 face offsets"},
    {"NoOffsets", [](auto& m) { m.remove(Geo::sFaceOffset); },
     "\"faceOffset\" is missing or not an array of uint32"},
    {"OffsetsOfAnotherType",
     [](auto& m) {
         setArray<std::int32_t>(m, Geo::sFaceOffset, {0, 4, 7, 12});
     },
     "\"faceOffset\" is missing or not an array of uint32"},
    {"OffsetsNotStartingAtZero", withOffsets({1, 4, 7, 12}), "face offsets start at 1, not at 0"},
    {"OffsetsOverrunningTheFaceVertices", withOffsets({0, 4, 7, 13}),
     "face offsets end at 13 but there are 12 face-vertices"},
    {"DecreasingOffsets", withOffsets({0, 8, 4, 12}), "face offsets decrease at face 1 (8 then 4)"},
    {"FaceOfTwoVertices", withOffsets({0, 4, 6, 12}),
     "face 1 has 2 vertices; a host polygon needs 3 or more"},
    {"MoreFaceVerticesThanTheirArray",
     [](auto& m) {
         setCount(m, Geo::sFaceVertexComp, 13);
         setArray<std::uint32_t>(m, Geo::sFaceOffset, {0, 4, 7, 13});
     },
     "\"faceVertexPoint\" holds 12 uint32 values for 13 face-vertices"},
    {"FaceVertexNamingAMissingPoint",
     [](auto& m) {
         std::vector<std::uint32_t> faceVertices(std::begin(NGonMesh::kFaceVertices),
                                                 std::end(NGonMesh::kFaceVertices));
         faceVertices[6] = 10;
         setArray(m, Geo::sFaceVertex, faceVertices);
     },
     "face-vertex 6 names point 10 of 10"},
    {"ShortPointNormals",
     [](auto& m) { addProperty(m, Geo::sPointNormal, Geo::sPointComp, std::vector<float3>(9)); },
     "\"N\" holds 9 float3 values for 10 points"},
    {"ShortNormalIndices",
     [](auto& m) {
         addIndexedProperty(m, Geo::sFaceVertexNormal, std::vector<float3>(12), identity(11));
     },
     "\"faceVertexN_index\" holds 11 uint32 values for 12 face-vertices"},
    {"NormalIndexOutOfRange",
     [](auto& m) {
         auto indices = identity(12);
         indices[3] = 12;
         addIndexedProperty(m, Geo::sFaceVertexNormal, std::vector<float3>(12), indices);
     },
     "normal index 12 at face-vertex 3 of \"faceVertexN_index\" is out of range (12 normals)"},
    {"UVIndexOutOfRange",
     [](auto& m) {
         auto indices = identity(12);
         indices[7] = 40;
         addIndexedProperty(m, Geo::sFaceVertexUV, std::vector<float2>(12), indices, "map1");
     },
     "UV index 40 at face-vertex 7 of UV set \"map1\" is out of range (12 UVs)"},
    {"ShortUVIndices",
     [](auto& m) {
         addIndexedProperty(m, Geo::sFaceVertexUV, std::vector<float2>(12), identity(5));
     },
     "\"uv_index\" holds 5 uint32 values for 12 face-vertices"},
    {"UnindexedUVsShorterThanTheFaceVertices",
     [](auto& m) {
         addProperty(m, Geo::sFaceVertexUV, Geo::sFaceVertexComp, std::vector<float2>(10), "map1");
     },
     "UV index 10 at face-vertex 10 of UV set \"map1\" is out of range (10 UVs)"},
    {"PointUVsFewerThanThePoints",
     [](auto& m) {
         addIndexedProperty(m, Geo::sFaceVertexUV, std::vector<float2>(9), nullptr, "map1");
     },
     "UV index 9 at face-vertex 11 of UV set \"map1\" is out of range (9 UVs)"},
    {"ShortPointColours",
     [](auto& m) { addProperty(m, Geo::sPointColor, Geo::sPointComp, std::vector<float3>(9)); },
     "\"color\" holds 9 colour values for 10 points"},
    {"ColourIndexOutOfRange",
     [](auto& m) {
         auto indices = identity(12);
         indices[11] = 12;
         addIndexedProperty(m, Geo::sPointColor, std::vector<float4>(12), indices, "paint");
     },
     "colour index 12 at face-vertex 11 of colour set \"paint\" is out of range (12 colours)"},
    {"ShortTag",
     [](auto& m) {
         addTag(m, Geo::sFaceComp, "top", {true, false});
     },
     "\"faceTag(top)\" holds 2 bool values for 3 faces"},
};

class MalformedObject : public MeshOutput, public ::testing::WithParamInterface<Malformed> {};

TEST_P(MalformedObject, GivesTheEmptyMeshAndOneMessageNamingTheFault) {
    ObjectPtr mesh = ngonObject();
    GetParam().spoil(*mesh);
    ZelvaneMeshToKovaOpts options;
    options.transferNormals = true;
    KMessageCapture messages;
    const KObject data = convert(*mesh, options);
    ASSERT_TRUE(data.hasFn(KFn::kMeshData));
    KFnMesh fn(data);
    EXPECT_EQ(fn.numVertices(), 0);
    EXPECT_EQ(fn.numPolygons(), 0);
    EXPECT_EQ(uvSetNames(data), KStringArray{"map1"});
    KStringArray colorSets;
    fn.getColorSetNames(colorSets);
    EXPECT_EQ(colorSets.length(), 0u);
    EXPECT_EQ(tagNames(data).length(), 0u);
    const std::vector<KString> errors = messages.errors();
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(errors[0], KString("Graph mesh object not converted: ") + GetParam().fault);
}

INSTANTIATE_TEST_SUITE_P(EveryKindOfFault, MalformedObject, ::testing::ValuesIn(kMalformed),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(MeshOutput, NormalsThatAreNotTransferredAreNotChecked) {
    ObjectPtr mesh = ngonObject();
    addProperty(*mesh, Geo::sPointNormal, Geo::sPointComp, std::vector<float3>(2));
    KMessageCapture messages;
    EXPECT_EQ(KFnMesh(convert(*mesh)).numPolygons(), 3);
    EXPECT_EQ(messages.size(), 0u);
}

TEST_F(MeshOutput, OfSeveralFaultsTheFirstInStepOrderIsReported) {
    // Parallel fills find these at the same time; the earliest step's fault wins.
    std::vector<std::uint32_t> offsets{0};
    std::vector<std::uint32_t> faceVertices;
    std::vector<float3> points(4000);
    for (std::uint32_t f = 0; f < 1000; ++f) {
        for (std::uint32_t c = 0; c < 4; ++c) {
            faceVertices.push_back(4 * f + c);
        }
        offsets.push_back(faceVertices.size());
    }
    faceVertices[3999] = 4000;
    offsets[900] = offsets[901] + 1;
    offsets[500] = offsets[501] + 1;
    KMessageCapture messages;
    convert(*meshObject(points, offsets, faceVertices));
    EXPECT_EQ(messages.errors(),
              std::vector<KString>{"Graph mesh object not converted: face offsets decrease at "
                                   "face 500 (2005 then 2004)"});
}

} // namespace
} // namespace MeshOutputTest
