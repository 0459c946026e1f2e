#include "detail/ParallelLoops.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <kova/detail/MeshData.h>
#include <string>
#include <tbb/parallel_for.h>
#include <tbb/task_arena.h>

namespace kova::detail {

namespace {

template <class Sets>
auto findByName(Sets& sets, const std::string& name) -> decltype(sets.data()) {
    const auto at =
        std::find_if(sets.begin(), sets.end(), [&](const auto& set) { return set.name == name; });
    return at == sets.end() ? nullptr : &*at;
}

// Newell's method: the sum is the face normal scaled by twice the face's area, so larger faces
// weigh more in vertex normals and non-planar n-gons still get a sensible direction.
std::array<float, 3> newellNormal(const BulkVector<float>& points, const int* face, int count) {
    std::array<float, 3> n = {0.0f, 0.0f, 0.0f};
    for (int k = 0; k < count; ++k) {
        const float* a = &points[3 * static_cast<std::size_t>(face[k])];
        const float* b = &points[3 * static_cast<std::size_t>(face[k + 1 == count ? 0 : k + 1])];
        n[0] += (a[1] - b[1]) * (a[2] + b[2]);
        n[1] += (a[2] - b[2]) * (a[0] + b[0]);
        n[2] += (a[0] - b[0]) * (a[1] + b[1]);
    }
    return n;
}

} // namespace

MeshData::MeshData() : GeometryData(KFn::kMeshData, KFnData::kMesh) {
    reset({}, {}, {});
}

std::shared_ptr<DataObject> MeshData::clone() const {
    auto copy = std::make_shared<MeshData>();
    copy->points = points;
    copy->counts = counts;
    copy->connects = connects;
    copy->normals = normals;
    copy->normalIds = normalIds;
    copy->uvSets = uvSets;
    copy->currentUVSet = currentUVSet;
    copy->colorSets = colorSets;
    copy->currentColorSet = currentColorSet;
    copy->componentTags = componentTags.deepCopy();
    return copy;
}

KString MeshData::toText() const {
    return KString("mesh " + std::to_string(numVertices()) + " vertices " +
                   std::to_string(numPolygons()) + " faces");
}

int MeshData::elementCount(KFn::Type componentType) const {
    switch (componentType) {
    case KFn::kMeshVertComponent:
        return numVertices();
    case KFn::kMeshPolygonComponent:
        return numPolygons();
    case KFn::kMeshVtxFaceComponent:
        return numFaceVertices();
    default:
        return -1;
    }
}

const float* MeshData::rawStart(const BulkVector<float>& values) {
    static const float none = 0.0f;
    return values.empty() ? &none : values.data();
}

BulkVector<int> MeshData::faceOffsets() const {
    BulkVector<int> offsets;
    resizeForOverwrite(offsets, counts.size() + 1);
    int running = 0;
    for (std::size_t f = 0; f < counts.size(); ++f) {
        offsets[f] = running;
        running += counts[f];
    }
    offsets.back() = running;
    return offsets;
}

void MeshData::reset(BulkVector<float> newPoints, BulkVector<int> newCounts,
                     BulkVector<int> newConnects) {
    points = std::move(newPoints);
    counts = std::move(newCounts);
    connects = std::move(newConnects);
    computeVertexNormals();
    uvSets.assign(1, UVSet{"map1", {}, {}, {}, {}});
    resizeForOverwrite(uvSets.front().faceCounts, counts.size());
    fillValues(uvSets.front().faceCounts, 0);
    currentUVSet = "map1";
    colorSets.clear();
    currentColorSet.clear();
    componentTags.clear();
}

void MeshData::computeVertexNormals() {
    resizeForOverwrite(normalIds, connects.size());
    copyValues(connects.data(), connects.size(), normalIds.data());
    resizeForOverwrite(normals, points.size());
    // Every part sums the normals of one range of vertices, going over the faces in order: each
    // vertex gets the sum a face-by-face pass gives, however many parts there are, and no two
    // parts write the same vertex. A part skips the faces that have no vertex in its range.
    const std::size_t vertexCount = points.size() / 3;
    const std::size_t parts =
        vertexCount <= kSerialLimit
            ? 1
            : static_cast<std::size_t>(tbb::this_task_arena::max_concurrency());
    tbb::parallel_for(std::size_t{0}, parts, [&](std::size_t part) {
        const std::size_t first = vertexCount * part / parts;
        const std::size_t last = vertexCount * (part + 1) / parts;
        const auto inPart = [&](int vertex) {
            return static_cast<std::size_t>(vertex) >= first &&
                   static_cast<std::size_t>(vertex) < last;
        };
        std::fill(normals.begin() + static_cast<std::ptrdiff_t>(3 * first),
                  normals.begin() + static_cast<std::ptrdiff_t>(3 * last), 0.0f);
        const int* face = connects.data();
        for (const int count : counts) {
            if (std::any_of(face, face + count, inPart)) {
                const std::array<float, 3> n = newellNormal(points, face, count);
                for (int k = 0; k < count; ++k) {
                    if (inPart(face[k])) {
                        for (std::size_t c = 0; c < 3; ++c) {
                            normals[3 * static_cast<std::size_t>(face[k]) + c] += n[c];
                        }
                    }
                }
            }
            face += count;
        }
        for (std::size_t i = 3 * first; i < 3 * last; i += 3) {
            const float length =
                std::sqrt(normals[i] * normals[i] + normals[i + 1] * normals[i + 1] +
                          normals[i + 2] * normals[i + 2]);
            if (length > 0.0f) {
                for (std::size_t c = 0; c < 3; ++c) {
                    normals[i + c] /= length;
                }
            }
        }
    });
}

void MeshData::compactNormals() {
    std::vector<int> remap(normals.size() / 3, -1);
    BulkVector<float> kept;
    kept.reserve(normals.size());
    for (int& id : normalIds) {
        int& target = remap[static_cast<std::size_t>(id)];
        if (target < 0) {
            target = static_cast<int>(kept.size() / 3);
            kept.insert(kept.end(), normals.begin() + 3 * id, normals.begin() + 3 * id + 3);
        }
        id = target;
    }
    normals = std::move(kept);
}

MeshData::UVSet* MeshData::findUVSet(const std::string& name) {
    return findByName(uvSets, name);
}

MeshData::ColorSet* MeshData::findColorSet(const std::string& name) {
    return findByName(colorSets, name);
}

} // namespace kova::detail
