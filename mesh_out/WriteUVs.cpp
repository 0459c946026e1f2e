#include "mesh_out/WriteUVs.h"

#include "common/ParallelFill.h"
#include "common/ProfilerCategories.h"
#include "mesh_out/CheckedIndices.h"
#include "mesh_out/GraphProperties.h"

#include <algorithm>
#include <kova/KProfilingScope.h>
#include <stdexcept>
#include <string>
#include <zelvane/geometry/GeoProperty.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/geometry/PropertyLookup.h>
#include <zelvane/geometry/RangeProperty.h>

namespace ZelvanePlugin {
namespace {

namespace Geo = Zelvane::Geometry;
using Zelvane::Math::float2;
using Zelvane::Math::float3;

constexpr std::string_view kMapPrefix = "map";

// The number of a "map<number>" name, parsed as std::stoi parses it; its two failures carry
// texts of their own.
int mapNumber(const std::string& digits) {
    try {
        return std::stoi(digits);
    } catch (const std::invalid_argument&) {
        throw std::invalid_argument("invalid stoi argument");
    } catch (const std::out_of_range&) {
        throw std::out_of_range("stoi argument out of range");
    }
}

void nameUVSets(std::vector<UVSetRecord>& sets) {
    // Wider than the numbers parsed: the sets numbered on past "map2147483647" count on.
    long long maximum = 0;
    for (const UVSetRecord& set : sets) {
        if (set.name.view().starts_with(kMapPrefix)) {
            maximum =
                std::max<long long>(maximum, mapNumber(set.name.str().substr(kMapPrefix.size())));
        }
    }
    for (UVSetRecord& set : sets) {
        if (set.name.view().starts_with(Geo::sFaceVertexUV.internal_string_view())) {
            set.name = KString(std::string(kMapPrefix) + std::to_string(++maximum));
        }
    }
}

// Copies the set's indices into `ids` (unless null) and checks each against the UV count.
void fillUVIds(const UVSetRecord& set, std::size_t setNumber, std::size_t faceVertexCount,
               std::size_t valueCount, int* ids, MeshObjectValidation& validation) {
    const std::uint32_t* index = set.indices->data();
    // Within uint32: readUVSets keeps sets that fit a host UV set.
    copyCheckedIndices(
        index, faceVertexCount, static_cast<std::uint32_t>(valueCount), ids, [&](std::size_t k) {
            validation.fail({MeshStep::uvs, setNumber, k},
                            "UV index " + std::to_string(index[k]) + " at face-vertex " +
                                std::to_string(k) + " of UV set " + quoted(set.name.view()) +
                                " is out of range (" + std::to_string(valueCount) + " UVs)");
        });
}

template <class Value>
void fillUVSet(const Orsel::Array<Value>& values, std::size_t setNumber,
               const GraphMeshTopology& topology, UVSetRecord& set,
               MeshObjectValidation& validation) {
    const std::size_t valueCount = values.size();
    if (!set.u.setLength(static_cast<unsigned int>(valueCount)) ||
        !set.v.setLength(static_cast<unsigned int>(valueCount)) ||
        (!set.idsAreConnects &&
         !set.ids.setLength(static_cast<unsigned int>(topology.faceVertexCount)))) {
        validation.fail({MeshStep::uvs, setNumber},
                        "no memory for UV set " + quoted(set.name.view()));
        return;
    }
    const Value* value = values.data();
    float* u = set.u.data();
    float* v = set.v.data();
    parallelFill(valueCount, [value, u, v](std::size_t begin, std::size_t end) {
#pragma omp simd
        for (std::size_t i = begin; i < end; ++i) {
            u[i] = value[i].x;
            v[i] = value[i].y;
        }
    });
    if (!set.idsAreConnects) {
        fillUVIds(set, setNumber, topology.faceVertexCount, valueCount, set.ids.data(), validation);
    } else if (valueCount < topology.pointCount) {
        // Valid connects name points, so only a table smaller than the points needs a look.
        fillUVIds(set, setNumber, topology.faceVertexCount, valueCount, nullptr, validation);
    }
}

} // namespace

std::vector<UVSetRecord> readUVSets(const Zelvane::Object& object,
                                    const GraphMeshTopology& topology,
                                    MeshObjectValidation& validation) {
    std::vector<UVSetRecord> sets;
    const Orsel::Array<Orsel::String> candidates =
        Geo::getGeoPropsByName(object, Orsel::String(Geo::sFaceVertexUV.toStdString() + "*"));
    for (const Orsel::String& name : candidates) {
        UVSetRecord set;
        set.uv2 = geoPropertyData<float2>(object, name);
        set.uv3 = set.uv2 ? nullptr : geoPropertyData<float3>(object, name);
        if (!set.uv2 && !set.uv3) {
            continue;
        }
        const std::size_t valueCount = set.uv2 ? set.uv2->size() : set.uv3->size();
        const Orsel::String target = Geo::getGeoPropTargetName(object, name);
        set.indices = Geo::getRangeGeoPropIndices(object, target);
        if (!set.indices) {
            set.indices = Geo::populateTrivialRangeIndices(topology.faceVertexCount);
        }
        if (valueCount > kMaxHostCount) {
            validation.fail({MeshStep::uvs, sets.size()},
                            quoted(name) + " holds " + std::to_string(valueCount) +
                                " UVs, more than a host UV set can hold");
            return sets;
        }
        if (!requireEntries(set.indices, topology.faceVertexCount, target, "uint32",
                            "face-vertices", {MeshStep::uvs, sets.size()}, validation)) {
            return sets;
        }
        set.name = KString(hostSetName(object, name).internal_string_view());
        set.idsAreConnects = set.indices == topology.faceVertices;
        sets.push_back(std::move(set));
    }
    nameUVSets(sets);
    return sets;
}

void fillUVSets(std::vector<UVSetRecord>& sets, const GraphMeshTopology& topology,
                oneapi::tbb::task_group& group, MeshObjectValidation& validation) {
    for (std::size_t number = 0; number < sets.size(); ++number) {
        group.run([&set = sets[number], number, &topology, &validation] {
            if (set.uv2) {
                fillUVSet(*set.uv2, number, topology, set, validation);
            } else {
                fillUVSet(*set.uv3, number, topology, set, validation);
            }
        });
    }
}

void writeUVSets(KFnMesh& mesh, const HostMeshArrays& host, const std::vector<UVSetRecord>& sets) {
    KProfilingScope scope(meshConverterCategory(), kProfilerColor, "write uvs");
    for (const UVSetRecord& set : sets) {
        if (set.name != KString("map1") && !mesh.createUVSetDataMesh(set.name)) {
            return;
        }
        if (!mesh.setUVs(set.u, set.v, &set.name) ||
            !mesh.assignUVs(host.polygonCounts, set.idsAreConnects ? host.polygonConnects : set.ids,
                            &set.name)) {
            return;
        }
    }
}

} // namespace ZelvanePlugin
