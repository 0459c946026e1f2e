// UV sets, colour sets and component tags written by zelvaneMeshToKova.

#include "MeshOutputFixture.h"

#include <stdexcept>

namespace MeshOutputTest {
namespace {

// The n-gon with UV property `name` (host name `dccName`) holding (k + base, k) at
// face-vertex k.
void addUVs(Zelvane::Object& mesh, const Orsel::String& name, const char* dccName, float base) {
    std::vector<float2> table;
    std::vector<std::uint32_t> indices;
    for (std::uint32_t k = 0; k < 12; ++k) {
        table.push_back({float(k) + base, float(k)});
        indices.push_back(k);
    }
    addIndexedProperty(mesh, name, table, indices, dccName);
}

std::vector<float2> expectedUVs(float base) {
    std::vector<float2> uvs;
    for (int k = 0; k < 12; ++k) {
        uvs.push_back({float(k) + base, float(k)});
    }
    return uvs;
}

Orsel::String uvName(int number) {
    return Orsel::String(Geo::sFaceVertexUV.toStdString() +
                         (number > 0 ? std::to_string(number) : std::string()));
}

// UV property k (host name given or not) holds (i + 100 k, i) at face-vertex i.
TEST_F(MeshOutput, UVSetsKeepHostNamesAndUnnamedOnesNumberOnFromTheHighestMap) {
    const std::vector<std::pair<std::vector<const char*>, KStringArray>> cases = {
        {{"map1", "map7", nullptr}, {"map1", "map7", "map8"}},
        {{"map2147483647", nullptr}, {"map1", "map2147483647", "map2147483648"}}};
    for (const auto& [dccNames, hostNames] : cases) {
        ObjectPtr mesh = ngonObject();
        for (std::size_t k = 0; k < dccNames.size(); ++k) {
            addUVs(*mesh, uvName(int(k)), dccNames[k], 100.0f * float(k));
        }
        const KObject data = convert(*mesh);
        ASSERT_EQ(uvSetNames(data), hostNames);
        // Past "map1" when the sets do not fill it.
        const unsigned int first = hostNames.length() - dccNames.size();
        for (std::size_t k = 0; k < dccNames.size(); ++k) {
            const KString& name = hostNames[first + unsigned(k)];
            EXPECT_EQ(faceVertexUVs(data, name.asChar()), expectedUVs(100.0f * float(k))) << name;
        }
    }
}

TEST_F(MeshOutput, ASingleUnnamedUVSetFillsTheExistingMap1) {
    ObjectPtr mesh = ngonObject();
    addUVs(*mesh, uvName(0), nullptr, 5);
    KFailureInjection::failAlways("KFnMesh::createUVSetDataMesh");
    const KObject data = convert(*mesh);
    EXPECT_EQ(uvSetNames(data), KStringArray{"map1"});
    EXPECT_EQ(faceVertexUVs(data, "map1"), expectedUVs(5));
}

// Float3 UV data gives its x and y, and without indices one UV per face-vertex; UV data of
// another type is passed over.
TEST_F(MeshOutput, Float3UVDataUsesXAndYAndMissingIndicesMeanOnePerFaceVertex) {
    ObjectPtr mesh = ngonObject();
    std::vector<float3> table;
    for (int k = 0; k < 12; ++k) {
        table.push_back({float(k), float(k), 99});
    }
    addProperty(*mesh, uvName(0), Geo::sFaceVertexComp, table, "map1");
    addProperty(*mesh, uvName(1), Geo::sFaceVertexComp, std::vector<float>(12, 1.0f), "odd");
    addUVs(*mesh, uvName(2), "second", 0);
    const KObject data = convert(*mesh);
    EXPECT_EQ(uvSetNames(data), (KStringArray{"map1", "second"}));
    EXPECT_EQ(faceVertexUVs(data, "map1"), expectedUVs(0));
}

TEST_F(MeshOutput, UVsIndexedThroughTheFaceVertexArrayFollowTheVertices) {
    ObjectPtr mesh = ngonObject();
    std::vector<float2> perPoint;
    for (int p = 0; p < 10; ++p) {
        perPoint.push_back({0.1f * float(p), 1.0f - 0.1f * float(p)});
    }
    perPoint.push_back({9, 9}); // one more than the points: never used
    addIndexedProperty(*mesh, Geo::sFaceVertexUV, perPoint, nullptr, "map1");
    const KObject data = convert(*mesh);
    KIntArray uvCounts, uvIds;
    ASSERT_TRUE(KFnMesh(data).getAssignedUVs(uvCounts, uvIds));
    EXPECT_EQ(uvCounts, (KIntArray{4, 3, 5}));
    EXPECT_EQ(uvIds, hostFaces(data).second);
    EXPECT_EQ(KFnMesh(data).numUVs(), 11);
}

TEST_F(MeshOutput, UVSetNamesThatAreNotMapNumbersThrowTheParseError) {
    const auto throwsWith = [this](const char* dccName, const std::string& text) {
        ObjectPtr mesh = ngonObject();
        addUVs(*mesh, uvName(0), dccName, 0);
        try {
            convert(*mesh);
            ADD_FAILURE() << dccName << " converted";
        } catch (const std::logic_error& error) {
            EXPECT_EQ(std::string(error.what()), text) << dccName;
        }
    };
    throwsWith("map", "invalid stoi argument");
    throwsWith("mapping", "invalid stoi argument");
    throwsWith("map99999999999", "stoi argument out of range");
}

TEST_F(MeshOutput, TheFirstRefusedUVWriteEndsUVWriting) {
    ObjectPtr mesh = ngonObject();
    addUVs(*mesh, uvName(0), "a", 0);
    addUVs(*mesh, uvName(1), "b", 0);
    KFailureInjection::failNext("KFnMesh::setUVs");
    EXPECT_EQ(uvSetNames(convert(*mesh)), (KStringArray{"map1", "a"}));
}

// Colour sets.
TEST_F(MeshOutput, PointColoursFollowTheVertexOfEachFaceVertex) {
    ObjectPtr mesh = ngonObject();
    std::vector<float3> colors;
    for (int i = 0; i < 10; ++i) {
        colors.push_back({float(i) / 10, 0, 1});
    }
    addProperty(*mesh, Geo::sPointColor, Geo::sPointComp, colors);
    const KObject data = convert(*mesh);
    KFnMesh fn(data);
    KStringArray names;
    fn.getColorSetNames(names);
    ASSERT_EQ(names, KStringArray{KString(Geo::sPointColor.internal_string_view())});
    const KString set(names[0]);
    EXPECT_EQ(fn.getColorRepresentation(set), 3);
    EXPECT_FALSE(fn.isColorClamped(set));
    KColorArray perFaceVertex;
    ASSERT_TRUE(fn.getFaceVertexColors(perFaceVertex, &set));
    const int connects[] = {0, 1, 2, 3, 1, 4, 2, 5, 6, 7, 8, 9};
    for (int k = 0; k < 12; ++k) {
        EXPECT_EQ(perFaceVertex[k], KColor(float(connects[k]) / 10, 0, 1, 1)) << k;
    }
}

TEST_F(MeshOutput, FaceVertexColoursUseTheirIndicesAndPropertiesPickTheSets) {
    ObjectPtr mesh = ngonObject();
    std::vector<std::uint32_t> indices(12, 1);
    indices[0] = 0;
    addIndexedProperty(*mesh, "paint", std::vector<float4>{{1, 0, 0, 0.5f}, {0, 1, 0, 1}}, indices,
                       "hostPaint");
    addProperty(*mesh, "alpha", Geo::sPointComp, std::vector<float>(10, 0.25f));
    addProperty(*mesh, "perFace", Geo::sFaceComp, std::vector<float3>(3, {1, 1, 1}));
    addProperty(*mesh, "ignored", Geo::sPointComp, std::vector<float3>(10, {1, 1, 1}));
    ZelvaneMeshToKovaOpts options;
    options.properties = "paint alpha perFace";
    KFnMesh fn(convert(*mesh, options));
    KStringArray names;
    fn.getColorSetNames(names);
    ASSERT_EQ(names, (KStringArray{"hostPaint", "alpha"}));
    EXPECT_EQ(fn.getColorRepresentation("hostPaint"), 4);
    EXPECT_EQ(fn.getColorRepresentation("alpha"), 1);
    KColorArray colors;
    const KString paint("hostPaint");
    ASSERT_TRUE(fn.getFaceVertexColors(colors, &paint));
    EXPECT_EQ(colors[0], KColor(1, 0, 0, 0.5f));
    EXPECT_EQ(colors[11], KColor(0, 1, 0, 1));
    const KString alpha("alpha");
    ASSERT_TRUE(fn.getFaceVertexColors(colors, &alpha));
    EXPECT_EQ(colors[5].a, 0.25f);
}

// Component tags.
TEST_F(MeshOutput, TagsAreNamedByHostNameOrPropertyNameWithoutPrefixAndSuffix) {
    ObjectPtr mesh = ngonObject();
    addTag(*mesh, Geo::sFaceComp, "top", {true, false, true});
    addTag(*mesh, Geo::sPointComp, "corner",
           {true, false, false, false, false, false, false, false, false, true}, "Corner Points");
    const KObject data = convert(*mesh);
    EXPECT_EQ(tagNames(data), (KStringArray{"top", "Corner Points"}));
    EXPECT_EQ(tagElements(data, "top"), (KIntArray{0, 2}));
    EXPECT_EQ(KFnGeometryData(data).componentTagCategory("top"), 4);
    EXPECT_EQ(tagElements(data, "Corner Points"), (KIntArray{0, 9}));
    EXPECT_EQ(KFnGeometryData(data).componentTagCategory("Corner Points"), 2);

    // The tag expression selects tags by property name; a malformed one selects nothing.
    ZelvaneMeshToKovaOpts options;
    options.componentTags = "* ^faceTag(top)";
    EXPECT_EQ(tagNames(convert(*mesh, options)), KStringArray{"Corner Points"});
    options.componentTags = "^";
    EXPECT_EQ(tagNames(convert(*mesh, options)).length(), 0u);
}

TEST_F(MeshOutput, AFailingTagAddIsReportedAndItsContentsAreStillSet) {
    ObjectPtr mesh = ngonObject();
    addTag(*mesh, Geo::sFaceComp, "top", {true, false, false});
    KMessageCapture messages;
    KFailureInjection::failNext("KFnGeometryData::addComponentTag");
    const KObject data = convert(*mesh);
    EXPECT_EQ(messages.errors(), (std::vector<KString>{"Could not add component tag named: top",
                                                       "Could not set component tag content "
                                                       "for: top"}));
    EXPECT_EQ(tagNames(data).length(), 0u);
    EXPECT_EQ(KFnMesh(data).numPolygons(), 3) << "tag failures are not fatal";
}

TEST_F(MeshOutput, ATagWhoseComponentCantBeBuiltIsReportedAndTheOthersAreWritten) {
    ObjectPtr mesh = ngonObject();
    addTag(*mesh, Geo::sFaceComp, "first", {true, true, false});
    addTag(*mesh, Geo::sFaceComp, "second", {false, true, false});
    KMessageCapture messages;
    KFailureInjection::failNext("KFnSingleIndexedComponent::addElement");
    const KObject data = convert(*mesh);
    EXPECT_EQ(messages.errors(),
              std::vector<KString>{"Could not set component tag content for: first"});
    EXPECT_EQ(tagNames(data), (KStringArray{"first", "second"}));
    EXPECT_TRUE(KFnGeometryData(data).componentTagContents("first").isNull());
    EXPECT_EQ(tagElements(data, "second"), KIntArray{1});
}

} // namespace
} // namespace MeshOutputTest
