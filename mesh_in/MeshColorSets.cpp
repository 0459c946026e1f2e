#include "common/ParallelFill.h"
#include "mesh_in/MeshScope.h"
#include "mesh_in/MeshSteps.h"
#include "mesh_in/RuntimeMessages.h"

#include <array>
#include <kova/KColorArray.h>
#include <tbb/task_group.h>
#include <utility>
#include <zelvane/algorithms/FaceVertexAdjacency.h>
#include <zelvane/geometry/GeoProperty.h>
#include <zelvane/geometry/Names.h>

// Colour sets become one colour per point. The host keeps colours per face-vertex, so each
// point gets the mean of the colours of its face-vertices, channel by channel; face-vertices
// without a colour (the host gives (-1, -1, -1, -1) for them) are left out of the mean. A
// point without any coloured face-vertex gets the representation's default: 1 for alpha,
// (0, 0, 0) for RGB and (0, 0, 0, 1) for RGBA. Means are summed in double precision in
// ascending face-vertex order, so they don't depend on the number of threads.
namespace ZelvanePlugin::MeshInput {
namespace {

using Zelvane::GeometryAlgorithms::FaceVertexAdjacency;
using Zelvane::Math::float3;
using Zelvane::Math::float4;

// Host colour representations.
enum ColorRepresentation { kAlpha = 1, kRGB = 3, kRGBA = 4 };

const KColor kUnassigned(-1.0f, -1.0f, -1.0f, -1.0f);

// How one representation is read from a host colour and stored per point.
template <class Value>
struct ColorLayout;

template <>
struct ColorLayout<float> {
    static constexpr int kChannels = 1;
    static constexpr std::array<double, 4> kDefault{1.0};
    static std::array<double, 4> channels(const KColor& c) { return {c.a}; }
    static float value(const std::array<double, 4>& v) { return float(v[0]); }
};

template <>
struct ColorLayout<float3> {
    static constexpr int kChannels = 3;
    static constexpr std::array<double, 4> kDefault{0.0, 0.0, 0.0};
    static std::array<double, 4> channels(const KColor& c) { return {c.r, c.g, c.b}; }
    static float3 value(const std::array<double, 4>& v) {
        return {float(v[0]), float(v[1]), float(v[2])};
    }
};

template <>
struct ColorLayout<float4> {
    static constexpr int kChannels = 4;
    static constexpr std::array<double, 4> kDefault{0.0, 0.0, 0.0, 1.0};
    static std::array<double, 4> channels(const KColor& c) { return {c.r, c.g, c.b, c.a}; }
    static float4 value(const std::array<double, 4>& v) {
        return {float(v[0]), float(v[1]), float(v[2]), float(v[3])};
    }
};

// One point's colour: the mean of its coloured face-vertices, or the default.
template <class Value>
Value pointColor(const FaceVertexAdjacency& adjacency, const KColor* colors, std::size_t point) {
    using Layout = ColorLayout<Value>;
    std::array<double, 4> sum{};
    int used = 0;
    for (const std::uint32_t corner : adjacency.faceVerticesOf(point)) {
        const KColor& color = colors[corner];
        if (color == kUnassigned) {
            continue;
        }
        const std::array<double, 4> channels = Layout::channels(color);
        for (int c = 0; c < Layout::kChannels; ++c) {
            sum[c] += channels[c];
        }
        ++used;
    }
    if (used == 0) {
        return Layout::value(Layout::kDefault);
    }
    for (int c = 0; c < Layout::kChannels; ++c) {
        sum[c] /= used;
    }
    return Layout::value(sum);
}

// Stores the colour property of `setName` and starts task "copy cpv", which owns the host's
// face-vertex colours.
template <class Value>
void startCopyColors(MeshConversion& conversion, const KString& setName, KColorArray&& colors) {
    using namespace Zelvane::Geometry;
    FillableArray<Value> points = makeFillableArray<Value>();
    Orsel::MutablePtr<Zelvane::Object> property = createGeoProperty(sPointComp, points.shared);
    if constexpr (ColorLayout<Value>::kChannels == 1) {
        property->set(sDefault, 1.0f);
    }
    conversion.object.set(Orsel::String(setName.asUTF8()), std::move(property));

    conversion.groupA.run([points, adjacency = conversion.adjacency, count = conversion.pointCount,
                           faceVertexColors = std::move(colors)] {
        MeshScope scope("copy cpv");
        points.writable->resizeForOverwrite(count);
        Value* out = points.writable->data();
        const KColor* in = faceVertexColors.data();
        // In a group of its own, so that the loop is isolated from the outer groups.
        tbb::task_group own;
        own.run_and_wait([&] {
            parallelFill(count, [&](std::size_t begin, std::size_t end) {
                for (std::size_t p = begin; p < end; ++p) {
                    out[p] = pointColor<Value>(*adjacency, in, p);
                }
            });
        });
    });
}

// Reads the set's face-vertex colours; false when they can't be had for every face-vertex
// of a complete adjacency.
bool readFaceVertexColors(const MeshConversion& conversion, const KString& setName,
                          KColorArray& colors) {
    const FaceVertexAdjacency* adjacency = conversion.adjacency.get();
    return adjacency && adjacency->pointCount() == conversion.pointCount &&
           adjacency->faceVertexCount() == conversion.faceVertexCount &&
           conversion.mesh.getFaceVertexColors(colors, &setName) &&
           colors.length() == conversion.faceVertexCount;
}

} // namespace

void startFaceVertexAdjacency(MeshConversion& conversion, const KStringArray& colorSetNames) {
    for (unsigned int i = 0; i < colorSetNames.length(); ++i) {
        MeshScope scope("get cpv");
        if (!conversion.acceptsChannel(colorSetNames[i])) {
            continue;
        }
        conversion.waitForCoreArrays();
        conversion.adjacency = std::make_shared<FaceVertexAdjacency>();
        conversion.groupA.run(
            [adjacency = conversion.adjacency, mesh = conversion.temporaryMesh()] {
                MeshScope taskScope("compute adjacency");
                if (mesh) {
                    Zelvane::GeometryAlgorithms::buildFaceVertexAdjacency(*mesh, *adjacency);
                }
            });
        return;
    }
}

void addColorSets(MeshConversion& conversion, const KStringArray& colorSetNames) {
    if (conversion.adjacency) {
        conversion.waitForCoreArrays();
    }
    for (unsigned int i = 0; i < colorSetNames.length(); ++i) {
        MeshScope scope("get cpv");
        const KString& setName = colorSetNames[i];
        if (!conversion.acceptsChannel(setName)) {
            continue;
        }
        KStatus status;
        const int representation = conversion.mesh.getColorRepresentation(setName, &status);
        if (status && representation != kAlpha && representation != kRGB &&
            representation != kRGBA) {
            continue; // a representation this converter doesn't know: dropped silently
        }
        KColorArray colors;
        if (!status || !readFaceVertexColors(conversion, setName, colors)) {
            showRuntimeError(KString("Could not convert this color set: ") + setName);
            continue;
        }
        switch (representation) {
        case kAlpha:
            startCopyColors<float>(conversion, setName, std::move(colors));
            break;
        case kRGB:
            startCopyColors<float3>(conversion, setName, std::move(colors));
            break;
        default:
            startCopyColors<float4>(conversion, setName, std::move(colors));
            break;
        }
    }
}

} // namespace ZelvanePlugin::MeshInput
