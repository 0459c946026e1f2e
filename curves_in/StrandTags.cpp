#include "curves_in/StrandTags.h"

#include "common/ProfilerCategories.h"
#include "curves_in/CurveData.h"
#include "curves_in/CvParameters.h"
#include "curves_in/TagTransfer.h"

#include <algorithm>
#include <kova/KFnComponent.h>
#include <kova/KFnGeometryData.h>
#include <kova/KFnNurbsCurve.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/KIntArray.h>
#include <kova/KProfilingScope.h>
#include <kova/KStringArray.h>
#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/parallel_sort.h>
#include <tbb/partitioner.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/geometry/PropertyLookup.h>
#include <zelvane/geometry/Tag.h>
#include <zelvane/utils/ChannelParser.h>

namespace ZelvanePlugin::CurvesInput {

namespace {

using ZelvaneBoardInputByPath::CurveOptions;
using ZelvaneBoardInputByPath::CurveSampling;
using ZelvaneBoardInputByPath::TagTransfer;

// The host's tag category of curve CVs.
constexpr int kCVCategory = 2;
// CV lists from this long on are sorted in parallel.
constexpr std::size_t kParallelSortSize = 500;

// One wanted tag during conversion: a yes/no mark per point of the whole strand object.
struct TagMarks {
    const Orsel::String* name;
    Orsel::Ptr<Orsel::Array<std::uint32_t>>* points;
    std::vector<std::uint8_t> marks;
};

// One curve's part of the conversion.
struct CurveTags {
    const KFnGeometryData& geometry;
    std::span<const double> cvParams;
    int distinctCVs;
    std::size_t firstPoint;
    std::size_t pointCount;
};

template <class Body>
void forEachIndex(std::size_t count, std::size_t grain, const Body& body) {
    tbb::parallel_for(
        tbb::blocked_range<std::size_t>(0, count, grain),
        [&body](const tbb::blocked_range<std::size_t>& range) {
            for (std::size_t i = range.begin(); i < range.end(); ++i) {
                body(i);
            }
        },
        tbb::auto_partitioner());
}

// The CVs of a tag that is not complete, sorted ascending.
std::vector<int> sortedElements(const KObject& contents) {
    KIntArray elements;
    KFnSingleIndexedComponent(contents).getElements(elements);
    std::vector<int> sorted(elements.begin(), elements.end());
    if (sorted.size() < kParallelSortSize) {
        std::sort(sorted.begin(), sorted.end());
    } else {
        tbb::parallel_sort(sorted.begin(), sorted.end());
    }
    return sorted;
}

void markCurve(const CurveTags& curve, const CurveOptions& options,
               std::span<const double> pointParams, TagMarks& tag) {
    const KString name(tag.name->internal_string_view());
    KStatus status;
    if (curve.geometry.componentTagCategory(name, &status) != kCVCategory || !status) {
        return;
    }
    const KObject contents = curve.geometry.componentTagContents(name, &status);
    if (!status) {
        return;
    }
    const auto marks = std::span(tag.marks).subspan(curve.firstPoint, curve.pointCount);
    if (KFnComponent(contents).isComplete()) {
        std::fill(marks.begin(), marks.end(), std::uint8_t{1});
        return;
    }
    const std::vector<int> elements = sortedElements(contents);
    if (options.sampling == CurveSampling::CVs) {
        for (const int cv : elements) {
            if (cv >= 0 && static_cast<std::size_t>(cv) < marks.size()) {
                marks[static_cast<std::size_t>(cv)] = 1;
            }
        }
        return;
    }
    const TaggedCVs tagged(elements, curve.distinctCVs);
    const auto params = pointParams.subspan(curve.firstPoint, curve.pointCount);
    if (options.tagTransfer == TagTransfer::NearestCV) {
        for (std::size_t p = 0; p < marks.size(); ++p) {
            marks[p] = tagged.contains(nearestCV(curve.cvParams, params[p]));
        }
    } else if (options.tagTransfer == TagTransfer::BothNeighbours && curve.cvParams.size() > 1) {
        for (std::size_t p = 0; p < marks.size(); ++p) {
            marks[p] = bothNeighboursTagged(curve.cvParams, params[p], tagged);
        }
    }
}

void convertCurveTags(const std::vector<KDataHandle>& handles, const CurveOptions& options,
                      std::span<const std::uint32_t> offsets, std::span<const double> pointParams,
                      std::size_t i, std::vector<TagMarks>& tags) {
    const std::size_t firstPoint = offsets[i];
    const std::size_t pointCount = offsets[i + 1] - firstPoint;
    if (pointCount == 0) {
        return;
    }
    const KObject data = curveData(handles, i);
    const KFnNurbsCurve curve(data);
    KStatus cvsRead;
    KStatus degreeRead;
    KStatus formRead;
    const int numCVs = curve.numCVs(&cvsRead);
    const int degree = curve.degree(&degreeRead);
    const KFnNurbsCurve::Form form = curve.form(&formRead);
    if (!cvsRead || !degreeRead || !formRead) {
        return; // a curve that can't be read contributes no tags
    }
    const int distinctCVs = form == KFnNurbsCurve::kPeriodic ? numCVs - degree : numCVs;
    const std::vector<double> cvParams = cvParameters(curve, numCVs, degree);
    if (cvParams.empty() || distinctCVs < 1) {
        return;
    }
    KStatus status;
    const KFnGeometryData geometry(data, &status);
    if (!status) {
        return;
    }
    const CurveTags curveTags{geometry, cvParams, distinctCVs, firstPoint, pointCount};
    forEachIndex(tags.size(), 1,
                 [&](std::size_t t) { markCurve(curveTags, options, pointParams, tags[t]); });
}

Orsel::Ptr<Orsel::Array<std::uint32_t>> markedPoints(const std::vector<std::uint8_t>& marks) {
    auto points = Orsel::make<Orsel::Array<std::uint32_t>>();
    points->reserve(static_cast<std::size_t>(std::count(marks.begin(), marks.end(), 1)));
    for (std::size_t p = 0; p < marks.size(); ++p) {
        if (marks[p]) {
            points->push_back(static_cast<std::uint32_t>(p));
        }
    }
    return points;
}

} // namespace

void gatherTags(const std::vector<KDataHandle>& handles, std::size_t curveCount,
                const Orsel::String& expression, std::size_t pointCount, TagMap& tagMap,
                std::vector<double>& pointParams) {
    const KProfilingScope scope(curveConverterCategory(), kProfilerColor, "gatherTags");
    ZEL::Utils::ChannelParser parser;
    parser.parses(expression); // a malformed expression accepts nothing
    for (std::size_t i = 0; i < curveCount; ++i) {
        KStatus status;
        const KFnGeometryData geometry(curveData(handles, i), &status);
        KStringArray names;
        if (!status || !geometry.componentTags(names)) {
            continue;
        }
        for (const KString& name : names) {
            if (parser.accepts(name.view())) {
                tagMap[Orsel::String(name.asUTF8())] = nullptr;
            }
        }
    }
    if (!tagMap.empty()) {
        pointParams.assign(pointCount, 0.0);
    }
}

void convertTagData(const std::vector<KDataHandle>& handles, const CurveOptions& options,
                    std::span<const std::uint32_t> offsets, std::span<const double> pointParams,
                    TagMap& tagMap) {
    const KProfilingScope scope(curveConverterCategory(), kProfilerColor, "convertTagData");
    if (tagMap.empty() || offsets.empty()) {
        return;
    }
    std::vector<TagMarks> tags;
    tags.reserve(tagMap.size());
    for (auto& [name, points] : tagMap) {
        tags.push_back({&name, &points, {}});
    }
    const std::size_t pointCount = offsets.back();
    forEachIndex(tags.size(), 1, [&](std::size_t t) { tags[t].marks.assign(pointCount, 0); });
    forEachIndex(offsets.size() - 1, 1, [&](std::size_t i) {
        convertCurveTags(handles, options, offsets, pointParams, i, tags);
    });
    forEachIndex(tags.size(), 1,
                 [&](std::size_t t) { *tags[t].points = markedPoints(tags[t].marks); });
}

void addTagProperties(TagMap& tagMap, std::uint64_t pointCount, Zelvane::Object& strands) {
    using namespace Zelvane::Geometry;
    for (auto& [name, points] : tagMap) {
        Orsel::MutablePtr<Zelvane::Object> tag = Zelvane::createObject();
        populateTag(sPointComp, std::move(points), pointCount, *tag);
        const Orsel::String property =
            getUniqueGeoPropName(createTagName(sPointComp, name), strands);
        if (!property.empty()) {
            strands.set(property, std::move(tag));
        }
    }
}

} // namespace ZelvanePlugin::CurvesInput
