#include <atomic>
#include <gtest/gtest.h>
#include <orsel/Ptr.h>
#include <thread>
#include <vector>

namespace {

struct Counted {
    static inline std::atomic<int> alive{0};
    explicit Counted(int value = 0) : value(value) { ++alive; }
    Counted(const Counted& other) : value(other.value) { ++alive; }
    virtual ~Counted() { --alive; }
    int value;
};

struct Derived : Counted {
    using Counted::Counted;
};

struct Other : Counted {};

TEST(Ptr, UniqueOwnerBecomesSharedWithoutCopyingAndTheLastOwnerDestroysIt) {
    {
        Orsel::MutablePtr<Counted> unique = Orsel::make<Counted>(7);
        const Counted* address = unique.get();
        Orsel::Ptr<Counted> shared = std::move(unique);
        EXPECT_EQ(unique, nullptr);
        EXPECT_EQ(shared.get(), address);
        EXPECT_EQ(shared->value, 7);
        EXPECT_EQ(shared.useCount(), 1u);
        Orsel::Ptr<Counted> second = shared;
        shared.reset();
        EXPECT_EQ(Counted::alive, 1);
        EXPECT_TRUE(second.isUnique());
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST(Ptr, MakingMutableTakesTheObjectOfASoleOwnerAndCopiesASharedOne) {
    Orsel::Ptr<Counted> sole = Orsel::make<Counted>(1);
    const Counted* address = sole.get();
    Orsel::MutablePtr<Counted> same = Orsel::makeMutable(std::move(sole));
    EXPECT_EQ(same.get(), address);
    EXPECT_FALSE(sole);
    EXPECT_EQ(Counted::alive, 1);

    Orsel::Ptr<Counted> first = std::move(same);
    Orsel::Ptr<Counted> second = first;
    EXPECT_EQ(first.useCount(), 2u);
    Orsel::MutablePtr<Counted> copy = Orsel::MutablePtr<Counted>::fromShared(std::move(second));
    ASSERT_TRUE(copy);
    EXPECT_NE(copy.get(), first.get());
    copy->value = 99;
    EXPECT_EQ(first->value, 1);
    EXPECT_TRUE(first.isUnique());
    EXPECT_EQ(Counted::alive, 2);

    EXPECT_FALSE(Orsel::makeMutable(Orsel::Ptr<Counted>()));
    Orsel::Ptr<Counted> none = nullptr;
    EXPECT_EQ(none.useCount(), 0u);
    EXPECT_FALSE(none.isUnique());
}

TEST(Ptr, CastsBetweenBaseAndDerivedAndAFailedUniqueDowncastKeepsTheObject) {
    Orsel::Ptr<Counted> base = Orsel::make<Derived>(5);
    Orsel::Ptr<Derived> derived = Orsel::dynamicPtrCast<Derived>(base);
    ASSERT_TRUE(derived);
    EXPECT_EQ(derived.get(), base.get());
    EXPECT_EQ(base.useCount(), 2u);
    EXPECT_FALSE(Orsel::dynamicPtrCast<Other>(base));
    EXPECT_EQ(Orsel::staticPtrCast<Derived>(base)->value, 5);

    Orsel::MutablePtr<Counted> unique = Orsel::make<Derived>(3);
    EXPECT_FALSE(Orsel::dynamicPtrCast<Other>(std::move(unique)));
    ASSERT_TRUE(unique);
    Orsel::MutablePtr<Derived> uniqueDerived = Orsel::dynamicPtrCast<Derived>(std::move(unique));
    EXPECT_FALSE(unique);
    ASSERT_TRUE(uniqueDerived);
    EXPECT_EQ(uniqueDerived->value, 3);
}

TEST(Ptr, CountsStayExactUnderConcurrentCopies) {
    Orsel::Ptr<Counted> shared = Orsel::make<Counted>(4);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([shared] {
            for (int i = 0; i < 10000; ++i) {
                Orsel::Ptr<Counted> copy = shared;
                ASSERT_EQ(copy->value, 4);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_TRUE(shared.isUnique());
}

TEST(Ptr, ObjectReleasedByAnotherThreadCanBeChangedInPlace) {
    Orsel::Ptr<Counted> mine = Orsel::make<Counted>(1);
    Orsel::Ptr<Counted> theirs = mine;
    std::thread reader([held = std::move(theirs)]() mutable {
        EXPECT_EQ(held->value, 1);
        held.reset();
    });
    reader.join();
    const Counted* address = mine.get();
    Orsel::MutablePtr<Counted> writable = Orsel::makeMutable(std::move(mine));
    EXPECT_EQ(writable.get(), address);
    writable->value = 2;
}

} // namespace
