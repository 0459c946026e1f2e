// ZelData: graph objects carried through host attributes, shared and never copied.

#include <gtest/gtest.h>
#include <zeldata/ZelData.h>
#include <zelvane/Object.h>

namespace {

Orsel::Ptr<Zelvane::Object> objectWith(const char* name) {
    Orsel::MutablePtr<Zelvane::Object> object = Zelvane::createObject();
    object->set(Orsel::String(name), 1.0f);
    return object;
}

TEST(ZelData, KeepsObjectsInOrderAndSharesThemUntilCleared) {
    ZelData data;
    EXPECT_TRUE(data.empty());
    const Orsel::Ptr<Zelvane::Object> first = objectWith("a");
    data.addZelvaneObject(first);
    data.addZelvaneObject(objectWith("b"));
    ASSERT_EQ(data.size(), 2u);
    EXPECT_EQ(data.objects()[0].get(), first.get());
    EXPECT_EQ(first.useCount(), 2) << "held by the test and the data, not copied";
    EXPECT_TRUE(data.objects()[1]->has(Orsel::String("b")));
    data.setShared(1);
    data.clear();
    EXPECT_TRUE(data.empty());
    EXPECT_EQ(data.shared(), 0);
    EXPECT_EQ(first.useCount(), 1);
}

TEST(ZelData, CopiesShareTheSameObjects) {
    ZelData source;
    source.addZelvaneObject(objectWith("a"));
    source.setShared(1);
    ZelData copy;
    copy.copy(source);
    ASSERT_EQ(copy.size(), 1u);
    EXPECT_EQ(copy.objects()[0].get(), source.objects()[0].get());
    EXPECT_EQ(copy.shared(), 1);
    EXPECT_EQ(copy.name(), KString("ZelData"));
}

} // namespace
