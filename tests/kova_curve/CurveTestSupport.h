#pragma once

#include <cmath>
#include <gtest/gtest.h>
#include <kova/KFailureInjection.h>
#include <kova/KFnNurbsCurve.h>
#include <kova/KFnNurbsCurveData.h>
#include <kova/KScene.h>

// Resets the scene and failure injection around each test, and builds curves.
class CurveTest : public ::testing::Test {
protected:
    void SetUp() override {
        KFailureInjection::reset();
        KScene::reset();
    }
    void TearDown() override {
        KFailureInjection::reset();
        KScene::reset();
    }

    // New curve data holding the curve, with `fn` attached; fails the test when refused.
    static KObject curveData(KFnNurbsCurve& fn, const KPointArray& cvs, const KDoubleArray& knots,
                             unsigned int degree, KFnNurbsCurve::Form form = KFnNurbsCurve::kOpen,
                             bool rational = false) {
        KStatus status;
        const KObject data = KFnNurbsCurveData().create(&status);
        EXPECT_TRUE(status) << status.errorString();
        fn.create(cvs, knots, degree, form, false, rational, data, &status);
        EXPECT_TRUE(status) << status.errorString();
        return data;
    }

    // The circle around the origin as a closed rational quadratic: 9 homogeneous CVs, domain
    // [0, 4], one quarter per unit.
    static KPointArray circleCVs(double radius = 1.0) {
        const double h = std::sqrt(0.5);
        const double xy[9][2] = {{1, 0},   {1, 1},  {0, 1},  {-1, 1}, {-1, 0},
                                 {-1, -1}, {0, -1}, {1, -1}, {1, 0}};
        KPointArray cvs;
        for (int i = 0; i < 9; ++i) {
            const double w = i % 2 == 1 ? h : 1.0;
            cvs.append(KPoint(radius * xy[i][0] * w, radius * xy[i][1] * w, 0.0, w));
        }
        return cvs;
    }
    static KDoubleArray circleKnots() { return {0, 0, 1, 1, 2, 2, 3, 3, 4, 4}; }
};
