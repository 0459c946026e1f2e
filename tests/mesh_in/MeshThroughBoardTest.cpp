#include "MeshInputFixture.h"

#include <kova/KGlobal.h>
#include <orsel/MetadataItem.h>
#include <zelvane/geometry/ElementCount.h>
#include <zelvane/geometry/RangeProperty.h>

namespace {

namespace Geo = Zelvane::Geometry;
using Zelvane::Math::float3;

// A mesh shape feeding a board's object port: the executor's input translation hands the
// graph the converted mesh, with the port's options applied and its materials recorded.
TEST_F(MeshInput, MeshShapeOnABoardPortArrivesAsAGraphMesh) {
    const KObject shape = makeNGonMesh();
    ASSERT_TRUE(
        KFnTransform(transformOf(shape)).setTranslation(KVector(0, 0, 2), KSpace::kTransform));
    Orsel::MetadataItem options("inputByPath");
    options.setChild("pointNormals", "true");
    options.setChild("faceVertexNormals", "false");
    const auto object = throughBoard(shape, options);
    ASSERT_TRUE(object);
    EXPECT_EQ(Geo::getElementCount(*object, Geo::sFaceVertexComp), 12u);
    EXPECT_EQ(values<std::uint32_t>(*object, Geo::sFaceOffset),
              (std::vector<std::uint32_t>{0, 4, 7, 12}));
    const auto positions = values<float3>(*object, Geo::sPointPosition);
    ASSERT_EQ(positions.size(), 10u);
    EXPECT_EQ(positions[7], (float3{4.5f, 1, 2}));
    EXPECT_EQ(propertyData<float3>(*object, Geo::sPointNormal), std::vector<float3>(10, {0, 0, 1}));
    EXPECT_FALSE(object->has(Geo::sFaceVertexNormal));
    EXPECT_FALSE(object->has(Geo::getGeoPropRangeName(Geo::sFaceVertexNormal)));
    EXPECT_EQ(shaderNames(*object), (std::pair<std::string, std::string>{"", ""}))
        << "no shading group: both references are empty names";
}

TEST_F(MeshInput, MaterialsComeFromTheFirstOfTwoShadingGroups) {
    const KObject shape = makeNGonMesh();
    const std::string shapeName = KFnDependencyNode(shape).name().str();
    ASSERT_TRUE(KGlobal::executeCommand(
        KString("createNode shadingEngine -name sgRed; createNode lambert -name red; "
                "createNode displacementShader -name bumps; "
                "connectAttr red.message sgRed.surfaceShader; "
                "connectAttr bumps.message sgRed.displacementShader; "
                "createNode shadingEngine -name sgBlue; createNode lambert -name blue; "
                "connectAttr blue.message sgBlue.surfaceShader; "
                "sets -edit -forceElement sgRed " +
                shapeName +
                ".f[0:1]; "
                "sets -edit -forceElement sgBlue " +
                shapeName + ".f[2]")));
    const auto object = throughBoard(shape);
    ASSERT_TRUE(object);
    EXPECT_EQ(shaderNames(*object), (std::pair<std::string, std::string>{"red", "bumps"}));
    EXPECT_TRUE(object->has("sgRed")) << "shading groups are sets of the mesh too";
    EXPECT_TRUE(object->has("sgBlue"));
}

TEST_F(MeshInput, ShadingGroupWithoutDisplacementGivesAnEmptyDisplacementName) {
    const KObject shape = makeNGonMesh();
    const std::string shapeName = KFnDependencyNode(shape).name().str();
    ASSERT_TRUE(KGlobal::executeCommand(
        KString("createNode shadingEngine -name sgBlue; createNode lambert -name blue; "
                "connectAttr blue.message sgBlue.surfaceShader; "
                "sets -edit -forceElement sgBlue " +
                shapeName)));
    const auto object = throughBoard(shape);
    ASSERT_TRUE(object);
    EXPECT_EQ(shaderNames(*object), (std::pair<std::string, std::string>{"blue", ""}));
    EXPECT_FALSE(object->has("sgBlue")) << "a whole-mesh member has no component to convert";
}

} // namespace
