// Host calls of output translation made to fail, as the board writes its results back after
// an evaluation: what can't be written is left as it was, silently. What the host output then
// holds is written as text: "no data", the "index" values of the objects in its ZelData
// ("[0,1]"), the frame of a time, or the four values of a scene record.

#include "../plugin/BoardScene.h"
#include "InjectedFailure.h"

#include <kova/KMessageCapture.h>
#include <kova/KTime.h>
#include <string_view>
#include <zelvane/file/SceneInfo.h>
#include <zelvane/simulation/Time.h>

using ZelvaneBoard::PortValues;
using ZelvaneGraph::Executor::PortDirection;

namespace {

enum class Output {
    object,    // "out", one object
    objects,   // "outs", two objects
    noObjects, // "outs", an empty array
    time,      // "later", frame 60
    scene,     // "sceneOut"
};

struct UnwritableOutput : FailureRow {
    Output output;
    Injection injection;
    const char* held; // what the host output holds afterwards
};

class UnwritableOutputs : public BoardScene,
                          public ::testing::WithParamInterface<UnwritableOutput> {
protected:
    void SetUp() override {
        BoardScene::SetUp();
        const Orsel::Type objects = Orsel::Type::arrayOf(Zelvane::objectType());
        switch (GetParam().output) {
        case Output::object:
            ASSERT_TRUE(addPort("out", PortDirection::Output, Zelvane::objectType()));
            setBody([](const PortValues&) {
                return PortValues{
                    {"out", Orsel::Value::fromClass(Zelvane::objectType(), indexed(0))}};
            });
            break;
        case Output::objects:
        case Output::noObjects:
            ASSERT_TRUE(addPort("outs", PortDirection::Output, objects));
            setBody(
                [objects, count = GetParam().output == Output::objects ? 2 : 0](const PortValues&) {
                    auto list = Orsel::make<Orsel::Array<Orsel::Ptr<Orsel::Class>>>();
                    for (int i = 0; i < count; ++i) {
                        list->push_back(indexed(i));
                    }
                    return PortValues{
                        {"outs", Orsel::Value::fromOpaqueArray(objects, std::move(list))}};
                });
            break;
        case Output::time:
            ASSERT_TRUE(addPort("later", PortDirection::Output, Zelvane::Simulation::timeType()));
            setBody([](const PortValues&) {
                const Zelvane::Simulation::Time time{0, 2.5, 60.0, 1.0 / 24.0};
                return PortValues{
                    {"later", Orsel::Value::make(Zelvane::Simulation::timeType(), time)}};
            });
            break;
        case Output::scene:
            ASSERT_TRUE(addPort("sceneOut", PortDirection::Output,
                                Zelvane::File::Project::sceneInfoType()));
            setBody([](const PortValues&) {
                const Zelvane::File::Project::SceneInfo scene{
                    Orsel::String("a.kova"), Orsel::String("/dir"), Orsel::String("/proj"), true};
                return PortValues{
                    {"sceneOut",
                     Orsel::Value::make(Zelvane::File::Project::sceneInfoType(), scene)}};
            });
            break;
        }
    }

    static Orsel::Ptr<Zelvane::Object> indexed(int index) {
        auto object = Zelvane::createObject();
        object->set("index", static_cast<float>(index));
        return Orsel::Ptr<Zelvane::Object>(std::move(object));
    }

    // What the port's host output holds.
    std::string held() const {
        switch (GetParam().output) {
        case Output::object:
            return objectsIn("out");
        case Output::objects:
        case Output::noObjects:
            return objectsIn("outs");
        case Output::time:
            return "frame " + std::to_string(int(plug("board1.later").asTime().value()));
        case Output::scene:
            return plug("board1.sceneOut_scene").asString().str() + "|" +
                   plug("board1.sceneOut_scene_directory").asString().str() + "|" +
                   plug("board1.sceneOut_project_directory").asString().str() + "|" +
                   std::to_string(plug("board1.sceneOut_has_project").asBool());
        }
        return {};
    }
    std::string objectsIn(const char* output) const {
        const ZelData* data = outputObjects(output);
        if (!data) {
            return "no data";
        }
        std::string text = "[";
        for (const Orsel::Ptr<Zelvane::Object>& object : data->objects()) {
            const float* index = object ? object->get<float>("index") : nullptr;
            text += (text.size() > 1 ? "," : "") + (index ? std::to_string(int(*index)) : "?");
        }
        return text + "]";
    }
};

TEST_P(UnwritableOutputs, LeaveWhatCouldNotBeWrittenSilently) {
    const UnwritableOutput& row = GetParam();
    const LiveArrays before;
    const KMessageCapture capture;
    EXPECT_TRUE(row.injection.during([this] { return bool(ZelvaneBoard::evaluate(board_)); }));
    EXPECT_EQ(held(), row.held);
    EXPECT_TRUE(capture.errors().empty());
    // Data that was made and not stored is gone; an output that holds objects keeps their list.
    if (!std::string_view(row.held).starts_with('[')) {
        EXPECT_TRUE(before.unchanged());
    }
}

INSTANTIATE_TEST_SUITE_P(
    EveryOutputWrite, UnwritableOutputs,
    ::testing::ValuesIn(std::vector<UnwritableOutput>{
        {"ObjectHandle", Output::object, {"KDataBlock::outputValue"}, "no data"},
        {"ObjectData", Output::object, {"KFnPluginData::create"}, "no data"},
        {"ObjectStore", Output::object, {"KDataHandle::set"}, "no data"},
        {"EmptyData", Output::noObjects, {"KFnPluginData::create"}, "no data"},
        {"EmptyStore", Output::noObjects, {"KDataHandle::set"}, "no data"},
        {"ObjectsClean", Output::objects, {"KDataBlock::setClean"}, "[0,1]"},
        {"TimeHandle", Output::time, {"KDataBlock::outputValue"}, "frame 0"},
        {"Time", Output::time, {"KDataHandle::setTime"}, "frame 0"},
        {"SceneHandle", Output::scene, {"KDataBlock::outputValue"}, "|||0"},
        {"Scene", Output::scene, {"KDataHandle::setString"}, "|/dir|/proj|1"},
        {"SceneFlag", Output::scene, {"KDataHandle::setBool"}, "a.kova|/dir|/proj|0"}}),
    RowName());

} // namespace
