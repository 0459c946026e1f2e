#pragma once

#include <cstdint>
#include <orsel/MetadataItem.h>
#include <orsel/String.h>
#include <zelvane/inputbypath/Export.h>
#include <zelvane/inputbypath/Options.h>

namespace ZelvaneBoardInputByPath {

/// How curves are sampled into strand points.
enum class CurveSampling : std::int32_t {
    CVs = 0,             ///< one point per control vertex
    ByCVCount = 1,       ///< a multiple (`sampleRate`) of the CV count
    BySegmentLength = 2, ///< by a target segment length (`segmentLength`)
};

/// How component tags on CVs reach sampled points.
enum class TagTransfer : std::int32_t {
    NearestCV = 0,      ///< a point takes the tag of its nearest CV
    BothNeighbours = 1, ///< a point is tagged when the CVs on both sides are
};

/// Options of a port fed by curves. Keys, besides those of `Options`:
///
/// | Key               | Member            | Default | Format                                     |
/// |-------------------|-------------------|---------|--------------------------------------------|
/// | "componentTags"   | `componentTags`   | "*"     | channel expression                         |
/// | "computeTangents" | `computeTangents` | false   | bool                                       |
/// | "addLengths"      | `addLengths`      | false   | bool                                       |
/// | "sampling"        | `sampling`        | "cvs"   | "cvs", "byCVCount", "bySegmentLength" or 0-2
/// | | "sampleRate"      | `sampleRate`      | 1       | finite float | | "uniformByLength" |
/// `uniformByLength` | false   | bool                                       | | "segmentLength"   |
/// `segmentLength`   | 1       | finite float                               | | "evenSegments"    |
/// `evenSegments`    | false   | bool                                       | | "tagTransfer"     |
/// `tagTransfer`     | "nearestCV" | "nearestCV", "bothNeighbours" or 0-1   |
///
/// Enumeration names are matched ignoring letter case. `componentTags` defaults to "*" (all
/// tags), like the mesh options' `componentTagFilter`. Values that are well-formed but
/// unusable (a `segmentLength` of 0) are kept: the curve converter reports them.
class ZELVANE_INPUTBYPATH_API CurveOptions : public Options {
public:
    CurveOptions();
    CurveOptions(const CurveOptions& other);
    CurveOptions& operator=(const CurveOptions& other);
    ~CurveOptions() override;

    bool parseAttributes(const Orsel::MetadataItem& options) override;
    void storeAttributes(Orsel::MetadataItem& options) const override;

    Orsel::String componentTags = Orsel::String::literal("*");
    bool computeTangents = false;
    bool addLengths = false;
    CurveSampling sampling = CurveSampling::CVs;
    float sampleRate = 1.0f;
    bool uniformByLength = false;
    float segmentLength = 1.0f;
    bool evenSegments = false;
    TagTransfer tagTransfer = TagTransfer::NearestCV;
};

} // namespace ZelvaneBoardInputByPath
