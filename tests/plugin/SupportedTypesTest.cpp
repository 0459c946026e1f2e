// Which graph types the plug-in lets cross the host boundary.

#include "PluginFixture.h"

#include <zelvane/Object.h>
#include <zelvane/TypeLibrary.h>
#include <zelvane/simulation/Time.h>

namespace {

using SupportedTypes = BoundPlugin;

TEST_F(SupportedTypes, AppendsTheFourNamesInOrderWithoutClearing) {
    Orsel::Array<Orsel::String> names;
    names.push_back(Orsel::String("Existing"));
    translation().getSupportedTypeNames(names);
    translation().getSupportedTypeNames(names);
    const std::vector<std::string> expected = {
        "Existing",
        "Object",
        "Simulation::Time",
        "Geometry::Transform::GraphTransforms",
        "File::Project::SceneInfo",
        "Object",
        "Simulation::Time",
        "Geometry::Transform::GraphTransforms",
        "File::Project::SceneInfo",
    };
    ASSERT_EQ(names.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(names[i].internal_string_view(), expected[i]) << i;
    }
}

TEST_F(SupportedTypes, ResolvesTheNamesInTheRuntimeTypeLibrary) {
    Orsel::EntityIndexedList<Orsel::Type> types;
    translation().getSupportedTypes(Zelvane::typeLibrary(), types);
    ASSERT_EQ(types.size(), 4u);
    EXPECT_EQ(types[0], Zelvane::objectType());
    EXPECT_EQ(types[1], Zelvane::Simulation::timeType());
}

TEST_F(SupportedTypes, TheBoardRoutesObjectArraysButNotOtherArraysToThePlugin) {
    EXPECT_NE(ZelvaneBoard::BoardExecutor::translationFor(
                  Orsel::Type::arrayOf(Zelvane::objectType())),
              nullptr);
    EXPECT_EQ(ZelvaneBoard::BoardExecutor::translationFor(
                  Orsel::Type::arrayOf(Orsel::Type::builtin(Orsel::TypeKind::Float))),
              nullptr);
}

} // namespace
