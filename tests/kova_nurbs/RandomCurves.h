#pragma once

#include <algorithm>
#include <kova/nurbs/Curve.h>
#include <random>
#include <vector>

// Random curves for property and oracle tests: degree 1-5, rational or not, clamped open or
// periodic, with occasional repeated interior knots (clamped) and uneven knot intervals.
namespace kova::nurbs::fixtures {

struct RandomCurveOptions {
    bool periodic = false;
    bool rational = false;
};

inline Curve randomCurve(std::mt19937_64& rng, RandomCurveOptions options) {
    std::uniform_real_distribution<double> coordinate(-10.0, 10.0);
    std::uniform_real_distribution<double> weight(0.4, 2.5);
    std::uniform_real_distribution<double> interval(0.2, 1.5);
    std::uniform_int_distribution<int> degreeOf(1, 5);
    std::uniform_int_distribution<int> extra(0, 7);
    const int p = degreeOf(rng);

    std::vector<ControlVertex> cvs;
    std::vector<double> knots;
    const auto randomVertex = [&] {
        return ControlVertex{coordinate(rng), coordinate(rng), coordinate(rng),
                             options.rational ? weight(rng) : 1.0};
    };
    if (options.periodic) {
        const int distinct = std::max(2, p) + extra(rng);
        for (int i = 0; i < distinct; ++i)
            cvs.push_back(randomVertex());
        for (int i = 0; i < p; ++i)
            cvs.push_back(cvs[i]);
        std::vector<double> period(distinct);
        for (double& d : period)
            d = interval(rng);
        knots.push_back(coordinate(rng));
        for (int i = 0; i + 1 < distinct + 2 * p - 1; ++i)
            knots.push_back(knots.back() + period[i % distinct]);
        return Curve(p, Form::Periodic, std::move(cvs), std::move(knots));
    }

    const int n = p + 1 + extra(rng);
    for (int i = 0; i < n; ++i)
        cvs.push_back(randomVertex());
    const double start = coordinate(rng);
    knots.assign(p, start);
    std::bernoulli_distribution repeat(0.15);
    int run = 0;
    for (int i = 0; i < n - p - 1; ++i) {
        const bool again = i > 0 && run < p && repeat(rng);
        knots.push_back(again ? knots.back() : knots.back() + interval(rng));
        run = again ? run + 1 : 1;
    }
    knots.resize(knots.size() + p, knots.back() + interval(rng));
    return Curve(p, Form::Open, std::move(cvs), std::move(knots));
}

} // namespace kova::nurbs::fixtures
