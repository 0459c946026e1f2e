#include "mesh_out/WriteColors.h"

#include "common/ParallelFill.h"
#include "common/ProfilerCategories.h"
#include "mesh_out/GraphProperties.h"

#include <kova/KProfilingScope.h>
#include <kova/KString.h>
#include <string>
#include <zelvane/geometry/GeoProperty.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/geometry/PropertyLookup.h>
#include <zelvane/geometry/RangeProperty.h>

namespace ZelvanePlugin {
namespace {

namespace Geo = Zelvane::Geometry;
using Zelvane::Math::float3;
using Zelvane::Math::float4;

KColor toColor(float alpha) {
    return {1.0f, 1.0f, 1.0f, alpha};
}
KColor toColor(const float3& rgb) {
    return {rgb.x, rgb.y, rgb.z, 1.0f};
}
KColor toColor(const float4& rgba) {
    return {rgba.x, rgba.y, rgba.z, rgba.w};
}

// The values of the property as one of the convertible element types, with their
// representation; false when the data is of another type.
bool readValues(const Zelvane::Object& object, const Orsel::String& name, ColorSetRecord& set) {
    if (auto alpha = geoPropertyData<float>(object, name)) {
        set.values = alpha;
        set.representation = 1;
    } else if (auto rgb = geoPropertyData<float3>(object, name)) {
        set.values = rgb;
        set.representation = 3;
    } else if (auto rgba = geoPropertyData<float4>(object, name)) {
        set.values = rgba;
        set.representation = 4;
    } else {
        return false;
    }
    return true;
}

std::size_t valueCount(const ColorSetRecord& set) {
    return std::visit([](const auto& values) { return values->size(); }, set.values);
}

template <class Value>
void fillColorSet(const Orsel::Array<Value>& values, std::size_t setNumber,
                  const GraphMeshTopology& topology, ColorSetRecord& set,
                  MeshObjectValidation& validation) {
    // Point colours: one per point (the values may run longer); face-vertex colours: the
    // whole table.
    const std::size_t colorCount = set.indices ? values.size() : topology.pointCount;
    const std::size_t idCount = set.indices ? topology.faceVertexCount : 0;
    if (!set.colors.setLength(static_cast<unsigned int>(colorCount)) ||
        !set.ids.setLength(static_cast<unsigned int>(idCount))) {
        validation.fail({MeshStep::colors, setNumber},
                        "no memory for colour set " + quoted(set.name));
        return;
    }
    const Value* value = values.data();
    KColor* colors = set.colors.data();
    parallelFill(colorCount, [value, colors](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            colors[i] = toColor(value[i]);
        }
    });
    if (idCount == 0) {
        return;
    }
    const std::uint32_t* index = set.indices->data();
    int* ids = set.ids.data();
    parallelFill(idCount, [&, index, ids](std::size_t begin, std::size_t end) {
        for (std::size_t k = begin; k < end; ++k) {
            if (index[k] >= colorCount) {
                validation.fail({MeshStep::colors, setNumber, k},
                                "colour index " + std::to_string(index[k]) + " at face-vertex " +
                                    std::to_string(k) + " of colour set " + quoted(set.name) +
                                    " is out of range (" + std::to_string(colorCount) +
                                    " colours)");
                return;
            }
            ids[k] = static_cast<int>(index[k]);
        }
    });
}

} // namespace

std::vector<ColorSetRecord> readColorSets(const Zelvane::Object& object,
                                          const Orsel::String& properties,
                                          const GraphMeshTopology& topology,
                                          MeshObjectValidation& validation) {
    std::vector<ColorSetRecord> sets;
    for (const Orsel::String& name : Geo::getGeoPropsByName(object, properties)) {
        const Orsel::String component = Geo::getTargetComponent(object, name);
        const bool onPoints = component == Geo::sPointComp;
        if (!onPoints && component != Geo::sFaceVertexComp) {
            continue;
        }
        ColorSetRecord set;
        if (!readValues(object, name, set)) {
            continue;
        }
        const MeshFaultPlace place{MeshStep::colors, sets.size()};
        if (valueCount(set) > kMaxHostCount) {
            validation.fail(place, quoted(name) + " holds " + std::to_string(valueCount(set)) +
                                       " colours, more than a host colour set can hold");
            return sets;
        }
        if (onPoints) {
            if (valueCount(set) < topology.pointCount) {
                const std::size_t size = valueCount(set);
                validation.fail(place, describeShortArray(name, "colour", &size,
                                                          topology.pointCount, "points"));
                return sets;
            }
        } else {
            const Orsel::String rangeName = Geo::getGeoPropRangeName(name);
            set.indices = Geo::getRangeGeoPropIndices(object, rangeName);
            if (!set.indices) {
                set.indices = Geo::populateTrivialRangeIndices(topology.faceVertexCount);
            }
            if (!requireEntries(set.indices, topology.faceVertexCount, rangeName, "uint32",
                                "face-vertices", place, validation)) {
                return sets;
            }
        }
        set.name = hostSetName(object, name);
        sets.push_back(std::move(set));
    }
    return sets;
}

void fillColorSets(std::vector<ColorSetRecord>& sets, const GraphMeshTopology& topology,
                   oneapi::tbb::task_group& group, MeshObjectValidation& validation) {
    for (std::size_t number = 0; number < sets.size(); ++number) {
        group.run([&set = sets[number], number, topology, &validation] {
            std::visit(
                [&](const auto& values) {
                    fillColorSet(*values, number, topology, set, validation);
                },
                set.values);
        });
    }
}

void writeColorSets(KFnMesh& mesh, const KIntArray& polygonConnects,
                    const std::vector<ColorSetRecord>& sets) {
    KProfilingScope scope(meshConverterCategory(), kProfilerColor, "write cpvs");
    for (const ColorSetRecord& set : sets) {
        if (set.colors.length() == 0) {
            continue;
        }
        const KString name(set.name.internal_string_view());
        if (!mesh.createColorSetDataMesh(name, false, set.representation)) {
            continue;
        }
        mesh.setIsColorClamped(name, false);
        mesh.setColors(set.colors, &name);
        mesh.assignColors(set.indices ? set.ids : polygonConnects, &name);
    }
}

} // namespace ZelvanePlugin
