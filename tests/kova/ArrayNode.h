#pragma once

#include "KovaTestSupport.h"

#include <kova/KArrayDataBuilder.h>
#include <kova/KFnCompoundAttribute.h>

// A node type for array and compound tests, "testArrays": "sum" adds the elements of the
// array "values" and the two children of the compound "pair"; the array output "copies" gets
// one element per non-zero element of "values" (same logical index, doubled), set from a
// fresh array data builder so that surplus elements go.
class ArrayNode : public KPxNode {
public:
    static constexpr unsigned int kId = 0x7E0002;
    static inline KObject values, pair, first, second, sum, copies;

    static void* create() { return new ArrayNode; }
    static KStatus initialize() {
        KFnNumericAttribute numeric;
        values = numeric.create("values", "vals", KFnNumericData::kDouble, 0.0);
        numeric.setArray(true);
        first = numeric.create("first", "fst", KFnNumericData::kDouble, 1.0);
        second = numeric.create("second", "snd", KFnNumericData::kDouble, 2.0);
        KFnCompoundAttribute compound;
        pair = compound.create("pair", "pr");
        compound.addChild(first);
        compound.addChild(second);
        sum = numeric.create("sum", "sm", KFnNumericData::kDouble, 0.0);
        numeric.setWritable(false);
        copies = numeric.create("copies", "cps", KFnNumericData::kDouble, 0.0);
        numeric.setArray(true);
        numeric.setWritable(false);
        numeric.setUsesArrayDataBuilder(true);
        for (const KObject& a : {values, pair, sum, copies}) {
            if (KStatus status = addAttribute(a); !status) {
                return status;
            }
        }
        attributeAffects(values, sum);
        attributeAffects(pair, sum);
        return attributeAffects(values, copies);
    }

    KStatus compute(const KPlug& plug, KDataBlock& block) override {
        if (plug == sum) {
            KArrayDataHandle in = block.inputArrayValue(values);
            double total = 0.0;
            for (unsigned int i = 0; i < in.elementCount(); ++i, in.next()) {
                total += in.inputValue().asDouble();
            }
            const KDataHandle p = block.inputValue(pair);
            total += p.child(first).asDouble() + p.child(1).asDouble();
            return block.outputValue(sum).setDouble(total);
        }
        if (plug == copies) {
            KArrayDataHandle in = block.inputArrayValue(values);
            KArrayDataHandle out = block.outputArrayValue(copies);
            KArrayDataBuilder builder = out.builder();
            const unsigned int previous = builder.elementCount();
            KArrayDataBuilder fresh(copies);
            for (unsigned int i = 0; i < in.elementCount(); ++i, in.next()) {
                if (const double value = in.inputValue().asDouble(); value != 0.0) {
                    fresh.addElement(in.elementIndex()).setDouble(value * 2.0);
                }
            }
            lastPreviousCount = previous;
            return out.set(fresh);
        }
        return KStatus(KStatus::kUnknownParameter);
    }

    unsigned int lastPreviousCount = 0;
};

// Registers "testArrays" on top of what KovaTest sets up.
class ArrayNodeTest : public KovaTest {
protected:
    void SetUp() override {
        KovaTest::SetUp();
        ASSERT_TRUE(KFnPlugin(module).registerNode("testArrays", KTypeId(ArrayNode::kId),
                                                   &ArrayNode::create, &ArrayNode::initialize));
    }
};
