#include <gtest/gtest.h>
#include <orsel/EntityIndexedList.h>
#include <orsel/Library.h>
#include <orsel/Type.h>
#include <string>
#include <thread>
#include <vector>

using Orsel::Type;
using Orsel::TypeKind;

namespace {

TEST(Type, ArraysAreNamedAfterTheirElementsAndNest) {
    const Type object = Type::named("Object", TypeKind::Class);
    const Type objects = Type::arrayOf(object);
    EXPECT_EQ(static_cast<int>(TypeKind::Array), 14);
    EXPECT_TRUE(objects.isArray());
    EXPECT_EQ(objects.kind(), TypeKind::Array);
    EXPECT_EQ(objects.fullyQualifiedName(), "array<Object>");
    EXPECT_EQ(objects.elementType(), object);
    const Type nested = Type::arrayOf(Type::arrayOf(Type::builtin(TypeKind::Float)));
    EXPECT_EQ(nested.fullyQualifiedName(), "array<array<float>>");
    EXPECT_TRUE(nested.elementType().isArray());
    EXPECT_FALSE(nested.elementType().elementType().isArray());
    EXPECT_FALSE(object.elementType().isValid());
    // Equality is structural.
    EXPECT_EQ(Type::named("Simulation::Time", TypeKind::Record),
              Type::named("Simulation::Time", TypeKind::Record));
    EXPECT_FALSE(Type::named("x", TypeKind::Record) == Type::named("x", TypeKind::Opaque));
    EXPECT_EQ(Type::arrayOf(Type::builtin(TypeKind::Int32)),
              Type::arrayOf(Type::named("int32", TypeKind::Int32)));
    EXPECT_EQ(Type::builtin(TypeKind::UInt32).fullyQualifiedName(), "uint32");
}

TEST(Type, InvalidRequestsGiveTheInvalidType) {
    EXPECT_FALSE(Type().isValid());
    EXPECT_EQ(Type().fullyQualifiedName(), "");
    EXPECT_FALSE(Type::named("", TypeKind::Record).isValid());
    EXPECT_FALSE(Type::named("x", TypeKind::Array).isValid());
    EXPECT_FALSE(Type::arrayOf(Type()).isValid());
    EXPECT_FALSE(Type::builtin(TypeKind::Class).isValid());
}

TEST(Library, FindsRegisteredTypesAndTheirArrays) {
    Orsel::Library library;
    const Type record = Type::named("File::Project::SceneInfo", TypeKind::Record);
    EXPECT_TRUE(library.registerType(record));
    EXPECT_TRUE(library.registerType(record));
    EXPECT_FALSE(library.registerType(Type::named(record.fullyQualifiedName(), TypeKind::Opaque)));
    EXPECT_FALSE(library.registerType(Type::arrayOf(record)));
    EXPECT_FALSE(library.registerType(Type()));
    EXPECT_EQ(library.size(), 1u);

    ASSERT_NE(library.findType("File::Project::SceneInfo"), nullptr);
    EXPECT_EQ(*library.findType("File::Project::SceneInfo"), record);
    const Type* arrays = library.findType("array<array<File::Project::SceneInfo>>");
    ASSERT_NE(arrays, nullptr);
    EXPECT_EQ(arrays->elementType().elementType(), record);
    EXPECT_EQ(library.findType("array<array<File::Project::SceneInfo>>"), arrays);
    EXPECT_EQ(library.findType("Unknown"), nullptr);
    EXPECT_EQ(library.findType("array<Unknown>"), nullptr);
    EXPECT_EQ(library.findType("array<>"), nullptr);
    std::string deep = record.fullyQualifiedName().toStdString();
    for (int i = 0; i < 1000; ++i) {
        deep = "array<" + deep + ">";
    }
    EXPECT_EQ(library.findType(deep), nullptr) << "absurdly deep array names are refused";
}

TEST(Library, ConcurrentLookupsAgreeOnOneType) {
    Orsel::Library library;
    library.registerType(Type::builtin(TypeKind::Float));
    std::vector<const Type*> found(4);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < 200; ++i) {
                found[t] = library.findType("array<float>");
                library.registerType(Type::named("T" + std::to_string(t), TypeKind::Record));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const Type* type : found) {
        EXPECT_EQ(type, found[0]);
    }
    EXPECT_EQ(library.size(), 5u);
    EXPECT_EQ(library.types()[0], Type::builtin(TypeKind::Float));
}

TEST(EntityIndexedList, AppendReturnsTheIndexOfTheEntry) {
    Orsel::EntityIndexedList<Type> types;
    EXPECT_EQ(types.append(Type::builtin(TypeKind::Bool)), 0u);
    EXPECT_EQ(types.append(Type::builtin(TypeKind::Double)), 1u);
    EXPECT_EQ(types.size(), 2u);
    EXPECT_EQ(types[1].fullyQualifiedName(), "double");
}

} // namespace
