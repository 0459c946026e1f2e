#include "detail/ParallelLoops.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <kova/detail/MeshData.h>
#include <string>
#include <tbb/parallel_for.h>
#include <tbb/task_arena.h>
#include <utility>
#include <vector>

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
    {
        const std::lock_guard lock(normalsMutex_);
        if (!normalsDue_.load(std::memory_order_relaxed)) {
            copy->setNormals(normals_, normalIds_);
        }
    }
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
    {
        const std::lock_guard lock(normalsMutex_);
        normals_ = {};
        normalIds_ = {};
        normalsDue_.store(true, std::memory_order_release);
    }
    uvSets.assign(1, UVSet{"map1", {}, {}, {}, {}});
    currentUVSet = "map1";
    colorSets.clear();
    currentColorSet.clear();
    componentTags.clear();
}

int MeshData::numNormals() const {
    return normalsDue_.load(std::memory_order_acquire) ? numVertices()
                                                       : static_cast<int>(normals_.size() / 3);
}

const BulkVector<float>& MeshData::normals() const {
    settleNormals();
    return normals_;
}

const BulkVector<int>& MeshData::normalIds() const {
    settleNormals();
    return normalIds_;
}

void MeshData::setNormals(BulkVector<float> values, BulkVector<int> ids) {
    const std::lock_guard lock(normalsMutex_);
    normals_ = std::move(values);
    normalIds_ = std::move(ids);
    normalsDue_.store(false, std::memory_order_release);
}

std::pair<BulkVector<float>, BulkVector<int>> MeshData::takeNormals() {
    settleNormals();
    const std::lock_guard lock(normalsMutex_);
    return {std::move(normals_), std::move(normalIds_)};
}

void MeshData::settleNormals() const {
    if (!normalsDue_.load(std::memory_order_acquire)) {
        return;
    }
    const std::lock_guard lock(normalsMutex_);
    if (normalsDue_.load(std::memory_order_relaxed)) {
        // Isolated: while it waits for its loops, this thread must not pick up other work that
        // could come back here for the lock it holds.
        tbb::this_task_arena::isolate([this] { computeVertexNormals(); });
        normalsDue_.store(false, std::memory_order_release);
    }
}

void MeshData::computeVertexNormals() const {
    BulkVector<int>& normalIds = normalIds_;
    BulkVector<float>& normals = normals_;
    resizeForOverwrite(normalIds, connects.size());
    copyValues(connects.data(), connects.size(), normalIds.data());
    resizeForOverwrite(normals, points.size());
    // The Newell normal of every face, once, in parallel, by chunks of faces; each chunk also
    // notes the range of vertices its faces use.
    constexpr std::size_t kChunkFaces = 4096;
    const std::size_t faceCount = counts.size();
    const std::size_t chunkCount = (faceCount + kChunkFaces - 1) / kChunkFaces;
    const BulkVector<int> offsets = faceOffsets();
    BulkVector<float> faceNormals;
    resizeForOverwrite(faceNormals, 3 * faceCount);
    std::vector<std::pair<int, int>> chunkVertices(chunkCount);
    tbb::parallel_for(std::size_t{0}, chunkCount, [&](std::size_t chunk) {
        const std::size_t end = std::min(faceCount, (chunk + 1) * kChunkFaces);
        const int* first = connects.data() + offsets[chunk * kChunkFaces];
        const int* last = connects.data() + offsets[end];
        const auto [low, high] = std::minmax_element(first, last);
        chunkVertices[chunk] = {*low, *high};
        for (std::size_t f = chunk * kChunkFaces; f < end; ++f) {
            const std::array<float, 3> n =
                newellNormal(points, connects.data() + offsets[f], counts[f]);
            std::copy(n.begin(), n.end(), faceNormals.begin() + 3 * f);
        }
    });
    // Every part sums the face normals of one range of vertices, going over the faces in
    // order: each vertex gets the sum a face-by-face pass gives, however many parts there are,
    // and no two parts write the same vertex. A part passes over the chunks that use none of
    // its vertices, so on the usual, locally ordered meshes each face is visited about once.
    const std::size_t vertexCount = points.size() / 3;
    const std::size_t parts =
        vertexCount <= kSerialLimit
            ? 1
            : static_cast<std::size_t>(tbb::this_task_arena::max_concurrency());
    tbb::parallel_for(std::size_t{0}, parts, [&](std::size_t part) {
        const std::size_t first = vertexCount * part / parts;
        const std::size_t size = vertexCount * (part + 1) / parts - first;
        float* sums = normals.data();
        std::fill(sums + 3 * first, sums + 3 * (first + size), 0.0f);
        for (std::size_t chunk = 0; chunk < chunkCount; ++chunk) {
            const auto [low, high] = chunkVertices[chunk];
            if (static_cast<std::size_t>(high) < first ||
                static_cast<std::size_t>(low) >= first + size) {
                continue;
            }
            const std::size_t end = std::min(faceCount, (chunk + 1) * kChunkFaces);
            const int* vertex = connects.data() + offsets[chunk * kChunkFaces];
            for (std::size_t f = chunk * kChunkFaces; f < end; ++f) {
                const float* faceNormal = faceNormals.data() + 3 * f;
                for (const int* stop = vertex + counts[f]; vertex != stop; ++vertex) {
                    if (static_cast<std::size_t>(*vertex) - first < size) {
                        float* sum = sums + 3 * static_cast<std::size_t>(*vertex);
                        sum[0] += faceNormal[0];
                        sum[1] += faceNormal[1];
                        sum[2] += faceNormal[2];
                    }
                }
            }
        }
        for (std::size_t i = 3 * first; i < 3 * (first + size); i += 3) {
            const float length = std::sqrt(sums[i] * sums[i] + sums[i + 1] * sums[i + 1] +
                                           sums[i + 2] * sums[i + 2]);
            if (length > 0.0f) {
                for (std::size_t c = 0; c < 3; ++c) {
                    sums[i + c] /= length;
                }
            }
        }
    });
}

void MeshData::compactNormals() {
    auto [normals, ids] = takeNormals();
    BulkVector<int> remap;
    resizeForOverwrite(remap, normals.size() / 3);
    fillValues(remap, -1);
    BulkVector<float> kept;
    resizeForOverwrite(kept, normals.size());
    std::size_t keptCount = 0;
    for (int& id : ids) {
        int& target = remap[static_cast<std::size_t>(id)];
        if (target < 0) {
            target = static_cast<int>(keptCount);
            std::copy_n(normals.begin() + 3 * id, 3, kept.begin() + 3 * keptCount);
            ++keptCount;
        }
        id = target;
    }
    kept.resize(3 * keptCount);
    setNormals(std::move(kept), std::move(ids));
}

MeshData::UVSet* MeshData::findUVSet(const std::string& name) {
    return findByName(uvSets, name);
}

MeshData::ColorSet* MeshData::findColorSet(const std::string& name) {
    return findByName(colorSets, name);
}

} // namespace kova::detail
