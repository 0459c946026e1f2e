#include "MeshInputFixture.h"

#include <cmath>
#include <iterator>
#include <kova/KProfiler.h>
#include <set>
#include <zelvane/geometry/ElementCount.h>
#include <zelvane/geometry/Mesh.h>
#include <zelvane/geometry/RangeProperty.h>

namespace {

using Zelvane::Math::float3;
namespace Geo = Zelvane::Geometry;

std::vector<float3> pointsOf(const KFloatPointArray& points) {
    std::vector<float3> result;
    for (unsigned int i = 0; i < points.length(); ++i) {
        result.push_back({points[i].x, points[i].y, points[i].z});
    }
    return result;
}

// World positions: the transform's translation moves every point.
TEST_F(MeshInput, NGonsGiveExactPositionsOffsetsFaceVerticesAndCounts) {
    const KObject shape = makeNGonMesh();
    ASSERT_TRUE(
        KFnTransform(transformOf(shape)).setTranslation(KVector(1, 2, 3), KSpace::kTransform));
    const auto object = convert(shape);
    ASSERT_TRUE(object);
    std::vector<float3> expected;
    for (const auto& [x, y, z] : NGonMesh::kPoints) {
        expected.push_back({x + 1, y + 2, z + 3});
    }
    EXPECT_EQ(values<float3>(*object, Geo::sPointPosition), expected);
    EXPECT_EQ(
        values<std::uint32_t>(*object, Geo::sFaceOffset),
        std::vector<std::uint32_t>(std::begin(NGonMesh::kOffsets), std::end(NGonMesh::kOffsets)));
    EXPECT_EQ(values<std::uint32_t>(*object, Geo::sFaceVertex),
              std::vector<std::uint32_t>(std::begin(NGonMesh::kFaceVertices),
                                         std::end(NGonMesh::kFaceVertices)));
    EXPECT_EQ(Geo::getElementCount(*object, Geo::sPointComp), 10u);
    EXPECT_EQ(Geo::getElementCount(*object, Geo::sFaceComp), 3u);
    EXPECT_EQ(Geo::getElementCount(*object, Geo::sFaceVertexComp), 12u);
    EXPECT_TRUE(Zelvane::Object::isA(*object, *Geo::getMeshPrototype()));
}

// Without polygons: one zero offset and no face-vertices. 100 points are copied by a plain
// loop, 101 by a parallel one; both give the host's points in order.
TEST_F(MeshInput, PointsOfMeshesWithoutPolygonsAreCopiedExactly) {
    for (const int count : {3, 100, 101}) {
        KFloatPointArray points;
        for (int i = 0; i < count; ++i) {
            points.append({float(i), float(i * i % 7), -float(i)});
        }
        const auto object = convert(makeMesh(points, {}, {}));
        ASSERT_TRUE(object);
        EXPECT_EQ(values<float3>(*object, Geo::sPointPosition), pointsOf(points)) << count;
        EXPECT_EQ(values<std::uint32_t>(*object, Geo::sFaceOffset),
                  (std::vector<std::uint32_t>{0}));
        EXPECT_TRUE(values<std::uint32_t>(*object, Geo::sFaceVertex).empty());
        EXPECT_EQ(Geo::getElementCount(*object, Geo::sFaceComp), 0u);
        EXPECT_EQ(Geo::getElementCount(*object, Geo::sFaceVertexComp), 0u);
    }
}

// A triangle facing (1, 1, 0), scaled by 2 along x: positions stretch, normals turn towards
// (1, 2, 0) (the inverse transpose), stay unit length and keep their face-vertex order.
TEST_F(MeshInput, NonUniformScaleTurnsFaceVertexNormalsByTheInverseTranspose) {
    const KObject shape = makeMesh({{1, 0, 0}, {0, 1, 0}, {0, 1, 1}}, {3}, {0, 1, 2});
    const double scale[3] = {2, 1, 1};
    ASSERT_TRUE(KFnTransform(transformOf(shape)).setScale(scale));
    const auto object = convert(shape);
    ASSERT_TRUE(object);
    EXPECT_EQ(values<float3>(*object, Geo::sPointPosition),
              (std::vector<float3>{{2, 0, 0}, {0, 1, 0}, {0, 1, 1}}));
    const std::string rangeName = Geo::getGeoPropRangeName(Geo::sFaceVertexNormal).toStdString();
    EXPECT_EQ(stringMember(*object, Geo::sFaceVertexNormal, Geo::sTarget), rangeName);
    EXPECT_EQ(stringMember(*object, rangeName, Geo::sTarget), "faceVertex");
    KIntArray idCounts, ids;
    ASSERT_TRUE(KFnMesh(shape).getNormalIds(idCounts, ids));
    EXPECT_EQ(propertyIndices(*object, rangeName),
              (std::vector<std::uint32_t>{std::uint32_t(ids[0]), std::uint32_t(ids[1]),
                                          std::uint32_t(ids[2])}));
    const auto normals = propertyData<float3>(*object, Geo::sFaceVertexNormal);
    ASSERT_EQ(normals.size(), std::size_t(KFnMesh(shape).numNormals()));
    const float inverseLength = 1.0f / std::sqrt(5.0f);
    for (const float3& n : normals) {
        EXPECT_NEAR(n.x, inverseLength, 1e-6);
        EXPECT_NEAR(n.y, 2 * inverseLength, 1e-6);
        EXPECT_NEAR(n.z, 0, 1e-6);
    }
}

// Point normals follow the converted geometry: a flat mesh rotated to face -y, with one point
// that no face uses.
TEST_F(MeshInput, PointNormalsAreComputedFromTheConvertedGeometry) {
    const KObject shape =
        makeMesh({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {5, 5, 5}}, {4}, {0, 1, 2, 3});
    const double quarterTurnAboutX[3] = {M_PI / 2, 0, 0};
    ASSERT_TRUE(KFnTransform(transformOf(shape)).setRotation(quarterTurnAboutX));
    MeshOptions options;
    options.pointNormals = true;
    const auto object = convert(shape, options);
    ASSERT_TRUE(object);
    EXPECT_EQ(stringMember(*object, Geo::sPointNormal, Geo::sTarget), "point");
    const auto normals = propertyData<float3>(*object, Geo::sPointNormal);
    ASSERT_EQ(normals.size(), 5u);
    const auto positions = values<float3>(*object, Geo::sPointPosition);
    const float3 faceNormal = Zelvane::Math::normalize(
        Zelvane::Math::cross(positions[1] - positions[0], positions[3] - positions[0]));
    for (int i = 0; i < 4; ++i) {
        EXPECT_NEAR(normals[i].x, faceNormal.x, 1e-6);
        EXPECT_NEAR(normals[i].y, faceNormal.y, 1e-6);
        EXPECT_NEAR(normals[i].z, faceNormal.z, 1e-6);
    }
    EXPECT_NEAR(std::fabs(faceNormal.y), 1.0f, 1e-6) << "the rotation turned the face";
    EXPECT_EQ(normals[4], (float3{0, 0, 0}));
}

TEST_F(MeshInput, FaceNormalsAreOnlyReportedAndOnlyWhenLoggingIsOn) {
    MeshOptions options;
    options.faceNormals = true;
    ASSERT_TRUE(options.setChannelFilter("")); // the unmapped "map1" would be reported too
    for (const bool logging : {false, true}) {
        logRuntimeMessages(logging);
        KMessageCapture capture;
        const auto object = convert(makeNGonMesh(), options);
        ASSERT_TRUE(object);
        EXPECT_TRUE(object->has(Geo::sPointPosition));
        EXPECT_EQ(capture.errors(),
                  logging ? std::vector<KString>{"Face normal conversion not supported"}
                          : std::vector<KString>{});
    }
}

TEST_F(MeshInput, HandleWithoutAMeshGivesNullAndOnlyTheOuterScope) {
    const KPlug time = plug("time1.outTime");
    KDataHandle handle;
    ASSERT_TRUE(time.getValue(handle));
    KProfiler::clear();
    KProfiler::setRecording(true);
    const auto object = converter_(time, handle, MeshOptions());
    KProfiler::setRecording(false);
    EXPECT_FALSE(object);
    const auto events = KProfiler::events();
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].label, "Kova to Zelvane Mesh translation");
    KProfiler::clear();
}

} // namespace
