#include "LoadScene.h"

#include <board/BoardNode.h>
#include <board/Graph.h>
#include <cmath>
#include <kova/KColorArray.h>
#include <kova/KDoubleArray.h>
#include <kova/KFloatArray.h>
#include <kova/KFloatPointArray.h>
#include <kova/KFnDagNode.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnGeometryData.h>
#include <kova/KFnMesh.h>
#include <kova/KFnNurbsCurve.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/KFnTransform.h>
#include <kova/KIntArray.h>
#include <kova/KPlug.h>
#include <kova/KPointArray.h>
#include <string>
#include <zelvane/inputbypath/OptionKeys.h>

namespace {

using ZelvaneGraph::Executor::PortDirection;
namespace Keys = ZelvaneBoardInputByPath::Keys;

KPlug plugOf(const KObject& node, const char* attribute) {
    return KFnDependencyNode(node).findPlug(attribute, false);
}

KObject parentOf(const KObject& shape) {
    return KFnDagNode(shape).parent(0);
}

// A wavy grid of side x side quads whose wave depends on `seed`, with the UV set "map1" and
// the colour set "colorSet1" (one value per point) and the face tag "lowerHalf".
KObject makeGrid(int side, float seed) {
    const int row = side + 1;
    KFloatPointArray points;
    KFloatArray u, v;
    KColorArray colors;
    for (int y = 0; y < row; ++y) {
        for (int x = 0; x < row; ++x) {
            const float height =
                0.2f * std::sin(0.4f * float(x) + seed) * std::cos(0.3f * float(y));
            points.append({float(x), float(y), height});
            u.append(float(x) / float(side));
            v.append(float(y) / float(side));
            colors.append({float(x) / float(side), float(y) / float(side), height + 0.5f, 1.0f});
        }
    }
    KIntArray counts, connects;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            counts.append(4);
            const int p = y * row + x;
            for (int corner : {p, p + 1, p + row + 1, p + row}) {
                connects.append(corner);
            }
        }
    }
    KFnMesh fn;
    fn.create(static_cast<int>(points.length()), static_cast<int>(counts.length()), points, counts,
              connects);
    const KObject shape = fn.object();
    EXPECT_TRUE(fn.setUVs(u, v));
    EXPECT_TRUE(fn.assignUVs(counts, connects));
    const KString colorSet("colorSet1");
    EXPECT_TRUE(fn.createColorSetDataMesh(colorSet));
    EXPECT_TRUE(fn.setColors(colors, &colorSet));
    EXPECT_TRUE(fn.assignColors(connects, &colorSet));

    KFnSingleIndexedComponent faces;
    const KObject lowerHalf = faces.create(KFn::kMeshPolygonComponent);
    for (int f = 0; f < side * side / 2; ++f) {
        faces.addElement(f);
    }
    KFnGeometryData geometry(plugOf(shape, "outMesh").asKObject());
    EXPECT_TRUE(geometry.addComponentTag("lowerHalf"));
    EXPECT_TRUE(geometry.setComponentTagContents("lowerHalf", lowerHalf));
    return shape;
}

// An open cubic of 8 CVs, about 7 units long, whose wiggle depends on `seed`.
KObject makeCurve(float seed) {
    KPointArray cvs;
    for (int k = 0; k < 8; ++k) {
        cvs.append(KPoint(k, std::sin(0.7 * k + seed), 0.5 * std::cos(0.3 * k + seed), 1.0));
    }
    const KDoubleArray knots({0, 0, 0, 1, 2, 3, 4, 5, 5, 5});
    KFnNurbsCurve fn;
    KStatus status;
    fn.create(cvs, knots, 3, KFnNurbsCurve::kOpen, false, false, KObject::kNullObj, &status);
    EXPECT_TRUE(status) << status.errorString().str();
    return fn.object();
}

// Options for both inputs: normals of both kinds for meshes; curves sampled every 0.25
// units, with tangents and lengths.
Orsel::MetadataItem inputOptions() {
    Orsel::MetadataItem options{Orsel::String(Keys::kOptions)};
    const std::pair<std::string_view, const char*> keys[] = {
        {Keys::kPointNormals, "true"},        {Keys::kFaceVertexNormals, "true"},
        {Keys::kComputeTangents, "true"},     {Keys::kAddLengths, "true"},
        {Keys::kSampling, "bySegmentLength"}, {Keys::kSegmentLength, "0.25"}};
    for (const auto& [key, value] : keys) {
        options.setChild(Orsel::String(key), Orsel::String(value));
    }
    Orsel::MetadataItem port("port");
    port.addChild(std::move(options));
    return port;
}

ZelvaneBoard::PortDescription outputPort(const char* name) {
    Orsel::MetadataItem metadata;
    metadata.setChild(Orsel::String(Keys::kNoShape), Orsel::String("1"));
    return {Orsel::String(name), PortDirection::Output, Zelvane::objectType(), metadata};
}

} // namespace

void LoadScene::build(int boards) {
    std::vector<KObject> sharedCurves;
    for (int m = 0; m < kSharedMeshes; ++m) {
        sharedMeshes_.push_back(makeGrid(kGridSide, float(m)));
        sharedTransforms_.push_back(parentOf(sharedMeshes_.back()));
    }
    for (int c = 0; c < kSharedCurves; ++c) {
        sharedCurves.push_back(makeCurve(0.1f * float(c)));
        sharedTransforms_.push_back(parentOf(sharedCurves.back()));
    }
    for (int b = 0; b < boards; ++b) {
        const KObject board =
            b == 0 ? board_ : makeBoard(("board" + std::to_string(b + 1)).c_str());
        ASSERT_FALSE(board.isNull());
        addBoardPorts(board);
        if (HasFatalFailure()) {
            return;
        }
        std::vector<KObject> meshes = sharedMeshes_;
        meshes.push_back(makeGrid(kGridSide, 10.0f + float(b)));
        const KPlug meshPort = plugOf(board, "meshes");
        for (std::size_t i = 0; i < meshes.size(); ++i) {
            connect(plugOf(meshes[i], "worldMesh").elementByLogicalIndex(0),
                    meshPort.elementByLogicalIndex(static_cast<unsigned int>(i)));
        }
        std::vector<KObject> curves = sharedCurves;
        for (int c = 0; c < kOwnCurves; ++c) {
            curves.push_back(makeCurve(20.0f + float(b) + 0.05f * float(c)));
        }
        const KPlug curvePort = plugOf(board, "curves");
        for (std::size_t i = 0; i < curves.size(); ++i) {
            connect(plugOf(curves[i], "worldSpace").elementByLogicalIndex(0),
                    curvePort.elementByLogicalIndex(static_cast<unsigned int>(i)));
        }
        boards_.push_back(board);
        writers_.push_back(addWriter(board));
    }
}

void LoadScene::addBoardPorts(const KObject& board) {
    const Orsel::MetadataItem options = inputOptions();
    ASSERT_TRUE(
        ZelvaneBoard::addPort(board, {Orsel::String("meshes"), PortDirection::Input,
                                      Orsel::Type::arrayOf(Zelvane::objectType()), options}));
    addArrayAttribute(board, "curves", {KFnData::kNurbsCurve});
    ASSERT_TRUE(ZelvaneBoard::addPort(
        board, {Orsel::String("curves"), PortDirection::Input, Zelvane::objectType(), options}));
    // Each input passes to its output.
    ZelvaneBoard::Graph& graph = ZelvaneBoard::BoardNode::fromNode(board)->graph();
    for (const auto& [input, output] :
         {std::pair{"meshes", "meshesOut"}, std::pair{"curves", "strandsOut"}}) {
        ASSERT_TRUE(ZelvaneBoard::addPort(board, outputPort(output)));
        const std::string pass = std::string(input) + "Pass";
        ASSERT_TRUE(graph.addOperator(pass, "passThrough"));
        ASSERT_TRUE(graph.connect(input, pass + ".in"));
        ASSERT_TRUE(graph.connect(pass + ".out", output));
    }
}

KObject LoadScene::addWriter(const KObject& board) {
    KFnDependencyNode fnNode;
    const KObject writer = fnNode.create("zelvaneGeoToKova");
    EXPECT_FALSE(writer.isNull());
    EXPECT_TRUE(plugOf(writer, "transferNormals").setBool(true));
    // Every colour set and tag; the normals go through transferNormals only.
    EXPECT_TRUE(plugOf(writer, "properties").setString("* ^N ^faceVertexN"));
    EXPECT_TRUE(plugOf(writer, "componentTags").setString("*"));
    connect(plugOf(board, "meshesOut"), plugOf(writer, "zelvaneGeo"));
    return writer;
}

void LoadScene::TearDown() {
    boards_.clear();
    writers_.clear();
    sharedMeshes_.clear();
    sharedTransforms_.clear();
    BoardScene::TearDown();
}

void LoadScene::placeSharedSources(int place) const {
    for (const KObject& transform : sharedTransforms_) {
        ASSERT_TRUE(KFnTransform(transform).setTranslation(KVector(0.0, 0.5 * place, 1.0 * place),
                                                           KSpace::kTransform));
    }
}
