#include <cmath>
#include <gtest/gtest.h>
#include <kova/nurbs/Curve.h>
#include <kova/nurbs/KnotVector.h>
#include <limits>
#include <vector>

using namespace kova::nurbs;

TEST(KnotVector, ConvertsBetweenHostAndFullConventions) {
    const std::vector<double> bezier = {0, 0, 0, 1, 1, 1};
    EXPECT_EQ(fullKnotsFromHost(bezier, 3, Form::Open),
              (std::vector<double>{0, 0, 0, 0, 1, 1, 1, 1}));
    const std::vector<double> unclamped = {0, 1, 2, 4, 5};
    EXPECT_EQ(fullKnotsFromHost(unclamped, 2, Form::Open),
              (std::vector<double>{-1, 0, 1, 2, 4, 5, 6}));
    const Curve circle = Curve::circle({0, 0, 0}, 1.0, Form::Periodic);
    const std::vector<double> full = circle.fullKnots();
    EXPECT_EQ(full, (std::vector<double>{-0.25, 0, 0, 0.25, 0.25, 0.5, 0.5, 0.75, 0.75, 1, 1, 1.25,
                                         1.25}));
    EXPECT_EQ(hostKnotsFromFull(full), circle.knots());
    const Curve back = Curve::fromFullKnots(2, Form::Periodic, circle.cvs(), full);
    EXPECT_EQ(back.knots(), circle.knots());
    EXPECT_TRUE(back.isValid());
    EXPECT_TRUE(fullKnotsFromHost(std::vector<double>{0}, 1, Form::Open).empty());
    EXPECT_TRUE(fullKnotsFromHost(bezier, 0, Form::Open).empty());
    EXPECT_TRUE(fullKnotsFromHost(std::vector<double>{0, 1, 2}, 2, Form::Periodic).empty());
    EXPECT_TRUE(hostKnotsFromFull(std::vector<double>{0, 1}).empty());
}

TEST(CurveValidation, NamesTheFirstProblem) {
    const std::vector<ControlVertex> four = {
        {0, 0, 0, 1}, {1, 0, 0, 1}, {2, 0, 0, 1}, {3, 0, 0, 1}};
    const std::vector<double> cubic = {0, 0, 0, 1, 1, 1};
    struct Case {
        Curve curve;
        const char* message;
    };
    std::vector<ControlVertex> zeroWeight = four;
    zeroWeight[2].w = 0.0;
    std::vector<ControlVertex> infinite = four;
    infinite[1].y = std::numeric_limits<double>::infinity();
    const Case cases[] = {
        {Curve(0, Form::Open, four, {}), "The degree must be at least 1 (it is 0)."},
        {Curve(16, Form::Open, four, {}), "The degree 16 exceeds the supported maximum of 15."},
        {Curve(3, static_cast<Form>(7), four, cubic),
         "The form 7 is unknown (1 is open, 2 closed, 3 periodic)."},
        {Curve(3, Form::Open, {four[0], four[1]}, cubic),
         "A curve of degree 3 needs at least 4 CVs (it has 2)."},
        {Curve(3, Form::Open, four, {0, 0, 1, 1, 1}),
         "A curve with 4 CVs of degree 3 needs 6 knots (it has 5)."},
        {Curve(3, Form::Open, four, {0, 0, 0, std::nan(""), 1, 1}),
         "Knot 3 is not a finite number."},
        {Curve(3, Form::Open, four, {0, 0, 2, 1, 1, 1}),
         "The knots decrease at knot 3 (from 2 to 1)."},
        {Curve(1, Form::Open, four, {0, 1, 1, 2}),
         "Knot 2 (1) is repeated more often than the degree 1 allows."},
        {Curve(3, Form::Open, four, {0, 0, 1, 1, 2, 2}), "The knot domain [1, 1] is empty."},
        {Curve(3, Form::Open, infinite, cubic),
         "CV 1 has a coordinate or weight that is not a finite number."},
        {Curve(3, Form::Open, zeroWeight, cubic),
         "CV 2 has the weight 0; weights must be positive."},
    };
    for (const Case& c : cases)
        EXPECT_EQ(c.curve.validate(), c.message);
    EXPECT_EQ(Curve(3, Form::Open, four, cubic).validate(), "");
}

TEST(CurveValidation, RejectsBrokenPeriodicityAndClosedCurvesWithOpenEnds) {
    const std::vector<Vec3> pentagon = {{2, 0, 0}, {1, 2, 1}, {-1, 2, 0}, {-2, 0, -1}, {0, -2, 0}};
    const Curve good = Curve::periodicUniform(3, pentagon);
    std::vector<ControlVertex> cvs = good.cvs();
    cvs[6].x += 0.01;
    EXPECT_EQ(Curve(3, Form::Periodic, cvs, good.knots()).validate(),
              "CV 6 of the periodic curve does not repeat CV 1.");
    std::vector<double> knots = good.knots();
    knots.back() += 0.5;
    EXPECT_EQ(Curve(3, Form::Periodic, good.cvs(), knots).validate(),
              "The knot intervals of the periodic curve do not repeat every 5 intervals "
              "(interval 8 differs from interval 3).");
    const Curve notClosed(2, Form::Closed, {{0, 0, 0, 1}, {1, 1, 0, 1}, {2, 0, 0, 1}},
                          {0, 0, 1, 1});
    EXPECT_EQ(notClosed.validate(), "The curve is closed but its ends are 2 apart.");
}
