#include "detail/ParallelLoops.h"
#include "detail/Report.h"
#include "mesh/NamedSets.h"

#include <algorithm>
#include <kova/KFnMesh.h>
#include <kova/detail/MeshData.h>
#include <string>

using kova::detail::copyValues;
using kova::detail::firstIndexWhere;
using kova::detail::forEachRange;
using kova::detail::invalid;
using kova::detail::MeshData;
using kova::detail::report;
using kova::detail::resizeForOverwrite;

namespace {

// The named colour set (null name: the current one), or null with a failed status.
MeshData::ColorSet* colorSetOf(MeshData& mesh, const KString* name, KStatus& status) {
    return kova::mesh::namedSet(mesh.colorSets, name, mesh.currentColorSet, "colour", status);
}

KColor clamped(const KColor& c) {
    return {std::clamp(c.r, 0.0f, 1.0f), std::clamp(c.g, 0.0f, 1.0f), std::clamp(c.b, 0.0f, 1.0f),
            std::clamp(c.a, 0.0f, 1.0f)};
}

void clampAll(MeshData::ColorSet& set) {
    KColor* colors = set.colors.data();
    forEachRange(set.colors.size(), [&](std::size_t begin, std::size_t end) {
        std::transform(colors + begin, colors + end, colors + begin, clamped);
    });
}

} // namespace

int KFnMesh::numColors(const KString* colorSet, KStatus* status) const {
    KStatus result;
    MeshData* m = mesh("KFnMesh::numColors", result);
    const MeshData::ColorSet* set = m ? colorSetOf(*m, colorSet, result) : nullptr;
    report(status, result);
    return set ? static_cast<int>(set->colors.size()) : 0;
}

KStatus KFnMesh::getColorSetNames(KStringArray& names) const {
    KStatus status;
    const MeshData* m = mesh("KFnMesh::getColorSetNames", status);
    return m ? kova::mesh::copySetNames(m->colorSets, names) : status;
}

KString KFnMesh::getCurrentColorSetName(KStatus* status) const {
    KStatus result;
    const MeshData* m = mesh("KFnMesh::getCurrentColorSetName", result);
    report(status, result);
    return m ? KString(m->currentColorSet) : KString();
}

KStatus KFnMesh::createColorSetDataMesh(const KString& name, bool clamp, int representation) {
    KStatus status;
    MeshData* m = mesh("KFnMesh::createColorSetDataMesh", status);
    if (m == nullptr) {
        return status;
    }
    const std::string text(name.view());
    if (text.empty() || m->findColorSet(text) != nullptr) {
        return invalid("colour set name '" + text + "' is empty or taken");
    }
    if (representation != 1 && representation != 3 && representation != 4) {
        return invalid("colour representation " + std::to_string(representation) +
                       " is not 1, 3 or 4");
    }
    m->colorSets.push_back({text, representation, clamp, {}, {}});
    if (m->currentColorSet.empty()) {
        m->currentColorSet = text;
    }
    return KStatus();
}

KStatus KFnMesh::deleteColorSet(const KString& name) {
    KStatus status;
    MeshData* m = mesh("KFnMesh::deleteColorSet", status);
    if (m == nullptr || colorSetOf(*m, &name, status) == nullptr) {
        return status;
    }
    std::erase_if(m->colorSets,
                  [&](const MeshData::ColorSet& set) { return set.name == name.view(); });
    if (m->currentColorSet == name.view()) {
        m->currentColorSet = m->colorSets.empty() ? std::string() : m->colorSets.front().name;
    }
    return KStatus();
}

int KFnMesh::getColorRepresentation(const KString& colorSet, KStatus* status) const {
    KStatus result;
    MeshData* m = mesh("KFnMesh::getColorRepresentation", result);
    const MeshData::ColorSet* set = m ? colorSetOf(*m, &colorSet, result) : nullptr;
    report(status, result);
    return set ? set->representation : 0;
}

bool KFnMesh::isColorClamped(const KString& colorSet, KStatus* status) const {
    KStatus result;
    MeshData* m = mesh("KFnMesh::isColorClamped", result);
    const MeshData::ColorSet* set = m ? colorSetOf(*m, &colorSet, result) : nullptr;
    report(status, result);
    return set != nullptr && set->clamped;
}

KStatus KFnMesh::setIsColorClamped(const KString& colorSet, bool clamp) {
    KStatus status;
    MeshData* m = mesh("KFnMesh::setIsColorClamped", status);
    MeshData::ColorSet* set = m ? colorSetOf(*m, &colorSet, status) : nullptr;
    if (set != nullptr) {
        set->clamped = clamp;
        if (clamp) {
            clampAll(*set);
        }
    }
    return status;
}

KStatus KFnMesh::getColors(KColorArray& colors, const KString* colorSet) const {
    KStatus status;
    MeshData* m = mesh("KFnMesh::getColors", status);
    const MeshData::ColorSet* set = m ? colorSetOf(*m, colorSet, status) : nullptr;
    return set ? colors.copy(
                     KColorArray(set->colors.data(), static_cast<unsigned int>(set->colors.size())))
               : status;
}

KStatus KFnMesh::setColors(const KColorArray& colors, const KString* colorSet) {
    KStatus status;
    MeshData* m = mesh("KFnMesh::setColors", status);
    MeshData::ColorSet* set = m ? colorSetOf(*m, colorSet, status) : nullptr;
    if (set == nullptr) {
        return status;
    }
    resizeForOverwrite(set->colors, colors.length());
    copyValues(colors.data(), colors.length(), set->colors.data());
    if (set->clamped) {
        clampAll(*set);
    }
    // Assignments to colours that no longer exist are dropped.
    const int count = static_cast<int>(set->colors.size());
    int* ids = set->ids.data();
    forEachRange(set->ids.size(), [&](std::size_t begin, std::size_t end) {
        std::replace_if(
            ids + begin, ids + end, [&](int id) { return id >= count; }, -1);
    });
    return KStatus();
}

KStatus KFnMesh::assignColors(const KIntArray& colorIds, const KString* colorSet) {
    KStatus status;
    MeshData* m = mesh("KFnMesh::assignColors", status);
    MeshData::ColorSet* set = m ? colorSetOf(*m, colorSet, status) : nullptr;
    if (set == nullptr) {
        return status;
    }
    if (colorIds.length() != static_cast<unsigned int>(m->numFaceVertices())) {
        return invalid(
            "one colour id per face-vertex is needed: " + std::to_string(m->numFaceVertices()) +
            ", got " + std::to_string(colorIds.length()));
    }
    const int count = static_cast<int>(set->colors.size());
    const std::size_t outside = firstIndexWhere(
        colorIds.length(), [&](std::size_t k) { return colorIds[k] < -1 || colorIds[k] >= count; });
    if (outside < colorIds.length()) {
        return invalid("colour id " + std::to_string(colorIds[outside]) + " is out of range");
    }
    resizeForOverwrite(set->ids, colorIds.length());
    copyValues(colorIds.data(), colorIds.length(), set->ids.data());
    return KStatus();
}

KStatus KFnMesh::getFaceVertexColors(KColorArray& colors, const KString* colorSet) const {
    KStatus status;
    MeshData* m = mesh("KFnMesh::getFaceVertexColors", status);
    const MeshData::ColorSet* set = m ? colorSetOf(*m, colorSet, status) : nullptr;
    if (set == nullptr) {
        return status;
    }
    if (status = colors.setLength(static_cast<unsigned int>(m->numFaceVertices())); !status) {
        return status;
    }
    const KColor none(-1.0f, -1.0f, -1.0f, -1.0f);
    forEachRange(colors.length(), [&](std::size_t begin, std::size_t end) {
        for (std::size_t k = begin; k < end; ++k) {
            const int id = k < set->ids.size() ? set->ids[k] : -1;
            colors[static_cast<unsigned int>(k)] =
                id >= 0 ? set->colors[static_cast<std::size_t>(id)] : none;
        }
    });
    return KStatus();
}
