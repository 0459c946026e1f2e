#include "HostMeshValues.h"

#include <kova/KColorArray.h>
#include <kova/KFloatArray.h>
#include <kova/KFnGeometryData.h>
#include <kova/KFnMesh.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/KIntArray.h>
#include <kova/KStringArray.h>

namespace {

template <class Array>
std::vector<double> numbers(const Array& array) {
    return std::vector<double>(array.begin(), array.end());
}

std::vector<double> numbers(const float* raw, int count) {
    return raw ? std::vector<double>(raw, raw + count) : std::vector<double>();
}

} // namespace

HostMeshValues hostMeshValues(const KObject& mesh) {
    KFnMesh fn(mesh);
    HostMeshValues channels;
    channels.emplace_back("points", numbers(fn.getRawPoints(), 3 * fn.numVertices()));
    KIntArray counts, connects;
    fn.getVertices(counts, connects);
    channels.emplace_back("counts", numbers(counts));
    channels.emplace_back("connects", numbers(connects));

    KStringArray uvSets;
    fn.getUVSetNames(uvSets);
    for (const KString& set : uvSets) {
        KFloatArray u, v;
        KIntArray uvCounts, uvIds;
        fn.getUVs(u, v, &set);
        fn.getAssignedUVs(uvCounts, uvIds, &set);
        channels.emplace_back("uv " + set.str() + " u", numbers(u));
        channels.emplace_back("uv " + set.str() + " v", numbers(v));
        channels.emplace_back("uv " + set.str() + " ids", numbers(uvIds));
    }

    KIntArray normalCounts, normalIds;
    fn.getNormalIds(normalCounts, normalIds);
    channels.emplace_back("normals", numbers(fn.getRawNormals(), 3 * fn.numNormals()));
    channels.emplace_back("normal ids", numbers(normalIds));

    KStringArray colorSets;
    fn.getColorSetNames(colorSets);
    for (const KString& set : colorSets) {
        KColorArray colors;
        fn.getFaceVertexColors(colors, &set);
        std::vector<double> rgba;
        for (const KColor& color : colors) {
            rgba.insert(rgba.end(), {color.r, color.g, color.b, color.a});
        }
        channels.emplace_back("colours " + set.str(), std::move(rgba));
    }

    KFnGeometryData geometry(mesh);
    KStringArray tags;
    geometry.componentTags(tags);
    for (const KString& tag : tags) {
        KIntArray elements;
        KFnSingleIndexedComponent(geometry.componentTagContents(tag)).getElements(elements);
        std::vector<double> values = numbers(elements);
        values.insert(values.begin(), geometry.componentTagCategory(tag));
        channels.emplace_back("tag " + tag.str(), std::move(values));
    }
    return channels;
}

std::string hostMeshDifference(const HostMeshValues& expected, const HostMeshValues& actual) {
    if (expected.size() != actual.size()) {
        return std::to_string(actual.size()) + " channels instead of " +
               std::to_string(expected.size());
    }
    for (std::size_t c = 0; c < expected.size(); ++c) {
        const auto& [name, values] = expected[c];
        if (actual[c].first != name) {
            return "channel " + std::to_string(c) + " is \"" + actual[c].first + "\", not \"" +
                   name + "\"";
        }
        const std::vector<double>& got = actual[c].second;
        if (got.size() != values.size()) {
            return name + ": " + std::to_string(got.size()) + " values instead of " +
                   std::to_string(values.size());
        }
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (got[i] != values[i]) {
                return name + "[" + std::to_string(i) + "]: " + std::to_string(got[i]) +
                       " instead of " + std::to_string(values[i]);
            }
        }
    }
    return {};
}
