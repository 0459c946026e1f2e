#pragma once

#include <kova/KExport.h>
#include <kova/KFnGeometryData.h>

// Function set of mesh data: makes new, empty mesh data objects (no points, no polygons,
// one empty UV set "map1"). Fill them with KFnMesh::create and the owner set to the data.
class KOVA_API KFnMeshData : public KFnGeometryData {
public:
    KFnMeshData() = default;
    explicit KFnMeshData(const KObject& data, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kMeshData; }

    KObject create(KStatus* status = nullptr);
};
