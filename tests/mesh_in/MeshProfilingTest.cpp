#include "MeshInputFixture.h"

#include <kova/KProfiler.h>
#include <set>

namespace {

TEST_F(MeshInput, EveryStepIsTimedInTheMeshConverterCategory) {
    const KObject shape = makeMeshWithEveryChannel();
    MeshOptions options;
    options.pointNormals = true;
    options.faceNormals = true;
    KProfiler::clear();
    KProfiler::setRecording(true);
    ASSERT_TRUE(convert(shape, options));
    KProfiler::setRecording(false);
    const int category =
        KProfiler::addCategory("Zelvane/MeshConverter", "Events from the Zelvane mesh converter");
    std::set<std::string> labels;
    for (const KProfiler::Event& event : KProfiler::events()) {
        EXPECT_EQ(event.category, category) << event.label;
        EXPECT_EQ(event.colorIndex, 9) << event.label;
        labels.insert(event.label);
    }
    KProfiler::clear();
    EXPECT_EQ(labels, (std::set<std::string>{
                          "Kova to Zelvane Mesh translation", "Copy positions", "get faces",
                          "copy faces", "get v normals", "compute v normals", "get cpv",
                          "compute adjacency", "get fv normals", "copy fv normals", "get uvs",
                          "copy uvs", "copy cpv", "convert component tag", "get set", "copy set"}));
    EXPECT_EQ(KProfiler::categoryDescription(category),
              KString("Events from the Zelvane mesh converter"));
}

} // namespace
