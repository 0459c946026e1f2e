#include "common/ProfilerCategories.h"
#include "curves_in/CurveErrorReport.h"
#include "curves_in/CurveFailures.h"
#include "curves_in/CurveSampling.h"
#include "curves_in/KovaCurvesToObject.h"
#include "curves_in/SampleCounts.h"
#include "curves_in/StrandLengths.h"
#include "curves_in/StrandTags.h"
#include "plugin/StringResources.h"

#include <functional>
#include <kova/KDataHandle.h>
#include <kova/KProfilingScope.h>
#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/parallel_scan.h>
#include <tbb/partitioner.h>
#include <tbb/task_group.h>
#include <zelvane/geometry/GeoProperty.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/geometry/Strand.h>

using namespace ZelvanePlugin::CurvesInput;
using ZelvaneBoardInputByPath::CurveOptions;
using ZelvaneBoardInputByPath::CurveSampling;

namespace {

using Range = tbb::blocked_range<std::size_t>;
using Offsets = Orsel::Array<std::uint32_t>;

// Runs body(begin, end) over the curves, one curve per task at the finest.
template <class Body>
void forEachCurve(std::size_t curveCount, const Body& body) {
    tbb::parallel_for(
        Range(0, curveCount, 1), [&body](const Range& range) { body(range.begin(), range.end()); },
        tbb::auto_partitioner());
}

// Exclusive prefix sums of `counts` into the first entries of `offsets`, then the total as its
// last entry. The sums are kept in 64 bits; the caller checks that the total fits.
std::uint64_t fillOffsets(const std::vector<std::uint32_t>& counts, Offsets& offsets) {
    offsets.reserve(counts.size() + 1);
    offsets.resizeForOverwrite(counts.size());
    const std::uint64_t total = tbb::parallel_scan(
        Range(0, counts.size(), 1), std::uint64_t{0},
        [&](const Range& range, std::uint64_t sum, bool isFinalScan) {
            for (std::size_t i = range.begin(); i < range.end(); ++i) {
                if (isFinalScan) {
                    offsets[i] = static_cast<std::uint32_t>(sum);
                }
                sum += counts[i];
            }
            return sum;
        },
        std::plus<std::uint64_t>());
    offsets.push_back(static_cast<std::uint32_t>(total));
    return total;
}

template <class T>
Orsel::MutablePtr<Zelvane::Object> pointProperty(const Orsel::String& target,
                                                 Orsel::MutablePtr<Orsel::Array<T>>&& data) {
    return Zelvane::Geometry::createGeoProperty(target,
                                                Orsel::Ptr<Orsel::Array<T>>(std::move(data)));
}

} // namespace

Orsel::MutablePtr<Zelvane::Object> kovaCurvesToObject(const std::vector<KPlug>& plugs,
                                                      const std::vector<KDataHandle>& handles,
                                                      const CurveOptions& options,
                                                      bool plugsAreSources, KPlug inputPlug) {
    using namespace Zelvane::Geometry;
    const KProfilingScope scope(ZelvanePlugin::curveConverterCategory(),
                                ZelvanePlugin::kProfilerColor, "kovaCurvesToObject");
    const auto reportFailure = [&](std::uint64_t curve, const KStringResourceId& reason) {
        reportCurveFailure(plugs, plugsAreSources, inputPlug, curve, reason);
    };
    if (options.sampling == CurveSampling::BySegmentLength && !(options.segmentLength > 0.0)) {
        reportFailure(0, ZelvanePlugin::Strings::kSegmentLengthIsInvalid);
        return {};
    }

    // Points per curve, then where each strand starts.
    const std::size_t curveCount = plugs.size();
    CurveFailures failures;
    std::vector<std::uint32_t> counts(curveCount);
    forEachCurve(curveCount, [&](std::size_t begin, std::size_t end) {
        countSamples(handles, options, begin, end, counts, failures);
    });
    if (failures.failed()) {
        reportFailure(failures.lowestCurve(), ZelvanePlugin::Strings::kCurveIsInvalid);
        return {};
    }
    auto offsets = Orsel::make<Offsets>();
    const std::uint64_t total = fillOffsets(counts, *offsets);
    if (total > kMaxStrandPoints) {
        reportFailure(firstCurvePastPointLimit(counts), ZelvanePlugin::Strings::kCurveIsInvalid);
        return {};
    }

    // The point arrays and the wanted tags, then the points themselves.
    auto positions = Orsel::make<Orsel::Array<Zelvane::Math::float3>>();
    auto tangents = Orsel::make<Orsel::Array<Zelvane::Math::float3>>();
    TagMap tagMap(8);
    tagMap.max_load_factor(1.0f);
    std::vector<double> pointParams;
    tbb::task_group tasks;
    tasks.run([&] { positions->resizeForOverwrite(total); });
    if (options.computeTangents) {
        tasks.run([&] { tangents->resizeForOverwrite(total); });
    }
    tasks.run([&] {
        gatherTags(handles, curveCount, options.componentTags, total, tagMap, pointParams);
    });
    tasks.wait();
    tasks.run([&counts] { std::vector<std::uint32_t>().swap(counts); });
    const StrandSlices slices{offsets->span(), positions->span(), tangents->span(), pointParams};
    forEachCurve(curveCount, [&](std::size_t begin, std::size_t end) {
        sampleCurves(handles, options, slices, begin, end, failures);
    });
    tasks.wait();
    if (failures.failed()) {
        reportFailure(failures.lowestCurve(), ZelvanePlugin::Strings::kCurveIsInvalid);
        return {};
    }

    // The strand object; tags, lengths and ratios are worked out beside its assembly.
    const Orsel::Ptr<Offsets> strandOffsets(std::move(offsets));
    tasks.run(
        [&] { convertTagData(handles, options, strandOffsets->span(), pointParams, tagMap); });
    Orsel::MutablePtr<Zelvane::Object> result = Zelvane::createObject();
    populateStrand(std::move(positions), strandOffsets, *result);
    if (options.computeTangents) {
        result->set(sPointTangent, pointProperty(sPointComp, std::move(tangents)));
    }
    StrandLengths lengths;
    PointRatios ratios;
    if (options.addLengths) {
        tasks.run([&] { lengths = computeLengths(*result); });
    }
    tasks.run([&] { ratios = computePointRatios(*result); });
    tasks.wait();

    if (lengths.computed) {
        result->set(sStrandLength, pointProperty(sStrandComp, std::move(lengths.strandLengths)));
        result->set(sPointLength, pointProperty(sPointComp, std::move(lengths.pointLengths)));
    }
    if (ratios.computed) {
        result->set(sPointRatio, pointProperty(sPointComp, std::move(ratios.ratios)));
    }
    addTagProperties(tagMap, total, *result);
    return result;
}
