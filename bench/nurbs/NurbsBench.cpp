// Point evaluation and arc-length sampling of random cubic B-splines: this library against
// OpenCASCADE's Geom_BSplineCurve, GeomAdaptor_Curve and GCPnts_UniformAbscissa, in one process.
// The argument is the number of CVs; rational curves have random weights in [0.5, 2].

#include <GCPnts_UniformAbscissa.hxx>
#include <GeomAdaptor_Curve.hxx>
#include <Geom_BSplineCurve.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TColgp_Array1OfPnt.hxx>
#include <benchmark/benchmark.h>
#include <kova/nurbs/ArcLengthTable.h>
#include <kova/nurbs/Curve.h>
#include <random>
#include <vector>

using namespace kova::nurbs;

namespace {

constexpr int kSamples = 1000;

Curve randomCubic(int numCVs, bool rational) {
    std::mt19937_64 rng(static_cast<unsigned>(numCVs) * 2 + rational);
    std::uniform_real_distribution<double> coordinate(-10.0, 10.0);
    std::uniform_real_distribution<double> weight(0.5, 2.0);
    std::vector<Vec3> points(static_cast<std::size_t>(numCVs));
    for (Vec3& p : points)
        p = {coordinate(rng), coordinate(rng), coordinate(rng)};
    const Curve uniform = Curve::clampedUniform(3, points);
    std::vector<ControlVertex> cvs = uniform.cvs();
    if (rational)
        for (ControlVertex& cv : cvs)
            cv.w = weight(rng);
    return Curve(3, Form::Open, std::move(cvs), uniform.knots());
}

Handle(Geom_BSplineCurve) toOpenCascade(const Curve& curve) {
    std::vector<double> values;
    std::vector<int> multiplicities;
    for (double u : curve.fullKnots()) {
        if (!values.empty() && values.back() == u) {
            ++multiplicities.back();
        } else {
            values.push_back(u);
            multiplicities.push_back(1);
        }
    }
    const int count = static_cast<int>(values.size());
    TColStd_Array1OfReal knots(1, count);
    TColStd_Array1OfInteger mults(1, count);
    for (int i = 0; i < count; ++i) {
        knots(i + 1) = values[i];
        mults(i + 1) = multiplicities[i];
    }
    TColgp_Array1OfPnt poles(1, curve.numCVs());
    TColStd_Array1OfReal weights(1, curve.numCVs());
    for (int i = 0; i < curve.numCVs(); ++i) {
        const ControlVertex& cv = curve.cvs()[i];
        poles(i + 1) = gp_Pnt(cv.x, cv.y, cv.z);
        weights(i + 1) = cv.w;
    }
    return new Geom_BSplineCurve(poles, weights, knots, mults, curve.degree());
}

std::vector<double> evenParameters(const Curve& curve) {
    const auto [start, end] = curve.knotDomain();
    std::vector<double> params(kSamples);
    for (int i = 0; i < kSamples; ++i)
        params[i] = start + (end - start) * i / (kSamples - 1);
    return params;
}

void BM_PointsKova(benchmark::State& state) {
    const Curve curve = randomCubic(static_cast<int>(state.range(0)), state.range(1) != 0);
    const std::vector<double> params = evenParameters(curve);
    std::vector<double> xyz(3 * params.size());
    for (auto _ : state) {
        curve.samplePoints(params.data(), params.size(), xyz.data());
        benchmark::DoNotOptimize(xyz.data());
    }
    state.SetItemsProcessed(state.iterations() * kSamples);
}

void BM_PointsOpenCascadeCurve(benchmark::State& state) {
    const Curve curve = randomCubic(static_cast<int>(state.range(0)), state.range(1) != 0);
    const Handle(Geom_BSplineCurve) reference = toOpenCascade(curve);
    const std::vector<double> params = evenParameters(curve);
    for (auto _ : state) {
        for (double t : params) {
            gp_Pnt point = reference->Value(t);
            benchmark::DoNotOptimize(point);
        }
    }
    state.SetItemsProcessed(state.iterations() * kSamples);
}

void BM_PointsOpenCascadeAdaptor(benchmark::State& state) {
    const Curve curve = randomCubic(static_cast<int>(state.range(0)), state.range(1) != 0);
    const GeomAdaptor_Curve reference(toOpenCascade(curve));
    const std::vector<double> params = evenParameters(curve);
    for (auto _ : state) {
        for (double t : params) {
            gp_Pnt point = reference.Value(t);
            benchmark::DoNotOptimize(point);
        }
    }
    state.SetItemsProcessed(state.iterations() * kSamples);
}

// A whole arc-length resampling of one curve into 100 points, as the curve converter does:
// measure, place the parameters, evaluate the points.
void BM_ArcLengthSamplingKova(benchmark::State& state) {
    const Curve curve = randomCubic(static_cast<int>(state.range(0)), state.range(1) != 0);
    std::vector<double> params(100);
    std::vector<double> xyz(3 * params.size());
    for (auto _ : state) {
        const ArcLengthTable table(curve, 1e-3);
        const double step = table.totalLength() / (params.size() - 1);
        for (std::size_t j = 0; j < params.size(); ++j)
            params[j] = table.paramAt(step * j);
        curve.samplePoints(params.data(), params.size(), xyz.data());
        benchmark::DoNotOptimize(xyz.data());
    }
    state.SetItemsProcessed(state.iterations());
}

void BM_ArcLengthSamplingOpenCascade(benchmark::State& state) {
    const Curve curve = randomCubic(static_cast<int>(state.range(0)), state.range(1) != 0);
    const GeomAdaptor_Curve reference(toOpenCascade(curve));
    for (auto _ : state) {
        const GCPnts_UniformAbscissa sampler(reference, 100, 1e-3);
        for (int j = 1; j <= sampler.NbPoints(); ++j) {
            gp_Pnt point = reference.Value(sampler.Parameter(j));
            benchmark::DoNotOptimize(point);
        }
    }
    state.SetItemsProcessed(state.iterations());
}

// Arguments: number of CVs, rational (0/1).
void curves(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"cvs", "rational"});
    for (int cvs : {8, 64})
        for (int rational : {0, 1})
            bench->Args({cvs, rational});
}

BENCHMARK(BM_PointsKova)->Apply(curves);
BENCHMARK(BM_PointsOpenCascadeCurve)->Apply(curves);
BENCHMARK(BM_PointsOpenCascadeAdaptor)->Apply(curves);
BENCHMARK(BM_ArcLengthSamplingKova)->Apply(curves)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ArcLengthSamplingOpenCascade)->Apply(curves)->Unit(benchmark::kMicrosecond);

} // namespace
