#pragma once

#include "../plugin/BoardScene.h"

#include <cstdlib>
#include <dlfcn.h>
#include <kova/KDagPath.h>
#include <kova/KDataHandle.h>
#include <kova/KFloatArray.h>
#include <kova/KFloatPointArray.h>
#include <kova/KFnGeometryData.h>
#include <kova/KFnMesh.h>
#include <kova/KFnSet.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/KFnTransform.h>
#include <kova/KIntArray.h>
#include <kova/KPlug.h>
#include <mesh_in/MeshOptions.h>
#include <orsel/Array.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
#include <zelvane/Object.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/math/Vector.h>

// The plug-in bound through the host and executor loaders, its exported mesh converter looked
// up by symbol, and helpers that build mesh shapes in the scene and read the converted object.
class MeshInput : public BoardScene {
protected:
    using Converter = Orsel::MutablePtr<Zelvane::Object> (*)(const KPlug&, KDataHandle&,
                                                             const MeshOptions&);

    void SetUp() override {
        BoardScene::SetUp();
        unsetenv("ZELVANE_LOG_RUNTIME_MESSAGES");
        library_ = dlopen(PLUGIN_PATH, RTLD_NOW | RTLD_NOLOAD);
        ASSERT_NE(library_, nullptr);
        converter_ = reinterpret_cast<Converter>(
            dlsym(library_, "_Z16kovaMeshToObjectRK5KPlugR11KDataHandleRK11MeshOptions"));
        ASSERT_NE(converter_, nullptr);
    }
    void TearDown() override {
        unsetenv("ZELVANE_LOG_RUNTIME_MESSAGES");
        if (library_) {
            dlclose(library_);
        }
        BoardScene::TearDown();
    }

    static void logRuntimeMessages(bool on) {
        setenv("ZELVANE_LOG_RUNTIME_MESSAGES", on ? "1" : "0", 1);
    }

    // A mesh shape under a new transform; returns the shape.
    static KObject makeMesh(const KFloatPointArray& points, const KIntArray& counts,
                            const KIntArray& connects) {
        KFnMesh fn;
        fn.create(static_cast<int>(points.length()), static_cast<int>(counts.length()), points,
                  counts, connects);
        return fn.object();
    }
    // A unit quad, a triangle sharing its right edge and a separate pentagon: 10 points,
    // 3 faces, 12 face-vertices.
    static KObject makeNGonMesh() {
        return makeMesh({{0, 0, 0},
                         {1, 0, 0},
                         {1, 1, 0},
                         {0, 1, 0},
                         {2, 0.5f, 0},
                         {3, 0, 0},
                         {4, 0, 0},
                         {4.5f, 1, 0},
                         {3.5f, 2, 0},
                         {2.5f, 1, 0}},
                        {4, 3, 5}, {0, 1, 2, 3, 1, 4, 2, 5, 6, 7, 8, 9});
    }
    // A row of `quads` unit quads in the xy plane: 2 * (quads + 1) points.
    static KObject makeQuadStrip(int quads) {
        KFloatPointArray points;
        for (int i = 0; i <= quads; ++i) {
            points.append({float(i), 0, 0});
            points.append({float(i), 1, 0});
        }
        KIntArray counts;
        KIntArray connects;
        for (int i = 0; i < quads; ++i) {
            counts.append(4);
            for (int corner : {2 * i, 2 * i + 2, 2 * i + 3, 2 * i + 1}) {
                connects.append(corner);
            }
        }
        return makeMesh(points, counts, connects);
    }
    // A strip of 300 quads with something of every kind the converter reads, large enough for
    // parallel copies: a full UV set "map1", an RGB colour set "tint", a face tag "top" on
    // faces 1 and 2, and a set "pins" of points 0 and 5.
    static KObject makeMeshWithEveryChannel() {
        const KObject shape = makeQuadStrip(300);
        KFnMesh fn(shape);
        KFloatArray u, v;
        KIntArray ids;
        for (int i = 0; i < 1200; ++i) {
            u.append(float(i));
            v.append(0.5f);
            ids.append(i);
        }
        EXPECT_TRUE(fn.setUVs(u, v));
        EXPECT_TRUE(fn.assignUVs(KIntArray(300, 4), ids));
        EXPECT_TRUE(fn.createColorSetDataMesh("tint", false, 3));
        EXPECT_TRUE(fn.setColors({{1, 0, 0}}));
        EXPECT_TRUE(fn.assignColors(KIntArray(1200, 0)));

        KFnSingleIndexedComponent faces;
        const KObject tagged = faces.create(KFn::kMeshPolygonComponent);
        faces.addElements({1, 2});
        KFnGeometryData geometry(KFnDependencyNode(shape).findPlug("outMesh", false).asKObject());
        EXPECT_TRUE(geometry.addComponentTag("top"));
        EXPECT_TRUE(geometry.setComponentTagContents("top", tagged));

        KFnSingleIndexedComponent points;
        const KObject pinned = points.create(KFn::kMeshVertComponent);
        points.addElements({0, 5});
        KFnDependencyNode fnNode;
        KDagPath path;
        KDagPath::getAPathTo(shape, path);
        EXPECT_TRUE(KFnSet(fnNode.create("objectSet", "pins")).addMember(path, pinned));
        return shape;
    }
    static KObject transformOf(const KObject& shape) { return KFnDagNode(shape).parent(0); }

    static KPlug worldMesh(const KObject& shape) {
        return KFnDependencyNode(shape).findPlug("worldMesh", false).elementByLogicalIndex(0);
    }
    // The shape's world mesh through the exported converter.
    Orsel::MutablePtr<Zelvane::Object> convert(const KObject& shape,
                                               const MeshOptions& options = MeshOptions()) const {
        const KPlug source = worldMesh(shape);
        KDataHandle handle;
        EXPECT_TRUE(source.getValue(handle));
        return converter_(source, handle, options);
    }

    // The object that the board's input port "in" receives when `shape`'s world mesh feeds it,
    // as the executor translates it before an evaluation. `options` are the port's options.
    Orsel::Ptr<Zelvane::Object> throughBoard(const KObject& shape,
                                             const Orsel::MetadataItem& options = {}) {
        EXPECT_TRUE(ZelvaneBoard::addPort(board_, {Orsel::String("in"),
                                                   ZelvaneGraph::Executor::PortDirection::Input,
                                                   Zelvane::objectType(), options}));
        Orsel::Ptr<Zelvane::Object> seen;
        setBody([&seen](const ZelvaneBoard::PortValues& in) {
            const auto found = in.find("in");
            if (found != in.end()) {
                seen = found->second.getOrselClass<Zelvane::Object>();
            }
            return ZelvaneBoard::PortValues{};
        });
        connect(worldMesh(shape), plug("board1.in"));
        EXPECT_TRUE(ZelvaneBoard::evaluate(board_));
        return seen;
    }

    // The array `name` of `object` as a vector (empty when missing).
    template <class T>
    static std::vector<T> values(const Zelvane::Object& object, std::string_view name) {
        const Orsel::Ptr<Orsel::Array<T>> array = object.getArray<T>(name);
        return array ? std::vector<T>(array->begin(), array->end()) : std::vector<T>();
    }
    // The data of the geometry property `name` of `object` (empty when missing).
    template <class T>
    static std::vector<T> propertyData(const Zelvane::Object& object, std::string_view name) {
        const Orsel::Ptr<Zelvane::Object> property = object.getObject(name);
        return property ? values<T>(*property, Zelvane::Geometry::sData) : std::vector<T>();
    }
    // The indices of the index property `name` of `object`.
    static std::vector<std::uint32_t> propertyIndices(const Zelvane::Object& object,
                                                      std::string_view name) {
        const Orsel::Ptr<Zelvane::Object> property = object.getObject(name);
        return property ? values<std::uint32_t>(*property, Zelvane::Geometry::sIndices)
                        : std::vector<std::uint32_t>();
    }
    // The string member `member` of the sub-object `name` ("" when missing).
    static std::string stringMember(const Zelvane::Object& object, std::string_view name,
                                    std::string_view member) {
        const Orsel::Ptr<Zelvane::Object> property = object.getObject(name);
        const Orsel::String* text = property ? property->get<Orsel::String>(member) : nullptr;
        return text ? text->toStdString() : std::string();
    }
    // The shader names recorded on a converted mesh: {surface, displacement}.
    static std::pair<std::string, std::string> shaderNames(const Zelvane::Object& object) {
        using namespace Zelvane::Geometry;
        const auto settings = object.getObject(sRenderSettings);
        if (!settings) {
            return {"<no render settings>", ""};
        }
        auto nameIn = [&](std::string_view key) -> std::string {
            const auto references = settings->getArray<Orsel::Ptr<Zelvane::Object>>(key);
            if (!references || references->size() != 1 || !(*references)[0]) {
                return "<not one reference>";
            }
            const Orsel::String* id = (*references)[0]->get<Orsel::String>(sMaterialReferenceID);
            return id ? id->toStdString() : "<no id>";
        };
        return {nameIn(sMaterialSurface), nameIn(sMaterialDisplacement)};
    }
    static std::vector<std::string> propertyNames(const Zelvane::Object& object) {
        std::vector<std::string> names;
        for (const Orsel::String& name : object.propertyNames()) {
            names.push_back(name.toStdString());
        }
        return names;
    }

    void* library_ = nullptr;
    Converter converter_ = nullptr;
};

// Readable vectors in assertion messages.
namespace Zelvane::Math {
inline void PrintTo(const float3& v, std::ostream* out) {
    *out << "(" << v.x << ", " << v.y << ", " << v.z << ")";
}
inline void PrintTo(const float2& v, std::ostream* out) {
    *out << "(" << v.x << ", " << v.y << ")";
}
inline void PrintTo(const float4& v, std::ostream* out) {
    *out << "(" << v.x << ", " << v.y << ", " << v.z << ", " << v.w << ")";
}
} // namespace Zelvane::Math
