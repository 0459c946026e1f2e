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

TEST(Value, DefaultIsEmptyAndANullObjectIsAPayloadButNoObject) {
    const Orsel::Value value;
    EXPECT_TRUE(value.empty());
    EXPECT_FALSE(value.type().isValid());
    EXPECT_FALSE(value.getOrselClass());
    EXPECT_FALSE(value.getOpaqueArray());
    EXPECT_EQ(value.get<int>(), nullptr);
    const Orsel::Value null = Orsel::Value::fromClass(kThingType, Orsel::Ptr<Thing>());
    EXPECT_FALSE(null.empty());
    EXPECT_FALSE(null.getOrselClass());
}

TEST(Value, CarriesSharedObjectsAndTakesOverUniquelyOwnedOnes) {
    Orsel::Ptr<Thing> thing = Orsel::make<Thing>(3);
    const Orsel::Value value = Orsel::Value::fromClass(kThingType, thing);
    EXPECT_EQ(value.type(), kThingType);
    EXPECT_EQ(value.getOrselClass().get(), thing.get());
    EXPECT_EQ(value.getOrselClass<Thing>()->id, 3);
    EXPECT_FALSE(value.getOpaqueArray());
    EXPECT_EQ(thing.useCount(), 2u);

    Orsel::MutablePtr<Thing> unique = Orsel::make<Thing>(8);
    const Thing* address = unique.get();
    const Orsel::Value single = Orsel::Value::fromClass(kThingType, std::move(unique));
    EXPECT_EQ(single.getOrselClass().get(), address);
    EXPECT_EQ(single.getOrselClass().useCount(), 2u); // the value and the returned copy
}

TEST(Value, CarriesAnArrayOfSharedObjects) {
    auto things = Orsel::make<Orsel::Array<Orsel::Ptr<Thing>>>();
    things->push_back(Orsel::make<Thing>(1));
    things->push_back(Orsel::make<Thing>(2));
    const Thing* first = (*things)[0].get();
    const Orsel::Value value =
        Orsel::Value::fromOpaqueArray(Orsel::Type::arrayOf(kThingType), std::move(things));
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
