#include "detail/ParallelLoops.h"
#include "detail/Report.h"
#include "mesh/CheckedCopy.h"
#include "mesh/MeshAccess.h"
#include "mesh/NamedSets.h"

#include <algorithm>
#include <kova/KFnMesh.h>
#include <kova/detail/MeshData.h>
#include <string>

using kova::detail::BulkVector;
using kova::detail::copyValues;
using kova::detail::firstIndexWhere;
using kova::detail::forEachRange;
using kova::detail::invalid;
using kova::detail::MeshData;
using kova::detail::report;
using kova::detail::resizeForOverwrite;
using kova::mesh::CheckedCopy;
using kova::mesh::checkValues;
using kova::mesh::copyChecked;

namespace {

// The named UV set (null name: the current one), or null with a failed status.
MeshData::UVSet* uvSetOf(MeshData& mesh, const KString* name, KStatus& status) {
    return kova::mesh::namedSet(mesh.uvSets, name, mesh.currentUVSet, "UV", status);
}

} // namespace

int KFnMesh::numUVs(const KString* uvSet, KStatus* status) const {
    KStatus result;
    MeshData* m = mesh("KFnMesh::numUVs", result);
    const MeshData::UVSet* set = m ? uvSetOf(*m, uvSet, result) : nullptr;
    report(status, result);
    return set ? static_cast<int>(set->u.size()) : 0;
}

KStatus KFnMesh::getUVSetNames(KStringArray& names) const {
    KStatus status;
    const MeshData* m = mesh("KFnMesh::getUVSetNames", status);
    return m ? kova::mesh::copySetNames(m->uvSets, names) : status;
}

KString KFnMesh::getCurrentUVSetName(KStatus* status) const {
    KStatus result;
    const MeshData* m = mesh("KFnMesh::getCurrentUVSetName", result);
    report(status, result);
    return m ? KString(m->currentUVSet) : KString();
}

KStatus KFnMesh::setCurrentUVSetName(const KString& name) {
    KStatus status;
    MeshData* m = mesh("KFnMesh::setCurrentUVSetName", status);
    if (m != nullptr && uvSetOf(*m, &name, status) != nullptr) {
        m->currentUVSet = std::string(name.view());
    }
    return status;
}

KStatus KFnMesh::createUVSetDataMesh(const KString& name) {
    KStatus status;
    MeshData* m = mesh("KFnMesh::createUVSetDataMesh", status);
    if (m == nullptr) {
        return status;
    }
    const std::string text(name.view());
    if (text.empty() || m->findUVSet(text) != nullptr) {
        return invalid("UV set name '" + text + "' is empty or taken");
    }
    m->uvSets.push_back(MeshData::UVSet{text, {}, {}, {}, {}});
    return KStatus();
}

KString KFnMesh::createUVSet(const KString& name, KStatus* status) {
    KStatus result;
    MeshData* m = mesh("KFnMesh::createUVSet", result);
    if (m == nullptr || name.view().empty()) {
        report(status, m ? invalid("empty UV set name") : result);
        return KString();
    }
    // A taken name gets the first free number appended.
    std::string unique(name.view());
    for (int n = 1; m->findUVSet(unique) != nullptr; ++n) {
        unique = std::string(name.view()) + std::to_string(n);
    }
    result = createUVSetDataMesh(KString(unique));
    report(status, result);
    return result ? KString(unique) : KString();
}

KStatus KFnMesh::deleteUVSet(const KString& name) {
    KStatus status;
    MeshData* m = mesh("KFnMesh::deleteUVSet", status);
    if (m == nullptr || uvSetOf(*m, &name, status) == nullptr) {
        return status;
    }
    if (m->uvSets.size() == 1) {
        return invalid("the last UV set cannot be deleted");
    }
    std::erase_if(m->uvSets, [&](const MeshData::UVSet& set) { return set.name == name.view(); });
    if (m->currentUVSet == name.view()) {
        m->currentUVSet = m->uvSets.front().name;
    }
    return KStatus();
}

KStatus KFnMesh::getUVs(KFloatArray& uArray, KFloatArray& vArray, const KString* uvSet) const {
    KStatus status;
    MeshData* m = mesh("KFnMesh::getUVs", status);
    const MeshData::UVSet* set = m ? uvSetOf(*m, uvSet, status) : nullptr;
    if (set != nullptr) {
        const auto count = static_cast<unsigned int>(set->u.size());
        status = kova::mesh::copyOut(set->u.data(), count, uArray);
        if (status) {
            status = kova::mesh::copyOut(set->v.data(), count, vArray);
        }
    }
    return status;
}

KStatus KFnMesh::setUVs(const KFloatArray& uArray, const KFloatArray& vArray,
                        const KString* uvSet) {
    KStatus status;
    MeshData* m = mesh("KFnMesh::setUVs", status);
    MeshData::UVSet* set = m ? uvSetOf(*m, uvSet, status) : nullptr;
    if (set == nullptr) {
        return status;
    }
    if (uArray.length() != vArray.length()) {
        return invalid("the u and v arrays differ in length");
    }
    resizeForOverwrite(set->u, uArray.length());
    copyValues(uArray.data(), uArray.length(), set->u.data());
    resizeForOverwrite(set->v, vArray.length());
    copyValues(vArray.data(), vArray.length(), set->v.data());
    const int count = static_cast<int>(uArray.length());
    if (firstIndexWhere(set->ids.size(), [&](std::size_t k) { return set->ids[k] >= count; }) <
        set->ids.size()) {
        set->ids.clear();
        set->faceCounts.clear();
    }
    return KStatus();
}

KStatus KFnMesh::getAssignedUVs(KIntArray& uvCounts, KIntArray& uvIds, const KString* uvSet) const {
    KStatus status;
    MeshData* m = mesh("KFnMesh::getAssignedUVs", status);
    const MeshData::UVSet* set = m ? uvSetOf(*m, uvSet, status) : nullptr;
    if (set != nullptr) {
        if (!set->faceCounts.empty()) { // some faces mapped
            status = kova::mesh::copyOut(set->faceCounts.data(), set->faceCounts.size(), uvCounts);
        } else if (!set->ids.empty()) { // every face mapped
            status = kova::mesh::copyOut(m->counts.data(), m->counts.size(), uvCounts);
        } else { // no face mapped
            status = uvCounts.setLength(static_cast<unsigned int>(m->numPolygons()));
            int* counts = uvCounts.data();
            forEachRange(status ? uvCounts.length() : 0,
                         [counts](std::size_t begin, std::size_t end) {
                             std::fill(counts + begin, counts + end, 0);
                         });
        }
        if (status) {
            status = kova::mesh::copyOut(set->ids.data(), set->ids.size(), uvIds);
        }
    }
    return status;
}

KStatus KFnMesh::assignUVs(const KIntArray& uvCounts, const KIntArray& uvIds,
                           const KString* uvSet) {
    KStatus status;
    MeshData* m = mesh("KFnMesh::assignUVs", status);
    MeshData::UVSet* set = m ? uvSetOf(*m, uvSet, status) : nullptr;
    if (set == nullptr) {
        return status;
    }
    if (uvCounts.length() != static_cast<unsigned int>(m->numPolygons())) {
        return invalid("one UV count per polygon is needed");
    }
    // The new assignment is checked before it replaces the set's, so that a bad one changes
    // nothing. Only a set that maps some faces but not all keeps its counts; for the others
    // they follow from the polygons and the ids.
    const int* faceSizes = m->counts.data();
    const auto fits = [faceSizes](int count, std::size_t f) {
        return (count == 0) | (count == faceSizes[f]);
    };
    const CheckedCopy mapped = checkValues(uvCounts.data(), uvCounts.length(), fits);
    if (mapped.firstInvalid < uvCounts.length()) {
        const std::size_t misfit = mapped.firstInvalid;
        return invalid("polygon " + std::to_string(misfit) + " has " +
                       std::to_string(m->counts[misfit]) + " vertices but " +
                       std::to_string(uvCounts[misfit]) + " UVs");
    }
    if (mapped.sum != uvIds.length()) {
        return invalid("the UV counts add up to " + std::to_string(mapped.sum) + " but " +
                       std::to_string(uvIds.length()) + " UV ids are given");
    }
    BulkVector<int> faceCounts;
    if (mapped.sum != 0 && mapped.sum != m->connects.size()) {
        resizeForOverwrite(faceCounts, uvCounts.length());
        copyValues(uvCounts.data(), uvCounts.length(), faceCounts.data());
    }
    const int numUVs = static_cast<int>(set->u.size());
    BulkVector<int> ids;
    resizeForOverwrite(ids, uvIds.length());
    const std::size_t outside =
        copyChecked(uvIds.data(), uvIds.length(), ids.data(), [numUVs](int id, std::size_t) {
            return static_cast<unsigned int>(id) < static_cast<unsigned int>(numUVs);
        }).firstInvalid;
    if (outside < uvIds.length()) {
        return invalid("UV id " + std::to_string(uvIds[outside]) + " is out of range");
    }
    set->faceCounts = std::move(faceCounts);
    set->ids = std::move(ids);
    return KStatus();
}
