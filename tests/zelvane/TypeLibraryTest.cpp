#include <gtest/gtest.h>
#include <orsel/Value.h>
#include <zelvane/Object.h>
#include <zelvane/TypeLibrary.h>
#include <zelvane/file/SceneInfo.h>
#include <zelvane/geometry/GraphTransforms.h>
#include <zelvane/simulation/Time.h>

namespace {

TEST(TypeLibrary, KnowsObjectsRecordsAndScalars) {
    const Orsel::Library& library = Zelvane::typeLibrary();
    for (const char* name :
         {"Object", "Simulation::Time", "Geometry::Transform::GraphTransforms",
          "File::Project::SceneInfo", "bool", "int32", "float", "float3", "string", "float4x4"}) {
        const Orsel::Type* type = library.findType(name);
        ASSERT_NE(type, nullptr) << name;
        EXPECT_EQ(type->fullyQualifiedName(), name);
    }
    EXPECT_EQ(*library.findType("Object"), Zelvane::objectType());
    EXPECT_EQ(library.findType("Simulation::Time")->kind(), Orsel::TypeKind::Record);
    const Orsel::Type* objects = library.findType("array<Object>");
    ASSERT_NE(objects, nullptr);
    EXPECT_EQ(objects->elementType(), Zelvane::objectType());
}

TEST(TypeLibrary, RecordTypesMatchTheirNames) {
    EXPECT_EQ(Zelvane::Simulation::timeType().fullyQualifiedName(), "Simulation::Time");
    EXPECT_EQ(Zelvane::Geometry::Transform::graphTransformsType().fullyQualifiedName(),
              "Geometry::Transform::GraphTransforms");
    EXPECT_EQ(Zelvane::File::Project::sceneInfoType().fullyQualifiedName(),
              "File::Project::SceneInfo");
}

TEST(TypeLibrary, RecordsTravelInValues) {
    const Orsel::Value time = Orsel::Value::make(
        Zelvane::Simulation::timeType(), Zelvane::Simulation::Time{100, 2.0, 48.0, 1.0 / 24});
    ASSERT_NE(time.get<Zelvane::Simulation::Time>(), nullptr);
    EXPECT_EQ(time.get<Zelvane::Simulation::Time>()->frame, 48.0);
    EXPECT_EQ(time.get<Zelvane::File::Project::SceneInfo>(), nullptr);

    const Orsel::Value scene = Orsel::Value::make(
        Zelvane::File::Project::sceneInfoType(),
        Zelvane::File::Project::SceneInfo{"a.scene", "/scenes", "/project", true});
    EXPECT_EQ(scene.get<Zelvane::File::Project::SceneInfo>()->sceneDirectory, "/scenes");
}

} // namespace
