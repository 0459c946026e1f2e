#include <gtest/gtest.h>
#include <orsel/Value.h>

namespace {

struct Thing : Orsel::Class {
    explicit Thing(int id) : id(id) {}
    int id;
};

struct Record {
    long ticks;
    double seconds;
};

const Orsel::Type kThingType = Orsel::Type::named("Thing", Orsel::TypeKind::Class);

TEST(Value, DefaultIsEmpty) {
    const Orsel::Value value;
    EXPECT_TRUE(value.empty());
    EXPECT_FALSE(value.type().isValid());
    EXPECT_FALSE(value.getOrselClass());
    EXPECT_FALSE(value.getOpaqueArray());
    EXPECT_EQ(value.get<int>(), nullptr);
}

TEST(Value, CarriesASharedObject) {
    Orsel::Ptr<Thing> thing = Orsel::make<Thing>(3);
    const Orsel::Value value = Orsel::Value::fromClass(kThingType, thing);
    EXPECT_FALSE(value.empty());
    EXPECT_EQ(value.type(), kThingType);
    EXPECT_EQ(value.getOrselClass().get(), thing.get());
    EXPECT_EQ(value.getOrselClass<Thing>()->id, 3);
    EXPECT_FALSE(value.getOpaqueArray());
    EXPECT_EQ(thing.useCount(), 2u);
}

TEST(Value, TakesOverUniquelyOwnedObjectsAndArrays) {
    Orsel::MutablePtr<Thing> unique = Orsel::make<Thing>(8);
    const Thing* address = unique.get();
    const Orsel::Value single = Orsel::Value::fromClass(kThingType, std::move(unique));
    EXPECT_EQ(single.getOrselClass().get(), address);
    EXPECT_EQ(single.getOrselClass().useCount(), 2u); // the value and the returned copy

    auto things =
        Orsel::make<Orsel::Array<Orsel::Ptr<Thing>>>(std::size_t{1}, Orsel::make<Thing>(9));
    const Orsel::Value many =
        Orsel::Value::fromOpaqueArray(Orsel::Type::arrayOf(kThingType), std::move(things));
    EXPECT_EQ(many.getOpaqueArray()->size(), 1u);
}

TEST(Value, NullObjectIsAPayloadButNoObject) {
    const Orsel::Value value = Orsel::Value::fromClass(kThingType, Orsel::Ptr<Thing>());
    EXPECT_FALSE(value.empty());
    EXPECT_FALSE(value.getOrselClass());
}

TEST(Value, CarriesAnArrayOfSharedObjects) {
    auto things = Orsel::make<Orsel::Array<Orsel::Ptr<Thing>>>();
    things->push_back(Orsel::make<Thing>(1));
    things->push_back(Orsel::make<Thing>(2));
    const Thing* first = (*things)[0].get();
    const Orsel::Value value = Orsel::Value::fromOpaqueArray(
        Orsel::Type::arrayOf(kThingType),
        Orsel::Ptr<Orsel::Array<Orsel::Ptr<Thing>>>(std::move(things)));
    const auto objects = value.getOpaqueArray();
    ASSERT_TRUE(objects);
    ASSERT_EQ(objects->size(), 2u);
    EXPECT_EQ((*objects)[0].get(), first);
    EXPECT_EQ(Orsel::dynamicPtrCast<Thing>((*objects)[1])->id, 2);
    EXPECT_FALSE(value.getOrselClass());
}

TEST(Value, CarriesRecordsByTheirCppType) {
    const Orsel::Value value =
        Orsel::Value::make(Orsel::Type::named("Rec", Orsel::TypeKind::Record), Record{48, 2.0});
    ASSERT_NE(value.get<Record>(), nullptr);
    EXPECT_EQ(value.get<Record>()->ticks, 48);
    EXPECT_EQ(value.get<double>(), nullptr);
    const Orsel::Value copy = value;
    EXPECT_EQ(copy.get<Record>(), value.get<Record>());

    const Orsel::Value scalar =
        Orsel::Value::make(Orsel::Type::builtin(Orsel::TypeKind::Float), 1.5f);
    EXPECT_EQ(*scalar.get<float>(), 1.5f);
}

} // namespace
