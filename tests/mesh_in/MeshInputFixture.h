#pragma once

#include "../plugin/BoardScene.h"
#include "../plugin/GraphObjectValues.h"
#include "../plugin/NGonMesh.h"

#include <cstdlib>
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
        converter_ =
            pluginFunction<Converter>("_Z16kovaMeshToObjectRK5KPlugR11KDataHandleRK11MeshOptions");
        ASSERT_NE(converter_, nullptr);
    }
    void TearDown() override {
        unsetenv("ZELVANE_LOG_RUNTIME_MESSAGES");
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
    static KObject makeNGonMesh() {
        KFloatPointArray points;
        for (const auto& [x, y, z] : NGonMesh::kPoints) {
            points.append({x, y, z});
        }
        return makeMesh(points, KIntArray(NGonMesh::kCounts, 3),
                        KIntArray(NGonMesh::kFaceVertices, 12));
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

        addTag(shape, "top", component(KFn::kMeshPolygonComponent, {1, 2}));
        makeSet("pins", shape, component(KFn::kMeshVertComponent, {0, 5}));
        return shape;
    }
    static KObject component(KFn::Type type, const KIntArray& elements) {
        KFnSingleIndexedComponent fn;
        const KObject made = fn.create(type);
        fn.addElements(elements);
        return made;
    }
    // Adds the component tag `name` holding `contents` to the shape's mesh.
    static void addTag(const KObject& shape, const char* name, const KObject& contents) {
        KFnGeometryData geometry(KFnDependencyNode(shape).findPlug("outMesh", false).asKObject());
        ASSERT_TRUE(geometry.addComponentTag(name));
        ASSERT_TRUE(geometry.setComponentTagContents(name, contents));
    }
    // An object set called `name` holding `contents` of the shape.
    static void makeSet(const char* name, const KObject& shape, const KObject& contents) {
        KFnDependencyNode fn;
        KDagPath path;
        KDagPath::getAPathTo(shape, path);
        EXPECT_TRUE(KFnSet(fn.create("objectSet", name)).addMember(path, contents));
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
        watchInput("in", Zelvane::objectType(), options);
        connect(worldMesh(shape), plug("board1.in"));
        EXPECT_TRUE(ZelvaneBoard::evaluate(board_));
        return seenObject();
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

    Converter converter_ = nullptr;
};
