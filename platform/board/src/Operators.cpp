#include "Operators.h"

#include "StrandTubes.h"

#include <zelvane/Object.h>
#include <zelvane/geometry/GraphTransforms.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/math/Vector.h>

namespace ZelvaneBoard::detail {
namespace {

using ObjectPtr = Orsel::Ptr<Zelvane::Object>;
using ObjectArray = Orsel::Array<Orsel::Ptr<Orsel::Class>>;

const Orsel::Value* find(const PortValues& values, const char* name) {
    auto it = values.find(name);
    return it == values.end() ? nullptr : &it->second;
}

PortValues passThrough(const PortValues& inputs) {
    const Orsel::Value* in = find(inputs, "in");
    return in ? PortValues{{"out", *in}} : PortValues{};
}

PortValues mergeObjects(const PortValues& inputs) {
    Orsel::MutablePtr<Zelvane::Object> merged = Zelvane::createObject();
    for (const ObjectPtr& object : objectsOf(find(inputs, "objects"))) {
        object->forEachProperty(
            [&](const Orsel::String& name, const Zelvane::PropertyValue& value) {
                merged->set(name, value);
            });
    }
    return {{"object", Orsel::Value::fromClass(Zelvane::objectType(), std::move(merged))}};
}

ObjectPtr transformed(const ObjectPtr& object, const float (&m)[16]) {
    using Zelvane::Math::float3;
    const auto points = object->getArray<float3>(Zelvane::Geometry::sPointPosition);
    if (!points) {
        return object;
    }
    auto moved = Orsel::make<Orsel::Array<float3>>(points->size());
    for (std::size_t i = 0; i < points->size(); ++i) {
        const float3 p = (*points)[i];
        (*moved)[i] = {p.x * m[0] + p.y * m[4] + p.z * m[8] + m[12],
                       p.x * m[1] + p.y * m[5] + p.z * m[9] + m[13],
                       p.x * m[2] + p.y * m[6] + p.z * m[10] + m[14]};
    }
    auto copy = Orsel::make<Zelvane::Object>(*object);
    copy->set(Zelvane::Geometry::sPointPosition, std::move(moved));
    return ObjectPtr(std::move(copy));
}

PortValues transformPoints(const PortValues& inputs) {
    const Orsel::Value* objects = find(inputs, "objects");
    const Orsel::Value* transform = find(inputs, "transform");
    const auto* matrix =
        transform ? transform->get<Zelvane::Geometry::Transform::GraphTransforms>() : nullptr;
    if (!objects || !matrix) {
        return objects ? PortValues{{"objects", *objects}} : PortValues{};
    }
    if (!objects->getOpaqueArray()) {
        auto object = objects->getOrselClass<Zelvane::Object>();
        return {{"objects",
                 Orsel::Value::fromClass(objects->type(),
                                         object ? transformed(object, matrix->matrix) : object)}};
    }
    auto result = Orsel::make<ObjectArray>();
    for (const ObjectPtr& object : objectsOf(objects)) {
        result->push_back(transformed(object, matrix->matrix));
    }
    return {{"objects", Orsel::Value::fromOpaqueArray(objects->type(), std::move(result))}};
}

const std::map<std::string, OperatorKind> gKinds = {
    {"passThrough", {{"in"}, {"out"}, &passThrough}},
    {"mergeObjects", {{"objects"}, {"object"}, &mergeObjects}},
    {"transformPoints", {{"objects", "transform"}, {"objects"}, &transformPoints}},
    {"strandsToTubes", {{"strands", "radius", "sides"}, {"meshes"}, &strandsToTubes}},
};

} // namespace

std::vector<Orsel::Ptr<Zelvane::Object>> objectsOf(const Orsel::Value* value) {
    std::vector<ObjectPtr> objects;
    if (!value) {
        return objects;
    }
    if (auto array = value->getOpaqueArray()) {
        for (const auto& entry : *array) {
            if (auto object = Orsel::dynamicPtrCast<Zelvane::Object>(entry)) {
                objects.push_back(std::move(object));
            }
        }
    } else if (auto object = value->getOrselClass<Zelvane::Object>()) {
        objects.push_back(std::move(object));
    }
    return objects;
}

const OperatorKind* findOperatorKind(const std::string& name) {
    auto it = gKinds.find(name);
    return it == gKinds.end() ? nullptr : &it->second;
}

} // namespace ZelvaneBoard::detail
