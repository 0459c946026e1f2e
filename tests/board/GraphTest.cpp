#include "WiredGraph.h"

#include <board/Graph.h>
#include <gtest/gtest.h>
#include <zelvane/Object.h>
#include <zelvane/geometry/GraphTransforms.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/math/Vector.h>

using Zelvane::Math::float3;
using ZelvaneBoard::Graph;
using ZelvaneBoard::PortValues;

namespace {

using ObjectArray = Orsel::Array<Orsel::Ptr<Orsel::Class>>;

Orsel::Ptr<Zelvane::Object> pointsObject(std::initializer_list<float3> points) {
    auto object = Zelvane::createObject();
    object->set(Zelvane::Geometry::sPointPosition, Orsel::make<Orsel::Array<float3>>(points));
    return Orsel::Ptr<Zelvane::Object>(std::move(object));
}

Orsel::Value objectsValue(std::initializer_list<Orsel::Ptr<Zelvane::Object>> objects) {
    auto array = Orsel::make<ObjectArray>();
    for (const auto& object : objects) {
        array->push_back(object);
    }
    return Orsel::Value::fromOpaqueArray(Orsel::Type::arrayOf(Zelvane::objectType()),
                                         std::move(array));
}

Orsel::Value translation(float x, float y, float z) {
    Zelvane::Geometry::Transform::GraphTransforms t{
        {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1}};
    return Orsel::Value::make(Zelvane::Geometry::Transform::graphTransformsType(), t);
}

Orsel::Value singleObject(Orsel::Ptr<Zelvane::Object> object) {
    return Orsel::Value::fromClass(Zelvane::objectType(), std::move(object));
}

} // namespace

TEST(GraphWiring, RefusesUnknownKindsPortsDuplicatesAndDoublyFedInputs) {
    Graph graph;
    EXPECT_FALSE(graph.addOperator("a", "noSuchKind"));
    EXPECT_TRUE(graph.addOperator("a", "passThrough"));
    EXPECT_FALSE(graph.addOperator("a", "mergeObjects"));
    EXPECT_FALSE(graph.connect("in", "a.nothing"));
    EXPECT_FALSE(graph.connect("b.out", "out"));
    EXPECT_TRUE(graph.connect("in", "a.in"));
    EXPECT_FALSE(graph.connect("other", "a.in"));
}

TEST(GraphRun, ChainsOperatorsWhateverOrderTheyWereAdded) {
    Graph graph =
        wiredGraph({{"second", "passThrough"}, {"first", "passThrough"}},
                   {{"in", "first.in"}, {"first.out", "second.in"}, {"second.out", "out"}});
    const auto object = pointsObject({{1, 2, 3}});
    const PortValues out = graph.run({{"in", singleObject(object)}});
    ASSERT_EQ(out.count("out"), 1u);
    EXPECT_EQ(out.at("out").getOrselClass().get(), object.get());

    // A body replaces the operators and wires.
    graph.setBody([](const PortValues& in) { return PortValues{{"echo", in.at("in")}}; });
    const PortValues echoed = graph.run({{"in", translation(1, 2, 3)}});
    EXPECT_EQ(echoed.count("out"), 0u);
    EXPECT_EQ(echoed.count("echo"), 1u);
}

TEST(GraphRun, CycleGivesNoOutputsAndSaysWhy) {
    const Graph graph = wiredGraph({{"a", "passThrough"}, {"b", "passThrough"}},
                                   {{"a.out", "b.in"}, {"b.out", "a.in"}, {"b.out", "out"}});
    std::string error;
    EXPECT_TRUE(graph.run({}, &error).empty());
    EXPECT_NE(error.find("cycle"), std::string::npos);
}

TEST(TransformPoints, MovesCopiesAndLeavesInputsAlone) {
    const Graph graph = wiredGraph(
        {{"move", "transformPoints"}},
        {{"objects", "move.objects"}, {"xf", "move.transform"}, {"move.objects", "out"}});
    const auto first = pointsObject({{1, 2, 3}, {0, 0, 0}});
    auto named = Zelvane::createObject();
    named->set("label", "no points");
    const Orsel::Ptr<Zelvane::Object> plain(std::move(named));

    const PortValues out =
        graph.run({{"objects", objectsValue({first, plain})}, {"xf", translation(10, 0, -1)}});
    const auto moved = out.at("out").getOpaqueArray();
    ASSERT_TRUE(moved);
    ASSERT_EQ(moved->size(), 2u);
    const auto points = Orsel::dynamicPtrCast<Zelvane::Object>((*moved)[0])
                            ->getArray<float3>(Zelvane::Geometry::sPointPosition);
    EXPECT_FLOAT_EQ((*points)[0].x, 11.0f);
    EXPECT_FLOAT_EQ((*points)[0].z, 2.0f);
    EXPECT_FLOAT_EQ((*points)[1].x, 10.0f);
    EXPECT_EQ((*moved)[1].get(), plain.get()); // nothing to move: shared as it is
    EXPECT_FLOAT_EQ((*first->getArray<float3>(Zelvane::Geometry::sPointPosition))[0].x, 1.0f);
}

TEST(MergeObjects, LaterPropertiesReplaceEarlierOnes) {
    const Graph graph = wiredGraph({{"merge", "mergeObjects"}},
                                   {{"objects", "merge.objects"}, {"merge.object", "out"}});
    auto a = Zelvane::createObject();
    a->set("shared", 1.0f);
    a->set("onlyA", 2.0f);
    auto b = Zelvane::createObject();
    b->set("shared", 3.0f);
    const PortValues out =
        graph.run({{"objects", objectsValue({Orsel::Ptr<Zelvane::Object>(std::move(a)),
                                             Orsel::Ptr<Zelvane::Object>(),
                                             Orsel::Ptr<Zelvane::Object>(std::move(b))})}});
    const auto merged = out.at("out").getOrselClass<Zelvane::Object>();
    ASSERT_TRUE(merged);
    EXPECT_EQ(merged->propertyCount(), 2u);
    EXPECT_EQ(*merged->get<float>("shared"), 3.0f);
    EXPECT_EQ(*merged->get<float>("onlyA"), 2.0f);
}
