#pragma once

#include <atomic>
#include <gtest/gtest.h>
#include <kova/KDataBlock.h>
#include <kova/KFailureInjection.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnNumericAttribute.h>
#include <kova/KFnPlugin.h>
#include <kova/KPluginLoader.h>
#include <kova/KPxNode.h>
#include <kova/KScene.h>
#include <kova/KStringArray.h>
#include <stdexcept>
#include <string>
#include <vector>

// A node type for evaluation tests, "testScale": output = input * 2, with a mode that makes
// its compute throw (1), fail (2) or answer kUnknownParameter (3). Each node counts its
// computes of "output".
class ScaleNode : public KPxNode {
public:
    static constexpr unsigned int kId = 0x7E0001;
    static inline KObject input, mode, output;

    static void* create() { return new ScaleNode; }
    static KStatus initialize() {
        KFnNumericAttribute numeric;
        input = numeric.create("input", "in", KFnNumericData::kDouble, 0.0);
        mode = numeric.create("mode", "md", KFnNumericData::kInt, 0.0);
        output = numeric.create("output", "out", KFnNumericData::kDouble, 0.0);
        numeric.setWritable(false);
        for (const KObject& a : {input, mode, output}) {
            if (KStatus status = addAttribute(a); !status) {
                return status;
            }
        }
        attributeAffects(input, output);
        return attributeAffects(mode, output);
    }

    KStatus compute(const KPlug& plug, KDataBlock& block) override {
        if (plug != output) {
            return KStatus(KStatus::kUnknownParameter);
        }
        ++computes;
        switch (block.inputValue(mode).asInt()) {
        case 1:
            throw std::runtime_error("scale exploded");
        case 2:
            return KStatus(KStatus::kFailure, "scale refused");
        case 3:
            return KStatus(KStatus::kUnknownParameter);
        default:
            break;
        }
        KStatus status;
        const double in = block.inputValue(input, &status).asDouble();
        if (!status) {
            return status;
        }
        return block.outputValue(output).setDouble(in * 2.0);
    }

    std::atomic<int> computes{0};
};

// Resets the scene and failure injection, and registers the test node types from a module
// that is unloaded again afterwards.
class KovaTest : public ::testing::Test {
protected:
    void SetUp() override {
        KFailureInjection::reset();
        KScene::reset();
        module = KPluginLoader::registerModule("kovaTests");
        ASSERT_FALSE(module.isNull());
        KFnPlugin plugin(module, "Tests", "1.0");
        ASSERT_TRUE(plugin.registerNode("testScale", KTypeId(ScaleNode::kId), &ScaleNode::create,
                                        &ScaleNode::initialize));
    }

    void TearDown() override {
        KFailureInjection::reset();
        KScene::reset();
        EXPECT_TRUE(KPluginLoader::unload(module));
    }

    static KObject createNode(const char* type, const char* name = "") {
        KFnDependencyNode fn;
        KStatus status;
        KObject node = fn.create(type, name, &status);
        EXPECT_TRUE(status) << status.errorString();
        return node;
    }

    static KPlug plug(const KObject& node, const char* attribute) {
        return KFnDependencyNode(node).findPlug(attribute, false);
    }

    static ScaleNode& scaleNode(const KObject& node) {
        return static_cast<ScaleNode&>(*KFnDependencyNode(node).userNode());
    }

    KObject module;
};

using Words = std::vector<std::string>;

inline Words wordsOf(const KStringArray& strings) {
    Words words;
    for (const KString& s : strings) {
        words.push_back(s.str());
    }
    return words;
}
