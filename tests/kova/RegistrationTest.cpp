#include "KovaTestSupport.h"

#include <kova/KFnPluginData.h>
#include <kova/KFnTypedAttribute.h>
#include <kova/KMessageCapture.h>
#include <kova/KPxData.h>

namespace {

// A plug-in data type holding a list of numbers.
class NumberList : public KPxData {
public:
    static constexpr unsigned int kId = 0x7E0010;
    static void* create() { return new NumberList; }
    KTypeId typeId() const override { return KTypeId(kId); }
    KString name() const override { return "numberList"; }
    void copy(const KPxData& source) override {
        numbers = static_cast<const NumberList&>(source).numbers;
    }
    std::vector<int> numbers;
};

KStatus failingInitialize() {
    return KStatus(KStatus::kFailure, "no");
}
KStatus throwingInitialize() {
    throw std::logic_error("initialize broke");
}
void* throwingCreator() {
    throw std::runtime_error("creator broke");
}

class RegistrationTest : public KovaTest {
protected:
    KFnPlugin plugin() { return KFnPlugin(module); }
};

TEST_F(RegistrationTest, NameAndIdMustBeFree) {
    EXPECT_FALSE(
        plugin().registerNode("testScale", KTypeId(0x7E0099), &ScaleNode::create, nullptr));
    EXPECT_FALSE(
        plugin().registerNode("other", KTypeId(ScaleNode::kId), &ScaleNode::create, nullptr));
    EXPECT_FALSE(
        plugin().registerNode("transform", KTypeId(0x7E0099), &ScaleNode::create, nullptr));
    EXPECT_FALSE(plugin().registerNode("bad name", KTypeId(0x7E0099), &ScaleNode::create, nullptr));
    EXPECT_FALSE(plugin().registerNode("noCreator", KTypeId(0x7E0099), nullptr, nullptr));
}

TEST_F(RegistrationTest, FailingOrThrowingInitializeOrCreatorLeavesNothing) {
    EXPECT_FALSE(plugin().registerNode("failing", KTypeId(0x7E0020), &ScaleNode::create,
                                       &failingInitialize));
    KMessageCapture capture;
    EXPECT_FALSE(plugin().registerNode("throwing", KTypeId(0x7E0021), &ScaleNode::create,
                                       &throwingInitialize));
    ASSERT_EQ(capture.errors().size(), 1u);
    EXPECT_NE(capture.errors()[0].str().find("initialize broke"), std::string::npos);
    KStatus status;
    KFnDependencyNode().create("failing", "", &status);
    EXPECT_FALSE(status);
    KFnDependencyNode().create("throwing", "", &status);
    EXPECT_FALSE(status);

    // A throwing creator leaves no node.
    ASSERT_TRUE(plugin().registerNode("brittle", KTypeId(0x7E0022), &throwingCreator, nullptr));
    capture.clear();
    EXPECT_TRUE(KFnDependencyNode().create("brittle", "", &status).isNull());
    EXPECT_FALSE(status);
    EXPECT_EQ(capture.errors().size(), 1u);
    EXPECT_EQ(KScene::current().nodeCount(), 2u);
    EXPECT_TRUE(plugin().deregisterNode(KTypeId(0x7E0022)));
}

TEST_F(RegistrationTest, DeregisterNeedsNoNodesLeft) {
    const KString classification("drawdb/shader/surface/test");
    ASSERT_TRUE(plugin().registerNode("shaderLike", KTypeId(0x7E0023), &ScaleNode::create, nullptr,
                                      KPxNode::kDependNode, &classification));
    EXPECT_EQ(KFnDependencyNode::classification("shaderLike"), classification);
    EXPECT_EQ(KFnDependencyNode::classification("lambert"), "drawdb/shader/surface/lambert");
    const KObject node = createNode("shaderLike");
    EXPECT_FALSE(plugin().deregisterNode(KTypeId(0x7E0023)));
    KScene::reset();
    EXPECT_TRUE(plugin().deregisterNode(KTypeId(0x7E0023)));
    EXPECT_FALSE(plugin().deregisterNode(KTypeId(0x7E0023)));
    EXPECT_FALSE(plugin().deregisterNode(KTypeId(0x4B560002))); // the host's transform
}

TEST_F(RegistrationTest, PluginDataIsCreatedCopiedAndCounted) {
    ASSERT_TRUE(plugin().registerData("numberList", KTypeId(NumberList::kId), &NumberList::create));
    EXPECT_FALSE(plugin().registerData("numberList", KTypeId(0x7E0011), &NumberList::create));

    KFnPluginData fn;
    KStatus status;
    KObject data = fn.create(KTypeId(NumberList::kId), &status);
    ASSERT_TRUE(status);
    EXPECT_EQ(fn.typeId(), KTypeId(NumberList::kId));
    static_cast<NumberList*>(fn.data())->numbers = {1, 2, 3};
    EXPECT_TRUE(KFnPluginData().create(KTypeId(0x7E0FFF), &status).isNull());
    EXPECT_FALSE(status);

    // A typed attribute for the type takes the data; its default is copied into new nodes.
    KFnTypedAttribute typed;
    const KObject attribute = typed.create("list", "ls", KTypeId(NumberList::kId), data);
    ASSERT_FALSE(attribute.isNull());
    EXPECT_TRUE(typed.accepts(KTypeId(NumberList::kId)));
    const KObject node = createNode("testScale");
    ASSERT_TRUE(KFnDependencyNode(node).addAttribute(attribute));
    KDataHandle handle;
    ASSERT_TRUE(plug(node, "list").getValue(handle));
    EXPECT_EQ(handle.type(), KFnData::kInvalid); // plug-in data reports no kind
    EXPECT_EQ(handle.typeId(), KTypeId(NumberList::kId));
    auto* copy = static_cast<NumberList*>(handle.asPluginData());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->numbers, (std::vector<int>{1, 2, 3}));
    EXPECT_NE(handle.data(), data);

    EXPECT_FALSE(plugin().deregisterData(KTypeId(NumberList::kId))); // data exists
    handle = KDataHandle();
    data = KObject();
    typed.setObject(KObject());
    KScene::reset();
    EXPECT_FALSE(plugin().deregisterData(KTypeId(NumberList::kId))); // the default holds one
}

TEST_F(RegistrationTest, UIStringsRunTheRegistrationFunction) {
    static int calls = 0;
    calls = 0;
    KFnPlugin fn(module, "Norvatek", "1.0", "Any");
    ASSERT_TRUE(fn.registerUIStrings(
        [] {
            ++calls;
            return KStatus();
        },
        "tableOne"));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(fn.stringTableCount(), 1u);
    EXPECT_FALSE(fn.registerUIStrings([] { return KStatus(KStatus::kFailure); }, "tableTwo"));
    EXPECT_FALSE(fn.registerUIStrings(nullptr, "tableThree"));
    EXPECT_EQ(fn.stringTableCount(), 1u);
    EXPECT_EQ(fn.vendor(), "Norvatek");
    EXPECT_EQ(KFnPlugin(module, "Unknown", "Unknown").vendor(), "Norvatek");
    KStatus status;
    KFnPlugin(module, "Unknown", "Unknown", "19990000", &status);
    EXPECT_FALSE(status);
}

} // namespace
