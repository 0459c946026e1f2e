#include "PluginFixture.h"

#include <orsel/Type.h>

#include <kova/KFnDependencyNode.h>

#include <zelvane/Object.h>

void BoundPlugin::SetUp() {
    HostWithBoard::SetUp();
    ASSERT_TRUE(ZelvaneBoard::BoardExecutor::bind(PLUGIN_PATH));
    board_ = makeBoard();
    ASSERT_FALSE(board_.isNull());
}

ZelvaneGraph::Executor::TypeTranslation& BoundPlugin::translation() const {
    auto* bound = ZelvaneBoard::BoardExecutor::translationFor(Zelvane::objectType());
    EXPECT_NE(bound, nullptr);
    return *bound;
}

KObject BoundPlugin::makeBoard(const char* name) const {
    KFnDependencyNode fnNode;
    return fnNode.create(ZelvaneBoard::BoardNode::kTypeName, name);
}
