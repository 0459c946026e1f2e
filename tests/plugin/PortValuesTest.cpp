#include "BoardScene.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <kova/KDoubleArray.h>
#include <kova/KFnAttribute.h>
#include <kova/KFnCompoundAttribute.h>
#include <kova/KFnDoubleArrayData.h>
#include <kova/KFnVectorArrayData.h>
#include <kova/KMatrix.h>
#include <kova/KTime.h>
#include <kova/KVectorArray.h>
#include <zelvane/file/SceneInfo.h>
#include <zelvane/geometry/GraphTransforms.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/simulation/Time.h>

using ZelvaneBoard::PortValues;
using ZelvaneGraph::Executor::PortDirection;

namespace {

const Orsel::Type& objectArrayType() {
    static const Orsel::Type type = Orsel::Type::arrayOf(Zelvane::objectType());
    return type;
}

Orsel::Value timeValue(const Zelvane::Simulation::Time& time) {
    return Orsel::Value::make(Zelvane::Simulation::timeType(), time);
}

} // namespace

class TimePorts : public BoardScene {
protected:
    void SetUp() override {
        BoardScene::SetUp();
        previousUnit_ = KTime::uiUnit();
        KTime::setUIUnit(KTime::k24FPS);
        ASSERT_TRUE(addPort("now", PortDirection::Input, Zelvane::Simulation::timeType()));
        ASSERT_TRUE(addPort("later", PortDirection::Output, Zelvane::Simulation::timeType()));
        plug("time1.outTime").setTime(KTime(48.0, KTime::k24FPS));
    }
    void TearDown() override {
        KTime::setUIUnit(previousUnit_);
        BoardScene::TearDown();
    }
    KTime::Unit previousUnit_ = KTime::kInvalid;
};

// A time input follows the scene's time.
TEST_F(TimePorts, FrameFortyEightAtTwentyFourUnitsIsTwoSeconds) {
    EXPECT_EQ(sourcesOf(plug("board1.now")), std::vector<std::string>{"time1.outTime"});
    watch("now");
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    ASSERT_TRUE(seen_.get<Zelvane::Simulation::Time>());
    const Zelvane::Simulation::Time seen = *seen_.get<Zelvane::Simulation::Time>();
    EXPECT_DOUBLE_EQ(seen.seconds, 2.0);
    EXPECT_DOUBLE_EQ(seen.frame, 48.0);
    EXPECT_DOUBLE_EQ(seen.frameLength, 1.0 / 24.0);
    EXPECT_EQ(seen.ticks, 2 * KTime::ticksPerSecond());
}

TEST_F(TimePorts, OutputFollowsFrameThenSecondsThenTicks) {
    plug("board1.later").setTime(KTime(10.0, KTime::k24FPS));
    Zelvane::Simulation::Time result{KTime::ticksPerSecond() * 10 / 24, 10.0 / 24, 12.0, 1.0 / 24};
    setBody([&](const PortValues&) { return PortValues{{"later", timeValue(result)}}; });
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    EXPECT_DOUBLE_EQ(plug("board1.later").asTime().value(), 12.0); // frame wins

    result = {KTime::ticksPerSecond() * 3, 1.0, 12.0, 1.0 / 24};
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    EXPECT_DOUBLE_EQ(plug("board1.later").asTime().value(), 24.0); // then seconds

    result = {KTime::ticksPerSecond() * 2, 1.0, 24.0, 1.0 / 24};
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    EXPECT_DOUBLE_EQ(plug("board1.later").asTime().value(), 48.0); // ticks only

    // An unchanged result leaves the attribute untouched, to the bit.
    const KTime before(7.0 / 3.0, KTime::k24FPS);
    plug("board1.later").setTime(before);
    const double seconds = before.as(KTime::kSeconds);
    result = {static_cast<std::int64_t>(static_cast<double>(KTime::ticksPerSecond()) * seconds),
              seconds, before.value(), 1.0 / 24};
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    const KTime after = plug("board1.later").asTime();
    EXPECT_EQ(after.unit(), before.unit());
    EXPECT_EQ(std::bit_cast<std::uint64_t>(after.value()),
              std::bit_cast<std::uint64_t>(before.value()));
}

TEST_F(BoardScene, SceneInfoTravelsBothWaysAndTransformsComeIn) {
    using Zelvane::Geometry::Transform::GraphTransforms;
    ASSERT_TRUE(addPort("scene", PortDirection::Input, Zelvane::File::Project::sceneInfoType()));
    ASSERT_TRUE(
        addPort("sceneOut", PortDirection::Output, Zelvane::File::Project::sceneInfoType()));
    ASSERT_TRUE(
        addPort("xf", PortDirection::Input, Zelvane::Geometry::Transform::graphTransformsType()));
    KFnCompoundAttribute fnScene(KFnDependencyNode(board_).attribute("scene"));
    ASSERT_EQ(fnScene.numChildren(), 4u);
    const char* names[] = {"scene_scene", "scene_scene_directory", "scene_project_directory",
                           "scene_has_project"};
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_EQ(KFnAttribute(fnScene.child(i)).name(), KString(names[i]));
    }
    EXPECT_FALSE(plug("board1.scene_has_project").asBool());
    plug("board1.scene_scene").setString("shot.kva");
    plug("board1.scene_scene_directory").setString("/shots");
    plug("board1.scene_project_directory").setString("/proj");
    plug("board1.scene_has_project").setBool(true);
    KMatrix moved;
    moved(3, 0) = 5.0;
    moved(1, 1) = 2.0;
    KPlug(plug("board1.xf").child(0)).setMatrix(moved);

    GraphTransforms seen{};
    setBody([&](const PortValues& in) {
        seen = *in.at("xf").get<GraphTransforms>();
        return PortValues{{"sceneOut", in.at("scene")}};
    });
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    EXPECT_FLOAT_EQ(seen.matrix[12], 5.0f);
    EXPECT_FLOAT_EQ(seen.matrix[5], 2.0f);
    EXPECT_FLOAT_EQ(seen.matrix[15], 1.0f);
    EXPECT_EQ(plug("board1.sceneOut_scene").asString(), KString("shot.kva"));
    EXPECT_EQ(plug("board1.sceneOut_scene_directory").asString(), KString("/shots"));
    EXPECT_EQ(plug("board1.sceneOut_project_directory").asString(), KString("/proj"));
    EXPECT_TRUE(plug("board1.sceneOut_has_project").asBool());
}

TEST_F(BoardScene, ArraysBecomeNamedFloatPropertiesAndComeBackThroughZelData) {
    ASSERT_TRUE(addPort("weights", PortDirection::Input, Zelvane::objectType()));
    ASSERT_TRUE(addPort("dirs", PortDirection::Input, Zelvane::objectType()));
    ASSERT_TRUE(addPort("all", PortDirection::Output, objectArrayType()));
    KFnDoubleArrayData fnDoubles;
    connect(dataSource("src", "w", KFnData::kDoubleArray,
                       fnDoubles.create(KDoubleArray({0.5, 1e300, -2.0}))),
            plug("board1.weights"));
    KFnVectorArrayData fnVectors;
    connect(dataSource("src2", "d", KFnData::kVectorArray,
                       fnVectors.create(KVectorArray({KVector(1, 2, 3)}))),
            plug("board1.dirs"));
    setBody([&](const PortValues& in) {
        auto both = Orsel::make<Orsel::Array<Orsel::Ptr<Orsel::Class>>>();
        both->push_back(in.at("weights").getOrselClass());
        both->push_back(in.at("dirs").getOrselClass());
        return PortValues{
            {"all", Orsel::Value::fromOpaqueArray(objectArrayType(), std::move(both))}};
    });
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));

    const ZelData* out = outputObjects("all");
    ASSERT_NE(out, nullptr);
    ASSERT_EQ(out->size(), 2u);
    const auto weights = out->objects()[0]->getArray<float>("w");
    ASSERT_TRUE(weights);
    ASSERT_EQ(weights->size(), 3u);
    EXPECT_FLOAT_EQ((*weights)[0], 0.5f);
    EXPECT_TRUE(std::isinf((*weights)[1]) && (*weights)[1] > 0);
    EXPECT_FLOAT_EQ((*weights)[2], -2.0f);
    const auto dirs = out->objects()[1]->getArray<Zelvane::Math::float3>("d");
    ASSERT_TRUE(dirs);
    ASSERT_EQ(dirs->size(), 1u);
    EXPECT_FLOAT_EQ((*dirs)[0].z, 3.0f);
}

// Unconnected, the port gives an empty object; fed by a ZelData of three, a copy of the first.
TEST_F(BoardScene, SinglePortGivesAnEmptyObjectOrACopyOfTheFirstFed) {
    watchInput("in", Zelvane::objectType());
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    ASSERT_TRUE(seenObject());
    EXPECT_EQ(seenObject()->propertyCount(), 0u);

    KFnPluginData fnData;
    const KObject data = fnData.create(ZelData::id);
    auto* held = dynamic_cast<ZelData*>(fnData.data());
    for (const char* name : {"a", "b", "c"}) {
        auto object = Zelvane::createObject();
        object->set(name, 1.0f);
        held->addZelvaneObject(Orsel::Ptr<Zelvane::Object>(std::move(object)));
    }
    connect(dataSource("src", "objs", ZelData::id, data), plug("board1.in"));
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    const auto seen = seenObject();
    ASSERT_TRUE(seen);
    EXPECT_TRUE(seen->has("a"));
    EXPECT_FALSE(seen->has("b"));
    EXPECT_NE(seen.get(), held->objects()[0].get()); // a copy, the host's one stays its own
    EXPECT_EQ(held->shared(), 1);
}

// An empty array and an array of null entries give an empty ZelData; no single result gives
// one empty object.
TEST_F(BoardScene, EmptyOrNullResultsGiveEmptyZelData) {
    ASSERT_TRUE(addPort("empty", PortDirection::Output, objectArrayType()));
    ASSERT_TRUE(addPort("nulls", PortDirection::Output, objectArrayType()));
    ASSERT_TRUE(addPort("single", PortDirection::Output, Zelvane::objectType()));
    setBody([](const PortValues&) {
        auto nulls = Orsel::make<Orsel::Array<Orsel::Ptr<Orsel::Class>>>();
        nulls->push_back(Orsel::Ptr<Orsel::Class>());
        nulls->push_back(Orsel::Ptr<Orsel::Class>());
        return PortValues{
            {"empty",
             Orsel::Value::fromOpaqueArray(objectArrayType(),
                                           Orsel::make<Orsel::Array<Orsel::Ptr<Orsel::Class>>>())},
            {"nulls", Orsel::Value::fromOpaqueArray(objectArrayType(), std::move(nulls))}};
    });
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    for (const char* output : {"empty", "nulls"}) {
        ASSERT_NE(outputObjects(output), nullptr) << output;
        EXPECT_TRUE(outputObjects(output)->empty()) << output;
    }
    const ZelData* single = outputObjects("single");
    ASSERT_NE(single, nullptr);
    ASSERT_EQ(single->size(), 1u);
    EXPECT_EQ(single->objects()[0]->propertyCount(), 0u);
}

// Re-evaluated with fewer objects, the output holds only the new ones; a failing set stops
// adding further objects.
TEST_F(BoardScene, ObjectArrayOutputHoldsTheObjectsOfTheLastEvaluation) {
    ASSERT_TRUE(addPort("out", PortDirection::Output, objectArrayType()));
    int count = 3;
    setBody([&count](const PortValues&) {
        auto objects = Orsel::make<Orsel::Array<Orsel::Ptr<Orsel::Class>>>();
        for (int i = 0; i < count; ++i) {
            auto object = Zelvane::createObject();
            object->set("index", static_cast<float>(i));
            objects->push_back(Orsel::Ptr<Zelvane::Object>(std::move(object)));
        }
        return PortValues{
            {"out", Orsel::Value::fromOpaqueArray(objectArrayType(), std::move(objects))}};
    });
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    ASSERT_EQ(outputObjects("out")->size(), 3u);
    count = 1;
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    ASSERT_EQ(outputObjects("out")->size(), 1u);
    EXPECT_EQ(*outputObjects("out")->objects()[0]->get<float>("index"), 0.0f);

    count = 5;
    KFailureInjection::failAfter("KDataHandle::set", 2);
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    KFailureInjection::reset();
    ASSERT_NE(outputObjects("out"), nullptr);
    // The third object went into the data before its set failed; the last two never did.
    EXPECT_EQ(outputObjects("out")->size(), 3u);
}

TEST_F(BoardScene, ReadingAnOutputEvaluatesTheGraphAndItsShapeShowsTheObjects) {
    ASSERT_TRUE(addPort("weights", PortDirection::Input, Zelvane::objectType()));
    ASSERT_TRUE(addPort("out", PortDirection::Output, Zelvane::objectType()));
    auto& graph = ZelvaneBoard::BoardNode::fromNode(board_)->graph();
    ASSERT_TRUE(graph.addOperator("pass", "passThrough"));
    ASSERT_TRUE(graph.connect("weights", "pass.in"));
    ASSERT_TRUE(graph.connect("pass.out", "out"));
    KFnDoubleArrayData fnDoubles;
    KPlug source =
        dataSource("src", "w", KFnData::kDoubleArray, fnDoubles.create(KDoubleArray({4.0})));
    connect(source, plug("board1.weights"));

    const auto firstWeight = [&] {
        const ZelData* out = outputObjects("out");
        EXPECT_NE(out, nullptr);
        EXPECT_EQ(out ? out->size() : 0u, 1u);
        return out && out->size() == 1 ? (*out->objects()[0]->getArray<float>("w"))[0] : -1.0f;
    };
    EXPECT_FLOAT_EQ(firstWeight(), 4.0f); // no explicit evaluation: the read computes
    source.setKObject(fnDoubles.create(KDoubleArray({6.5})));
    EXPECT_FLOAT_EQ(firstWeight(), 6.5f); // a changed input makes the output stale

    EXPECT_EQ(plug("zelShapeShape1.displayType").asInt(), static_cast<int>(KFnData::kPlugin));
    EXPECT_EQ(plug("zelShapeShape1.displayName").asString(), KString(ZelData::kTypeName));
}

TEST_F(BoardScene, PortContextsOwnReaderIsUsedInsteadOfHostData) {
    ASSERT_TRUE(addPort("in", PortDirection::Input, Zelvane::objectType()));
    KFnPluginData fnData;
    const KObject data = fnData.create(ZelData::id);
    auto* held = dynamic_cast<ZelData*>(fnData.data());
    held->addZelvaneObject(Orsel::Ptr<Zelvane::Object>(Zelvane::createObject()));
    connect(dataSource("src", "objs", ZelData::id, data), plug("board1.in"));

    auto cached = Zelvane::createObject();
    cached->set("cached", 1.0f);
    const Orsel::Value cachedValue = Orsel::Value::fromClass(
        Zelvane::objectType(), Orsel::Ptr<Zelvane::Object>(std::move(cached)));
    KPlug port = plug("board1.in");
    Orsel::Value destination;
    int calls = 0;
    ZelvaneGraph::Executor::HostPortContext context{&port, nullptr, nullptr, &destination,
                                                    [&](Orsel::Value& value) {
                                                        ++calls;
                                                        value = cachedValue;
                                                    }};
    translation().translateInputValue(Zelvane::objectType(), destination, context);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(destination.getOrselClass().get(), cachedValue.getOrselClass().get());
    EXPECT_EQ(held->shared(), 0); // the source was never read
}
