#pragma once

#include <gtest/gtest.h>
#include <kova/KFailureInjection.h>
#include <kova/KFnMesh.h>
#include <kova/KFnMeshData.h>
#include <kova/KScene.h>
#include <kova/KSelectionList.h>

// A unit quad (vertices 0-3) and a triangle (vertices 1, 4, 2) sharing an edge, and a
// pentagon (vertices 5-9): an n-gon mesh of 10 vertices, 3 faces and 12 face-vertices.
struct MeshArrays {
    KFloatPointArray points{{0, 0, 0}, {1, 0, 0}, {1, 1, 0},    {0, 1, 0},    {2, 0.5f, 0},
                            {3, 0, 0}, {4, 0, 0}, {4.5f, 1, 0}, {3.5f, 2, 0}, {2.5f, 1, 0}};
    KIntArray counts{4, 3, 5};
    KIntArray connects{0, 1, 2, 3, 1, 4, 2, 5, 6, 7, 8, 9};
};

// Mesh data holding the mesh of MeshArrays.
inline KObject makeMeshData(KFnMesh& fn) {
    const MeshArrays a;
    KFnMeshData dataFn;
    const KObject data = dataFn.create();
    fn.create(10, 3, a.points, a.counts, a.connects, data);
    return data;
}

// The scene node called `name`, or the null object.
inline KObject nodeNamed(const char* name) {
    KSelectionList list;
    KObject node;
    if (list.add(name)) {
        list.getDependNode(0, node);
    }
    return node;
}

// Resets the scene and failure injection around each test; `fn` is attached to `data`, new
// mesh data holding the mesh of MeshArrays.
class MeshTest : public ::testing::Test {
protected:
    void SetUp() override {
        KFailureInjection::reset();
        KScene::reset();
        data = makeMeshData(fn);
    }
    void TearDown() override {
        KFailureInjection::reset();
        KScene::reset();
    }

    const MeshArrays a;
    KFnMesh fn;
    KObject data;
};
