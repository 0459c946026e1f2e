// Curve input at scale: random cubic curves of 10 CVs (clamped, and rational periodic ones)
// sampled by segment length (about 30 points a curve, no even segments) with tangents and
// lengths by the plug-in's kovaCurvesToObject, against OpenCASCADE's GCPnts_UniformAbscissa
// with the same abscissa and tolerance 1e-3 on a subset of the same curves, in one process.
//
// Prints, per set: time per curve (all threads and one thread; first conversion of fresh curves,
// which integrates their lengths, and a repeated one), OpenCASCADE's time per curve and the
// ratios; the largest deviation between the two point sets and each one's deviation from a
// converged reference (arc lengths integrated to 1e-14 over OpenCASCADE's derivative, points
// evaluated by OpenCASCADE), all relative to the curve's length and taken between points at the
// same arc length; and how the point counts compare (OpenCASCADE adds the curve's end point,
// which the conversion's segment-length rule does not: see runSet).
//
// Arguments: [curves per set (default 100000)] [OpenCASCADE subset (default 2000)].

#include <GCPnts_UniformAbscissa.hxx>
#include <GeomAdaptor_Curve.hxx>
#include <Geom_BSplineCurve.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TColgp_Array1OfPnt.hxx>
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <kova/KArrayDataBuilder.h>
#include <kova/KDoubleArray.h>
#include <kova/KFnNurbsCurve.h>
#include <kova/KFnNurbsCurveData.h>
#include <kova/KFnTypedAttribute.h>
#include <kova/KPlug.h>
#include <kova/KPointArray.h>
#include <random>
#include <tbb/global_control.h>
#include <vector>
#include <zelvane/Object.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/inputbypath/CurveOptions.h>

namespace {

using Zelvane::Math::float3;
using Clock = std::chrono::steady_clock;
using Converter = Orsel::MutablePtr<Zelvane::Object> (*)(
    const std::vector<KPlug>&, const std::vector<KDataHandle>&,
    const ZelvaneBoardInputByPath::CurveOptions&, bool, KPlug);

constexpr int kDegree = 3;
constexpr int kNumCVs = 10;
constexpr double kOpenCascadeTolerance = 1e-3;

// A curve in textbook form: cartesian CVs with weights, the full knot vector.
struct RandomCurve {
    std::vector<std::array<double, 4>> cvs; // x, y, z, w
    std::vector<double> knots;              // numCVs + degree + 1
    bool periodic = false;
};

// Clamped uniform cubics with CVs in [-10, 10]^3, or rational periodic ones (7 distinct CVs,
// weights in [0.5, 2], uniform knots).
std::vector<RandomCurve> randomCurves(std::size_t count, bool rationalPeriodic, unsigned seed) {
    std::mt19937_64 rng(seed);
    std::uniform_real_distribution<double> coordinate(-10.0, 10.0);
    std::uniform_real_distribution<double> weight(0.5, 2.0);
    std::vector<RandomCurve> curves(count);
    for (RandomCurve& curve : curves) {
        curve.periodic = rationalPeriodic;
        const int distinct = rationalPeriodic ? kNumCVs - kDegree : kNumCVs;
        for (int i = 0; i < distinct; ++i) {
            curve.cvs.push_back({coordinate(rng), coordinate(rng), coordinate(rng),
                                 rationalPeriodic ? weight(rng) : 1.0});
        }
        for (int i = distinct; i < kNumCVs; ++i) {
            curve.cvs.push_back(curve.cvs[static_cast<std::size_t>(i - distinct)]);
        }
        for (int k = 0; k < kNumCVs + kDegree + 1; ++k) {
            const int clamped = std::clamp(k - kDegree, 0, kNumCVs - kDegree);
            curve.knots.push_back(rationalPeriodic ? k : clamped);
        }
    }
    return curves;
}

// Host curve data of `curve` (host knots: the full vector without its first and last knot).
KObject hostCurve(const RandomCurve& curve) {
    KPointArray cvs;
    for (const auto& [x, y, z, w] : curve.cvs) {
        cvs.append(KPoint(x * w, y * w, z * w, w));
    }
    KDoubleArray knots;
    for (std::size_t k = 1; k + 1 < curve.knots.size(); ++k) {
        knots.append(curve.knots[k]);
    }
    const KObject data = KFnNurbsCurveData().create();
    KStatus status;
    KFnNurbsCurve().create(cvs, knots, kDegree,
                           curve.periodic ? KFnNurbsCurve::kPeriodic : KFnNurbsCurve::kOpen, false,
                           curve.periodic, data, &status);
    if (!status) {
        std::fprintf(stderr, "curve refused: %s\n", status.errorString().asChar());
        std::exit(1);
    }
    return data;
}

// Data handles on fresh host curves, as an array attribute's elements hold them.
struct HostCurves {
    std::vector<KPlug> plugs;
    std::vector<KDataHandle> handles;
};

HostCurves hostCurves(const std::vector<RandomCurve>& curves) {
    KFnTypedAttribute fnTyped;
    const KObject attribute = fnTyped.create("curves", "curves", KFnData::kNurbsCurve);
    fnTyped.setArray(true);
    KArrayDataBuilder builder(attribute);
    HostCurves host{std::vector<KPlug>(curves.size()), {}};
    for (unsigned int i = 0; i < curves.size(); ++i) {
        builder.addElement(i).set(hostCurve(curves[i]));
    }
    for (unsigned int i = 0; i < curves.size(); ++i) {
        host.handles.push_back(builder.addElement(i));
    }
    return host;
}

Handle(Geom_BSplineCurve) openCascadeCurve(const RandomCurve& curve) {
    std::vector<double> values;
    std::vector<int> multiplicities;
    for (double u : curve.knots) {
        if (!values.empty() && values.back() == u) {
            ++multiplicities.back();
        } else {
            values.push_back(u);
            multiplicities.push_back(1);
        }
    }
    TColStd_Array1OfReal knots(1, static_cast<int>(values.size()));
    TColStd_Array1OfInteger mults(1, static_cast<int>(values.size()));
    for (std::size_t i = 0; i < values.size(); ++i) {
        knots(static_cast<int>(i) + 1) = values[i];
        mults(static_cast<int>(i) + 1) = multiplicities[i];
    }
    TColgp_Array1OfPnt poles(1, kNumCVs);
    TColStd_Array1OfReal weights(1, kNumCVs);
    for (int i = 0; i < kNumCVs; ++i) {
        const auto& [x, y, z, w] = curve.cvs[static_cast<std::size_t>(i)];
        poles(i + 1) = gp_Pnt(x, y, z);
        weights(i + 1) = w;
    }
    return new Geom_BSplineCurve(poles, weights, knots, mults, kDegree);
}

// Arc length by a composite 5-point Gauss-Legendre rule over OpenCASCADE's derivative: a table
// over 256 pieces per knot span, and the parameter at a length by safeguarded Newton steps to
// 1e-14 of the length.
class ReferenceArcLength {
public:
    explicit ReferenceArcLength(const GeomAdaptor_Curve& curve) : curve_(curve) {
        TColStd_Array1OfReal knots(1, curve.NbIntervals(GeomAbs_CN) + 1);
        curve.Intervals(knots, GeomAbs_CN);
        bounds_.push_back(knots(1));
        lengths_.push_back(0.0);
        for (int k = 1; k < knots.Length(); ++k) {
            for (int piece = 1; piece <= kPieces; ++piece) {
                const double a = bounds_.back();
                const double b = knots(k) + (knots(k + 1) - knots(k)) * piece / kPieces;
                lengths_.push_back(lengths_.back() + integrate(a, b));
                bounds_.push_back(b);
            }
        }
    }

    double total() const { return lengths_.back(); }

    double paramAt(double length) const {
        if (length >= total()) {
            return bounds_.back();
        }
        const std::size_t k = static_cast<std::size_t>(
            std::upper_bound(lengths_.begin(), lengths_.end(), length) - lengths_.begin() - 1);
        double lo = bounds_[k];
        double hi = bounds_[k + 1];
        double t = lo + (hi - lo) * (length - lengths_[k]) / (lengths_[k + 1] - lengths_[k]);
        for (int iteration = 0; iteration < 60; ++iteration) {
            const double f = lengths_[k] + integrate(bounds_[k], t) - length;
            if (std::abs(f) <= 1e-14 * total()) {
                break;
            }
            (f > 0 ? hi : lo) = t;
            const double newton = t - f / speed(t);
            t = newton > lo && newton < hi ? newton : 0.5 * (lo + hi);
        }
        return t;
    }

private:
    static constexpr int kPieces = 256;

    double speed(double t) const {
        gp_Pnt point;
        gp_Vec first;
        curve_.D1(t, point, first);
        return first.Magnitude();
    }

    double integrate(double a, double b) const {
        static constexpr std::array<double, 5> nodes = {
            0.0, 0.5384693101056831, -0.5384693101056831, 0.9061798459386640, -0.9061798459386640};
        static constexpr std::array<double, 5> weights = {0.5688888888888889, 0.4786286704993665,
                                                          0.4786286704993665, 0.2369268850561891,
                                                          0.2369268850561891};
        const double half = 0.5 * (b - a);
        const double middle = 0.5 * (a + b);
        double sum = 0.0;
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            sum += weights[i] * speed(middle + half * nodes[i]);
        }
        return sum * half;
    }

    const GeomAdaptor_Curve& curve_;
    std::vector<double> bounds_;
    std::vector<double> lengths_;
};

double seconds(Clock::duration duration) {
    return std::chrono::duration<double>(duration).count();
}

double distance(const float3& a, const gp_Pnt& b) {
    return std::sqrt((a.x - b.X()) * (a.x - b.X()) + (a.y - b.Y()) * (a.y - b.Y()) +
                     (a.z - b.Z()) * (a.z - b.Z()));
}

// Times one conversion; the strand object is kept in `result`.
double timeConversion(Converter convert, const HostCurves& curves,
                      const ZelvaneBoardInputByPath::CurveOptions& options,
                      Orsel::Ptr<Zelvane::Object>& result) {
    const auto start = Clock::now();
    result = convert(curves.plugs, curves.handles, options, true, KPlug());
    const double elapsed = seconds(Clock::now() - start);
    if (!result) {
        std::fprintf(stderr, "the conversion failed\n");
        std::exit(1);
    }
    return elapsed;
}

void runSet(const char* name, Converter convert, std::size_t count, std::size_t subset,
            bool rationalPeriodic) {
    const std::vector<RandomCurve> curves = randomCurves(count, rationalPeriodic, 2024);
    subset = std::min(subset, count);

    // One segment length for all curves: about 30 points on a curve of average length.
    std::vector<Handle(Geom_BSplineCurve)> references;
    double meanLength = 0.0;
    for (std::size_t i = 0; i < subset; ++i) {
        references.push_back(openCascadeCurve(curves[i]));
        meanLength += ReferenceArcLength(GeomAdaptor_Curve(references.back())).total();
    }
    meanLength /= static_cast<double>(subset);
    ZelvaneBoardInputByPath::CurveOptions options;
    options.sampling = ZelvaneBoardInputByPath::CurveSampling::BySegmentLength;
    options.segmentLength = static_cast<float>(meanLength / 29.0);
    options.evenSegments = false;
    options.computeTangents = true;
    options.addLengths = true;
    const double abscissa = options.segmentLength;

    // Ours: fresh curves (lengths integrated in the conversion), then the same curves again. A
    // first conversion warms the allocator and the worker threads.
    Orsel::Ptr<Zelvane::Object> strands;
    timeConversion(convert, hostCurves(curves), options, strands);
    const double parallelCold = timeConversion(convert, hostCurves(curves), options, strands);
    const HostCurves warm = hostCurves(curves);
    timeConversion(convert, warm, options, strands);
    const double parallelWarm = timeConversion(convert, warm, options, strands);
    double serialCold = 0.0;
    {
        const tbb::global_control oneThread(tbb::global_control::max_allowed_parallelism, 1);
        Orsel::Ptr<Zelvane::Object> serialStrands;
        serialCold = timeConversion(convert, hostCurves(curves), options, serialStrands);
    }
    const auto positions = strands->getArray<float3>(Zelvane::Geometry::sPointPosition);
    const auto offsets = strands->getArray<std::uint32_t>(Zelvane::Geometry::sStrandOffset);

    // OpenCASCADE on the subset: sampler, then point and tangent per sample and the polyline
    // length, as the conversion delivers them.
    std::vector<std::vector<gp_Pnt>> theirs(subset);
    double theirPolylines = 0.0;
    const auto start = Clock::now();
    for (std::size_t i = 0; i < subset; ++i) {
        const GeomAdaptor_Curve adaptor(references[i]);
        const GCPnts_UniformAbscissa sampler(adaptor, abscissa, kOpenCascadeTolerance);
        double polyline = 0.0;
        for (int j = 1; sampler.IsDone() && j <= sampler.NbPoints(); ++j) {
            gp_Pnt point;
            gp_Vec tangent;
            adaptor.D1(sampler.Parameter(j), point, tangent);
            if (tangent.Magnitude() > 0.0) {
                tangent.Normalize();
            }
            if (!theirs[i].empty()) {
                polyline += point.Distance(theirs[i].back());
            }
            theirs[i].push_back(point);
        }
        theirPolylines += polyline;
    }
    const double openCascade = seconds(Clock::now() - start);

    // Deviations against each other and against the converged reference.
    const auto strandLengths = strands->getObject(Zelvane::Geometry::sStrandLength)
                                   ->getArray<float>(Zelvane::Geometry::sData);
    double ourPolylines = 0.0;
    double between = 0.0;
    double oursFromReference = 0.0;
    double theirsFromReference = 0.0;
    // Point counts. Both step by the abscissa from the start; OpenCASCADE then closes with the
    // curve's end point (a last, shorter segment), which the segment-length rule of the
    // conversion leaves out unless the length is a whole number of segments. So OpenCASCADE has
    // one point more, at the end of the curve, wherever the length is not such a multiple; the
    // points they share are compared one by one below, at the same arc length.
    std::size_t countsAlike = 0;
    std::size_t closedByTheEnd = 0;
    std::size_t countsDiffer = 0;
    std::size_t points = 0;
    for (std::size_t i = 0; i < subset; ++i) {
        const GeomAdaptor_Curve adaptor(references[i]);
        const ReferenceArcLength reference(adaptor);
        const std::size_t first = (*offsets)[i];
        const std::size_t ours = (*offsets)[i + 1] - first;
        const gp_Pnt end = adaptor.Value(adaptor.LastParameter());
        if (ours == theirs[i].size()) {
            ++countsAlike;
        } else if (ours + 1 == theirs[i].size() &&
                   theirs[i].back().Distance(end) <= 1e-12 * reference.total() &&
                   static_cast<double>(ours - 1) * abscissa < reference.total()) {
            ++closedByTheEnd;
        } else {
            ++countsDiffer;
        }
        const std::size_t common = std::min(ours, theirs[i].size());
        points += ours;
        ourPolylines += (*strandLengths)[i];
        for (std::size_t j = 0; j < common; ++j) {
            const gp_Pnt exact =
                adaptor.Value(reference.paramAt(static_cast<double>(j) * abscissa));
            const float3& p = (*positions)[first + j];
            between = std::max(between, distance(p, theirs[i][j]) / reference.total());
            oursFromReference = std::max(oursFromReference, distance(p, exact) / reference.total());
            theirsFromReference =
                std::max(theirsFromReference, theirs[i][j].Distance(exact) / reference.total());
        }
    }

    const double oursPerCurve = parallelCold / static_cast<double>(count) * 1e6;
    const double serialPerCurve = serialCold / static_cast<double>(count) * 1e6;
    const double theirsPerCurve = openCascade / static_cast<double>(subset) * 1e6;
    std::printf("%s: %zu curves, segment length %.4f (%.1f points a curve), OpenCASCADE on %zu\n",
                name, count, abscissa, static_cast<double>(points) / static_cast<double>(subset),
                subset);
    std::printf("  kovaCurvesToObject, all threads: %8.3f us/curve (repeated: %.3f us/curve)\n",
                oursPerCurve, parallelWarm / static_cast<double>(count) * 1e6);
    std::printf("  kovaCurvesToObject, one thread:  %8.3f us/curve\n", serialPerCurve);
    std::printf("  GCPnts_UniformAbscissa:          %8.3f us/curve\n", theirsPerCurve);
    std::printf("  ratio per curve: %.1fx (all threads), %.1fx (one thread)\n",
                theirsPerCurve / oursPerCurve, theirsPerCurve / serialPerCurve);
    std::printf("  largest deviation / curve length, points at the same arc length: between the "
                "two %.2e, ours from the reference %.2e, OpenCASCADE's %.2e\n",
                between, oursFromReference, theirsFromReference);
    std::printf("  point counts: %zu alike, %zu with OpenCASCADE's extra point at the curve's end "
                "(its last, shorter segment), %zu otherwise different\n",
                countsAlike, closedByTheEnd, countsDiffer);
    std::printf("  strand lengths over the subset: ours %.6f, OpenCASCADE's polylines %.6f (with "
                "their last segments)\n",
                ourPolylines, theirPolylines);
}

} // namespace

int main(int argc, char** argv) {
    const std::size_t count = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 100000;
    const std::size_t subset = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 2000;
    void* plugin = dlopen(PLUGIN_PATH, RTLD_NOW);
    const auto convert = plugin ? reinterpret_cast<Converter>(dlsym(
                                      plugin, "_Z18kovaCurvesToObjectRKSt6vectorI5KPlugSaIS0_EERKS_"
                                              "I11KDataHandleSaIS5_EERKN23ZelvaneBoardInputByPath12"
                                              "CurveOptionsEbS0_"))
                                : nullptr;
    if (!convert || count == 0 || subset == 0) {
        std::fprintf(stderr, "usage: curves_in_bench [curves] [subset]; plug-in: %s\n",
                     plugin ? "loaded" : dlerror());
        return 1;
    }
    runSet("clamped cubic, 10 CVs", convert, count, subset, false);
    runSet("rational periodic cubic, 10 CVs", convert, count, subset, true);
    return 0;
}
