#include <algorithm>
#include <cmath>
#include <kova/detail/MeshData.h>
#include <string>

namespace kova::detail {

namespace {

template <class Sets>
auto findByName(Sets& sets, const std::string& name) -> decltype(sets.data()) {
    const auto at =
        std::find_if(sets.begin(), sets.end(), [&](const auto& set) { return set.name == name; });
    return at == sets.end() ? nullptr : &*at;
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

const float* MeshData::rawStart(const std::vector<float>& values) {
    static const float none = 0.0f;
    return values.empty() ? &none : values.data();
}

std::vector<int> MeshData::faceOffsets() const {
    std::vector<int> offsets(counts.size() + 1);
    int running = 0;
    for (std::size_t f = 0; f < counts.size(); ++f) {
        offsets[f] = running;
        running += counts[f];
    }
    offsets.back() = running;
    return offsets;
}

void MeshData::reset(std::vector<float> newPoints, std::vector<int> newCounts,
                     std::vector<int> newConnects) {
    points = std::move(newPoints);
    counts = std::move(newCounts);
    connects = std::move(newConnects);
    computeVertexNormals();
    uvSets.assign(1, UVSet{"map1", {}, {}, std::vector<int>(counts.size(), 0), {}});
    currentUVSet = "map1";
    colorSets.clear();
    currentColorSet.clear();
    componentTags.clear();
}

void MeshData::computeVertexNormals() {
    normals.assign(points.size(), 0.0f);
    std::size_t first = 0;
    for (int count : counts) {
        // Newell's method: the sum is the face normal scaled by twice the face's area, so
        // larger faces weigh more and non-planar n-gons still get a sensible direction.
        float n[3] = {0.0f, 0.0f, 0.0f};
        for (int k = 0; k < count; ++k) {
            const float* a = &points[3 * static_cast<std::size_t>(connects[first + k])];
            const float* b =
                &points[3 * static_cast<std::size_t>(connects[first + (k + 1) % count])];
            n[0] += (a[1] - b[1]) * (a[2] + b[2]);
            n[1] += (a[2] - b[2]) * (a[0] + b[0]);
            n[2] += (a[0] - b[0]) * (a[1] + b[1]);
        }
        for (int k = 0; k < count; ++k) {
            float* target = &normals[3 * static_cast<std::size_t>(connects[first + k])];
            for (int c = 0; c < 3; ++c) {
                target[c] += n[c];
            }
        }
        first += static_cast<std::size_t>(count);
    }
    for (std::size_t i = 0; i < normals.size(); i += 3) {
        const float length = std::sqrt(normals[i] * normals[i] + normals[i + 1] * normals[i + 1] +
                                       normals[i + 2] * normals[i + 2]);
        if (length > 0.0f) {
            for (int c = 0; c < 3; ++c) {
                normals[i + c] /= length;
            }
        }
    }
    normalIds = connects;
}

void MeshData::compactNormals() {
    std::vector<int> remap(normals.size() / 3, -1);
    std::vector<float> kept;
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
