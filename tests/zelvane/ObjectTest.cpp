#include <gtest/gtest.h>
#include <orsel/Value.h>
#include <string>
#include <vector>
#include <zelvane/Object.h>

using Zelvane::Object;

namespace {

Orsel::Ptr<Orsel::Array<float>> floats(std::initializer_list<float> values) {
    return Orsel::make<Orsel::Array<float>>(values);
}

TEST(Object, SettingKeepsFirstInsertionOrderAndReplacesInPlace) {
    Object object;
    EXPECT_TRUE(object.set("b", 1));
    EXPECT_TRUE(object.set("a", 2.0f));
    EXPECT_TRUE(object.set("b", Orsel::String("text")));
    EXPECT_FALSE(object.set("", 3));
    EXPECT_EQ(object.propertyNames(), (Orsel::Array<Orsel::String>{"b", "a"}));
    EXPECT_EQ(*object.get<Orsel::String>("b"), "text");
    EXPECT_EQ(object.get<std::int32_t>("b"), nullptr);
    EXPECT_EQ(object.propertyCount(), 2u);
    object.set("name", "mesh"); // text is stored as a string, not as a bool
    ASSERT_NE(object.get<Orsel::String>("name"), nullptr);
    EXPECT_EQ(object.get<bool>("name"), nullptr);
}

TEST(Object, ArraysAndObjectsAreReadBackByType) {
    Object object;
    object.set("w", floats({1, 2}));
    Orsel::MutablePtr<Object> child = Zelvane::createObject();
    child->set("x", true);
    object.set("child", std::move(child));
    EXPECT_EQ(object.getArray<float>("w")->size(), 2u);
    EXPECT_FALSE(object.getArray<double>("w"));
    EXPECT_FALSE(object.getArray<float>("missing"));
    ASSERT_TRUE(object.getObject("child"));
    EXPECT_TRUE(*object.getObject("child")->get<bool>("x"));
    EXPECT_FALSE(object.getObject("w"));
    EXPECT_TRUE(object.remove("w"));
    EXPECT_FALSE(object.remove("w"));
    EXPECT_FALSE(object.has("w"));
}

TEST(Object, CopiesShareValuesButNotTheTable) {
    Orsel::MutablePtr<Object> original = Zelvane::createObject();
    original->set("w", floats({1}));
    original->set("child", Zelvane::createObject());
    const Orsel::Ptr<Object> shared = std::move(original);
    Orsel::Ptr<Object> secondOwner = shared;

    Orsel::MutablePtr<Object> copy = Orsel::makeMutable(std::move(secondOwner));
    ASSERT_NE(copy.get(), shared.get());
    EXPECT_EQ(copy->getArray<float>("w").get(), shared->getArray<float>("w").get());
    EXPECT_EQ(copy->getObject("child").get(), shared->getObject("child").get());

    copy->set("w", floats({5}));
    copy->set("extra", 1);
    EXPECT_EQ((*shared->getArray<float>("w"))[0], 1.0f);
    EXPECT_FALSE(shared->has("extra"));
}

TEST(Object, IsAFollowsThePrototypeChain) {
    Orsel::Ptr<Object> geometry = Zelvane::createObject();
    Orsel::MutablePtr<Object> meshPrototype = Zelvane::createObject();
    meshPrototype->setPrototype(geometry);
    const Orsel::Ptr<Object> mesh = std::move(meshPrototype);
    Object instance;
    instance.setPrototype(mesh);

    EXPECT_TRUE(Object::isA(instance, instance));
    EXPECT_TRUE(Object::isA(instance, *mesh));
    EXPECT_TRUE(Object::isA(instance, *geometry));
    EXPECT_FALSE(Object::isA(*mesh, instance));
    EXPECT_FALSE(Object::isA(instance, Object()));
}

TEST(Object, PropertiesDescribeTheirTypeAndSize) {
    Object object;
    object.set("count", std::int64_t{4});
    object.set("P", Orsel::make<Orsel::Array<Zelvane::Math::float3>>(3));
    object.set("none", Orsel::Ptr<Object>());
    object.set("tags", Orsel::make<Orsel::Array<Orsel::Ptr<Object>>>(2));
    std::vector<std::string> described;
    object.forEachProperty([&](const Orsel::String& name, const Zelvane::PropertyValue& value) {
        const Zelvane::PropertyInfo info = Zelvane::describeProperty(value);
        described.push_back(name.toStdString() + ":" +
                            info.type.fullyQualifiedName().toStdString() + ":" +
                            std::to_string(info.size));
    });
    EXPECT_EQ(described, (std::vector<std::string>{"count:int64:1", "P:array<float3>:3",
                                                   "none:Object:0", "tags:array<Object>:2"}));
}

TEST(Object, ObjectsOfTheClassNamedObjectAreRecoveredFromValues) {
    EXPECT_EQ(Zelvane::objectType().fullyQualifiedName(), "Object");
    EXPECT_EQ(Zelvane::objectType().kind(), Orsel::TypeKind::Class);
    Orsel::MutablePtr<Object> made = Zelvane::createObject();
    made->set("id", 12);
    const Orsel::Value value = Orsel::Value::fromClass(Zelvane::objectType(), std::move(made));
    const Orsel::Ptr<Object> object = value.getOrselClass<Object>();
    ASSERT_TRUE(object);
    EXPECT_EQ(*object->get<std::int32_t>("id"), 12);
}

} // namespace
