#pragma once

#include <board/BoardExecutor.h>
#include <board/BoardNode.h>
#include <gtest/gtest.h>
#include <kova/KFailureInjection.h>
#include <kova/KMessageCapture.h>
#include <kova/KObject.h>
#include <kova/KPluginLoader.h>
#include <kova/KScene.h>
#include <zelvane/executor/TranslationLibrary.h>

// A fresh scene with the board's node and data types registered, as a host process that
// carries graphs has them. Tests bind the plug-in through the executor's loader themselves.
class HostWithBoard : public ::testing::Test {
protected:
    void SetUp() override {
        KScene::reset();
        KFailureInjection::reset();
        boardModule_ = KPluginLoader::registerModule("boardTests");
        ASSERT_FALSE(boardModule_.isNull());
        ASSERT_TRUE(ZelvaneBoard::registerBoardTypes(boardModule_));
    }

    void TearDown() override {
        KFailureInjection::reset();
        KScene::reset(); // node types can't go while nodes of them exist
        ZelvaneBoard::BoardExecutor::unbindAll();
        ZelvaneBoard::deregisterBoardTypes(boardModule_);
        KPluginLoader::unload(boardModule_);
    }

    KObject boardModule_;
};

// The plug-in bound to the host through the board executor, and one board node.
class BoundPlugin : public HostWithBoard {
protected:
    void SetUp() override;

    ZelvaneGraph::Executor::TypeTranslation& translation() const;
    KObject makeBoard(const char* name = "board1") const;

    KObject board_;
};
