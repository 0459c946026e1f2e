#pragma once

#include "../plugin/BoardScene.h"
#include "../plugin/GraphObjectValues.h"
#include "../plugin/NGonMesh.h"

#include <cstdint>
#include <iterator>
#include <kova/KColorArray.h>
#include <kova/KFloatArray.h>
#include <kova/KFnGeometryData.h>
#include <kova/KFnMesh.h>
#include <kova/KFnPluginData.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/KIntArray.h>
#include <kova/KMessageCapture.h>
#include <kova/KStringArray.h>
#include <mesh_out/ZelvaneMeshToKova.h>
#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <string>
#include <vector>
#include <zelvane/Geometry.h>
#include <zelvane/Object.h>
#include <zelvane/math/Vector.h>

// Graph mesh objects built property by property (so that tests can also build inconsistent
// ones), and readers of the host mesh data that comes back.
namespace MeshOutputTest {

using Zelvane::Math::float2;
using Zelvane::Math::float3;
using Zelvane::Math::float4;
namespace Geo = Zelvane::Geometry;
using ObjectPtr = Orsel::MutablePtr<Zelvane::Object>;

template <class T>
Orsel::Ptr<Orsel::Array<T>> graphArray(const std::vector<T>& values) {
    auto array = Orsel::make<Orsel::Array<T>>();
    for (const T& value : values) {
        array->push_back(value);
    }
    return Orsel::Ptr<Orsel::Array<T>>(std::move(array));
}

// A mesh object holding exactly the given arrays and counts (counts from the arrays: points,
// offsets - 1, face-vertices), without any check.
inline ObjectPtr meshObject(const std::vector<float3>& points,
                            const std::vector<std::uint32_t>& offsets,
                            const std::vector<std::uint32_t>& faceVertices) {
    ObjectPtr mesh = Zelvane::createObject();
    Geo::populateMesh(*mesh);
    Geo::setElementCount(Geo::sPointComp, points.size(), *mesh);
    Geo::setElementCount(Geo::sFaceComp, offsets.empty() ? 0 : offsets.size() - 1, *mesh);
    Geo::setElementCount(Geo::sFaceVertexComp, faceVertices.size(), *mesh);
    mesh->set(Geo::sPointPosition, graphArray(points));
    mesh->set(Geo::sFaceOffset, graphArray(offsets));
    mesh->set(Geo::sFaceVertex, graphArray(faceVertices));
    return mesh;
}

// The n-gon mesh (see NGonMesh.h).
inline ObjectPtr ngonObject() {
    std::vector<float3> points;
    for (const auto& [x, y, z] : NGonMesh::kPoints) {
        points.push_back({x, y, z});
    }
    return meshObject(points, {std::begin(NGonMesh::kOffsets), std::end(NGonMesh::kOffsets)},
                      {std::begin(NGonMesh::kFaceVertices), std::end(NGonMesh::kFaceVertices)});
}

// A geometry property `name` over `target` holding `values`.
template <class T>
void addProperty(Zelvane::Object& mesh, const Orsel::String& name, const Orsel::String& target,
                 const std::vector<T>& values, const char* dccName = nullptr) {
    ObjectPtr property = Geo::createGeoProperty(target, graphArray(values));
    if (dccName) {
        property->set(Geo::sDccName, dccName);
    }
    mesh.set(name, std::move(property));
}

// Face-vertex data `name` indexed by its index property `name` + the index suffix, holding
// `indices` (by default the mesh's own face-vertex array, which then shares it: point data).
template <class T>
void addIndexedProperty(Zelvane::Object& mesh, const Orsel::String& name,
                        const std::vector<T>& values,
                        Orsel::Ptr<Orsel::Array<std::uint32_t>> indices,
                        const char* dccName = nullptr) {
    const Orsel::String rangeName = Geo::getGeoPropRangeName(name);
    ObjectPtr range = Zelvane::createObject();
    Geo::populateRangeGeoProperty(*range, indices ? std::move(indices)
                                                  : mesh.getArray<std::uint32_t>(Geo::sFaceVertex));
    mesh.set(rangeName, std::move(range));
    addProperty(mesh, name, rangeName, values, dccName);
}
template <class T>
void addIndexedProperty(Zelvane::Object& mesh, const Orsel::String& name,
                        const std::vector<T>& values, const std::vector<std::uint32_t>& indices,
                        const char* dccName = nullptr) {
    addIndexedProperty(mesh, name, values, graphArray(indices), dccName);
}

// A component tag over `target` ("pointTag(<tag>)" / "faceTag(<tag>)").
inline void addTag(Zelvane::Object& mesh, const Orsel::String& target, const char* tag,
                   const std::vector<bool>& members, const char* dccName = nullptr) {
    ObjectPtr property = Zelvane::createObject();
    Geo::populateTag(target, graphArray(members), *property);
    if (dccName) {
        property->set(Geo::sDccName, dccName);
    }
    mesh.set(Geo::createTagName(target, tag), std::move(property));
}

// Readers of host mesh data.
inline std::vector<float> hostPoints(const KObject& data) {
    KFnMesh fn(data);
    const float* raw = fn.getRawPoints();
    return raw ? std::vector<float>(raw, raw + 3 * fn.numVertices()) : std::vector<float>();
}
inline std::pair<KIntArray, KIntArray> hostFaces(const KObject& data) {
    KIntArray counts, connects;
    KFnMesh(data).getVertices(counts, connects);
    return {counts, connects};
}
inline KStringArray uvSetNames(const KObject& data) {
    KStringArray names;
    KFnMesh(data).getUVSetNames(names);
    return names;
}
// Per face-vertex (u, v) of a UV set.
inline std::vector<float2> faceVertexUVs(const KObject& data, const char* set) {
    KFnMesh fn(data);
    const KString name(set);
    KFloatArray u, v;
    KIntArray counts, ids;
    fn.getUVs(u, v, &name);
    fn.getAssignedUVs(counts, ids, &name);
    std::vector<float2> uvs;
    for (int id : ids) {
        uvs.push_back({u[id], v[id]});
    }
    return uvs;
}
// Per face-vertex normal.
inline std::vector<float3> faceVertexNormals(const KObject& data) {
    KFnMesh fn(data);
    KIntArray counts, ids;
    fn.getNormalIds(counts, ids);
    const float* raw = fn.getRawNormals();
    std::vector<float3> normals;
    for (int id : ids) {
        normals.push_back({raw[3 * id], raw[3 * id + 1], raw[3 * id + 2]});
    }
    return normals;
}
inline KIntArray tagElements(const KObject& data, const char* tag) {
    KIntArray elements;
    KFnSingleIndexedComponent(KFnGeometryData(data).componentTagContents(tag))
        .getElements(elements);
    return elements;
}
inline KStringArray tagNames(const KObject& data) {
    KStringArray names;
    KFnGeometryData(data).componentTags(names);
    return names;
}

// The plug-in bound through the host's and the executor's loaders, with its exported
// converter looked up by symbol.
class MeshOutput : public BoardScene {
protected:
    using Converter = KObject (*)(const Zelvane::Object&, const ZelvaneMeshToKovaOpts&);

    void SetUp() override {
        BoardScene::SetUp();
        converter_ = pluginFunction<Converter>(
            "_Z17zelvaneMeshToKovaRKN7Zelvane6ObjectERK21ZelvaneMeshToKovaOpts");
        ASSERT_NE(converter_, nullptr);
    }

    KObject convert(const Zelvane::Object& object,
                    const ZelvaneMeshToKovaOpts& options = ZelvaneMeshToKovaOpts()) const {
        return converter_(object, options);
    }

    Converter converter_ = nullptr;
};

// A "zelvaneGeoToKova" node in the scene, fed with graph objects and evaluated as the host
// evaluates it.
class GeoToKovaCompute : public MeshOutput {
protected:
    void SetUp() override {
        MeshOutput::SetUp();
        KFnDependencyNode fnNode;
        node_ = fnNode.create("zelvaneGeoToKova");
        ASSERT_FALSE(node_.isNull());
    }

    KPlug nodePlug(const char* name) const {
        return KFnDependencyNode(node_).findPlug(name, false);
    }
    // Puts a ZelData holding `objects` on "zelvaneGeo".
    void feed(const std::vector<Orsel::Ptr<Zelvane::Object>>& objects) const {
        KFnPluginData fnData;
        const KObject data = fnData.create(ZelData::id);
        auto* held = dynamic_cast<ZelData*>(fnData.data());
        ASSERT_NE(held, nullptr);
        for (const auto& object : objects) {
            held->addZelvaneObject(object);
        }
        ASSERT_TRUE(nodePlug("zelvaneGeo").setKObject(data));
    }
    // Evaluates "kovaMesh"; false when the evaluation failed.
    bool evaluate() const {
        KDataHandle value;
        return static_cast<bool>(nodePlug("kovaMesh").getValue(value));
    }
    KObject mesh(unsigned int index) const {
        return nodePlug("kovaMesh").elementByLogicalIndex(index).asKObject();
    }
    unsigned int meshCount() const { return nodePlug("kovaMesh").numElements(); }

    static Orsel::Ptr<Zelvane::Object> shared(ObjectPtr object) {
        return Orsel::Ptr<Zelvane::Object>(std::move(object));
    }
    // A mesh of `triangles` separate triangles.
    static Orsel::Ptr<Zelvane::Object> triangles(std::uint32_t count) {
        std::vector<float3> points;
        std::vector<std::uint32_t> offsets{0}, faceVertices;
        for (std::uint32_t i = 0; i < 3 * count; ++i) {
            points.push_back({float(i), float(i % 3 == 2), 0});
            faceVertices.push_back(i);
            if (i % 3 == 2) {
                offsets.push_back(i + 1);
            }
        }
        return shared(meshObject(points, offsets, faceVertices));
    }

    KObject node_;
};

} // namespace MeshOutputTest
