// Which graph types the plug-in lets cross the host boundary.

#include "PluginFixture.h"

#include <zelvane/Object.h>
#include <zelvane/TypeLibrary.h>
#include <zelvane/simulation/Time.h>

namespace {

using SupportedTypes = BoundPlugin;

// The names are appended without clearing, and resolve in the runtime's type library.
TEST_F(SupportedTypes, AppendsTheFourNamesInOrderAndResolvesThem) {
    Orsel::Array<Orsel::String> names;
    names.push_back(Orsel::String("Existing"));
    translation().getSupportedTypeNames(names);
    translation().getSupportedTypeNames(names);
    const std::vector<std::string> four = {"Object", "Simulation::Time",
                                           "Geometry::Transform::GraphTransforms",
                                           "File::Project::SceneInfo"};
    ASSERT_EQ(names.size(), 9u);
    EXPECT_EQ(names[0].internal_string_view(), "Existing");
    for (std::size_t i = 0; i < 8; ++i) {
        EXPECT_EQ(names[i + 1].internal_string_view(), four[i % 4]) << i;
    }

    Orsel::EntityIndexedList<Orsel::Type> types;
    translation().getSupportedTypes(Zelvane::typeLibrary(), types);
    ASSERT_EQ(types.size(), 4u);
    EXPECT_EQ(types[0], Zelvane::objectType());
    EXPECT_EQ(types[1], Zelvane::Simulation::timeType());
}

TEST_F(SupportedTypes, TheBoardRoutesObjectArraysButNotOtherArraysToThePlugin) {
    EXPECT_NE(
        ZelvaneBoard::BoardExecutor::translationFor(Orsel::Type::arrayOf(Zelvane::objectType())),
        nullptr);
    EXPECT_EQ(ZelvaneBoard::BoardExecutor::translationFor(
                  Orsel::Type::arrayOf(Orsel::Type::builtin(Orsel::TypeKind::Float))),
              nullptr);
}

} // namespace
