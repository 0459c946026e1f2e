#include <gtest/gtest.h>
#include <zelvane/Object.h>
#include <zelvane/TypeLibrary.h>
#include <zelvane/file/SceneInfo.h>
#include <zelvane/geometry/GraphTransforms.h>
#include <zelvane/simulation/Time.h>

namespace {

TEST(TypeLibrary, KnowsObjectsRecordsAndScalarsByTheirNames) {
    const Orsel::Library& library = Zelvane::typeLibrary();
    const std::pair<const char*, Orsel::Type> classes[] = {
        {"Object", Zelvane::objectType()},
        {"Simulation::Time", Zelvane::Simulation::timeType()},
        {"Geometry::Transform::GraphTransforms",
         Zelvane::Geometry::Transform::graphTransformsType()},
        {"File::Project::SceneInfo", Zelvane::File::Project::sceneInfoType()}};
    for (const auto& [name, type] : classes) {
        ASSERT_NE(library.findType(name), nullptr) << name;
        EXPECT_EQ(*library.findType(name), type) << name;
        EXPECT_EQ(type.fullyQualifiedName(), name);
    }
    for (const char* name : {"bool", "int32", "float", "float3", "string", "float4x4"}) {
        ASSERT_NE(library.findType(name), nullptr) << name;
        EXPECT_EQ(library.findType(name)->fullyQualifiedName(), name);
    }
    EXPECT_EQ(library.findType("Simulation::Time")->kind(), Orsel::TypeKind::Record);
    const Orsel::Type* objects = library.findType("array<Object>");
    ASSERT_NE(objects, nullptr);
    EXPECT_EQ(objects->elementType(), Zelvane::objectType());
}

} // namespace
