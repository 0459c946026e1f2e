#include "CurveTestSupport.h"

#include <kova/KDagModifier.h>
#include <kova/KDataHandle.h>
#include <kova/KFnDagNode.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/KFnTransform.h>
#include <kova/KIntArray.h>
#include <kova/KPlug.h>
#include <kova/KStringArray.h>
#include <numbers>

namespace {

class CurveSceneTest : public CurveTest {
protected:
    // A circle of radius 1 in a new shape under a new transform; `fn` attaches to the shape.
    KObject circleShape(KFnNurbsCurve& fn) {
        KStatus status;
        const KObject transform = fn.create(circleCVs(), circleKnots(), 2, KFnNurbsCurve::kClosed,
                                            false, true, KObject(), &status);
        EXPECT_TRUE(status) << status.errorString();
        return transform;
    }

    static KPlug plug(const KObject& node, const char* attribute) {
        return KFnDependencyNode(node).findPlug(attribute, false);
    }

    // Scale 3 and translation (1, 2, 3).
    static void scaleAndMove(const KObject& transform) {
        const double scale[3] = {3, 3, 3};
        ASSERT_TRUE(KFnTransform(transform).setScale(scale));
        ASSERT_TRUE(KFnTransform(transform).setTranslation(KVector(1, 2, 3), KSpace::kTransform));
    }
};

TEST_F(CurveSceneTest, CreateWithoutParentMakesATransformAndAShape) {
    KFnNurbsCurve fn;
    const KObject transform = circleShape(fn);
    EXPECT_EQ(transform.apiType(), KFn::kTransform);
    EXPECT_EQ(fn.object().apiType(), KFn::kNurbsCurve);
    EXPECT_EQ(KFnDagNode(fn.object()).parent(0), transform);
    EXPECT_EQ(KFnDependencyNode(fn.object()).typeName(), "nurbsCurve");
    EXPECT_EQ(fn.numCVs(), 9);
    EXPECT_NEAR(fn.length(), 2 * std::numbers::pi, 1e-10);

    // Under an existing transform the shape itself is returned.
    KStatus status;
    KFnNurbsCurve second;
    const KObject shape = second.create({{0, 0, 0}, {1, 0, 0}}, {0, 1}, 1, KFnNurbsCurve::kOpen,
                                        false, false, transform, &status);
    ASSERT_TRUE(status) << status.errorString();
    EXPECT_EQ(shape, second.object());
    EXPECT_EQ(KFnDagNode(transform).childCount(), 2u);
}

TEST_F(CurveSceneTest, WorldSpaceReadsFollowTheTransform) {
    KFnNurbsCurve fn;
    const KObject transform = circleShape(fn);
    scaleAndMove(transform);
    const double h = std::sqrt(0.5);

    KPoint p;
    ASSERT_TRUE(fn.getPointAtParam(0.5, p, KSpace::kWorld));
    EXPECT_TRUE(p.isEquivalent(KPoint(1 + 3 * h, 2 + 3 * h, 3), 1e-13));
    ASSERT_TRUE(fn.getPointAtParam(0.5, p, KSpace::kObject));
    EXPECT_TRUE(p.isEquivalent(KPoint(h, h, 0), 1e-14));
    // Tangents map as vectors: scaled, not moved.
    EXPECT_TRUE(
        fn.tangent(0.0, KSpace::kWorld).isEquivalent(KVector(0, 3 * std::sqrt(2.0), 0), 1e-12));
    // CVs stay homogeneous in world space.
    KPoint cv;
    ASSERT_TRUE(fn.getCV(1, cv, KSpace::kWorld));
    EXPECT_TRUE(cv.isEquivalent(KPoint((1 + 3) * h, (2 + 3) * h, 3 * h, h), 1e-13));
    KPointArray cvs;
    ASSERT_TRUE(fn.getCVs(cvs, KSpace::kWorld));
    EXPECT_TRUE(cvs[0].isEquivalent(KPoint(4, 2, 3, 1), 1e-13));
    // Lengths and parameters from lengths are measured in world space.
    EXPECT_NEAR(fn.length(), 6 * std::numbers::pi, 1e-9);
    EXPECT_NEAR(fn.findParamFromLength(3 * std::numbers::pi / 4), 0.5, 1e-10);
    EXPECT_NEAR(fn.findLengthFromParam(2.0), 3 * std::numbers::pi, 1e-9);

    // Moving the transform again is seen by the next read.
    ASSERT_TRUE(KFnTransform(transform).setTranslation(KVector(0, 0, 0), KSpace::kTransform));
    ASSERT_TRUE(fn.getPointAtParam(0.0, p, KSpace::kWorld));
    EXPECT_TRUE(p.isEquivalent(KPoint(3, 0, 0), 1e-13));
    EXPECT_EQ(fn.getPointAtParam(0.0, p, KSpace::kInvalid).statusCode(),
              KStatus::kInvalidParameter);

    // The shape's "local" output is the curve in object space: as data it has no world.
    const KObject local = plug(fn.object(), "local").asKObject();
    ASSERT_FALSE(local.isNull());
    KFnNurbsCurve localFn(local);
    ASSERT_TRUE(localFn.getPointAtParam(0.0, p, KSpace::kWorld));
    EXPECT_TRUE(p.isEquivalent(KPoint(1, 0, 0), 1e-15));
    EXPECT_NEAR(localFn.length(), 2 * std::numbers::pi, 1e-10);
}

TEST_F(CurveSceneTest, ConnectedGenericInputReadsTheWorldSpaceCurve) {
    KFnNurbsCurve fn;
    scaleAndMove(circleShape(fn));
    const KObject displayShape = KFnDependencyNode().create("zelShape");
    ASSERT_FALSE(displayShape.isNull());
    KDGModifier modifier;
    ASSERT_TRUE(modifier.connect(plug(fn.object(), "worldSpace").elementByLogicalIndex(0),
                                 plug(displayShape, "inputSurface")));
    ASSERT_TRUE(modifier.doIt());

    EXPECT_EQ(plug(displayShape, "displayType").asInt(), KFnData::kNurbsCurve);
    KDataHandle handle;
    ASSERT_TRUE(plug(displayShape, "inputSurface").getValue(handle));
    EXPECT_EQ(handle.type(), 16);
    const KObject curve = handle.asNurbsCurve();
    ASSERT_FALSE(curve.isNull());
    EXPECT_TRUE(handle.asMesh().isNull());
    EXPECT_TRUE(handle.geometryTransformMatrix().isEquivalent(
        plug(fn.object(), "worldMatrix").elementByLogicalIndex(0).asMatrix()));
    KFnNurbsCurve reader(curve);
    EXPECT_NEAR(reader.length(), 6 * std::numbers::pi, 1e-9);
    KPoint p;
    ASSERT_TRUE(reader.getPointAtParam(2.0, p, KSpace::kWorld));
    EXPECT_TRUE(p.isEquivalent(KPoint(-2, 2, 3), 1e-13));
}

TEST_F(CurveSceneTest, SetCVsOnAShapeFeedsItNewDataAndMapsWorldPointsBack) {
    KFnNurbsCurve fn;
    const KObject transform =
        fn.create({{0, 0, 0}, {1, 0, 0}}, {0, 1}, 1, KFnNurbsCurve::kOpen, false, false);
    scaleAndMove(transform);
    ASSERT_TRUE(fn.setCVs({{1, 2, 3}, {7, 2, 3}}, KSpace::kWorld));
    KPoint cv;
    ASSERT_TRUE(fn.getCV(1, cv, KSpace::kObject));
    EXPECT_TRUE(cv.isEquivalent(KPoint(2, 0, 0), 1e-13));
    EXPECT_NEAR(fn.length(), 6.0, 1e-12);
}

TEST_F(CurveSceneTest, CVTagsAreCategoryTwoAndTravelToTheWorldSpaceOutput) {
    KFnNurbsCurve fn;
    const KObject data =
        curveData(fn, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}}, {0, 0, 1, 2, 2}, 2);
    KFnGeometryData geometry(data);
    KFnSingleIndexedComponent component;
    const KObject cvs = component.create(KFn::kCurveCVComponent);
    ASSERT_TRUE(component.addElement(1));
    ASSERT_TRUE(component.addElement(3));
    ASSERT_TRUE(geometry.addComponentTag("tips"));
    ASSERT_TRUE(geometry.setComponentTagContents("tips", cvs));
    EXPECT_EQ(geometry.componentTagCategory("tips"), 2);
    // CV 4 does not exist on a 4-CV curve.
    ASSERT_TRUE(component.addElement(4));
    EXPECT_FALSE(geometry.setComponentTagContents("tips", cvs));

    // Through a shape, the world-space data carries the tag too.
    KDagModifier modifier;
    const KObject transform = modifier.createNode("nurbsCurve");
    ASSERT_TRUE(modifier.doIt());
    const KObject shape = KFnDagNode(transform).child(0);
    ASSERT_TRUE(plug(shape, "create").setKObject(data));
    const KObject world = plug(shape, "worldSpace").elementByLogicalIndex(0).asKObject();
    KFnGeometryData worldTags(world);
    KStringArray names;
    ASSERT_TRUE(worldTags.componentTags(names));
    ASSERT_EQ(names.length(), 1u);
    EXPECT_EQ(names[0], "tips");
    KIntArray elements;
    ASSERT_TRUE(
        KFnSingleIndexedComponent(worldTags.componentTagContents("tips")).getElements(elements));
    EXPECT_EQ(std::vector<int>(elements.begin(), elements.end()), (std::vector<int>{1, 3}));
}

} // namespace
