#include "GraphObjectBuilder.h"

#include <cstdint>
#include <limits>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <zelvane/Geometry.h>
#include <zelvane/file/SceneInfo.h>
#include <zelvane/geometry/GraphTransforms.h>
#include <zelvane/simulation/Time.h>

namespace ZelFuzz {
namespace {

namespace Geo = Zelvane::Geometry;
using Zelvane::Math::float2;
using Zelvane::Math::float3;
using Zelvane::Math::float4;
using Zelvane::Math::float4x4;
using ObjectPtr = Orsel::MutablePtr<Zelvane::Object>;

constexpr std::string_view kNames[] = {"P",
                                       "faceOffset",
                                       "faceVertexPoint",
                                       "pointCount",
                                       "faceCount",
                                       "faceVertexCount",
                                       "strandCount",
                                       "N",
                                       "faceVertexN",
                                       "faceVertexN_index",
                                       "uv",
                                       "uv1",
                                       "uv7",
                                       "uv_index",
                                       "uv1_index",
                                       "color",
                                       "color_index",
                                       "colorSet1",
                                       "pointTag(top)",
                                       "faceTag(side)",
                                       "pointTag(",
                                       "faceTag()",
                                       "renderSettings",
                                       "target",
                                       "data",
                                       "indices",
                                       "dccName",
                                       "default",
                                       "prototypeName",
                                       "strandOffset"};

constexpr std::string_view kTargets[] = {
    "point", "face", "faceVertex", "strand", "uv_index", "faceVertexN_index", "color_index", ""};

// Host set names: UV set numbering parses what follows "map".
constexpr std::string_view kDccNames[] = {
    "map1",  "map7", "map", "mapx",      "map2147483647", "map-3", "map99999999999",
    "map 2", "uv",   "uv2", "colorSet1", "top",           "",      "pointTag(x)"};

constexpr std::string_view kExpressions[] = {
    "*", "", "color", "color*, ^colorSet1", "^*", "*Tag(*)", "pointTag(top)", "a ^", "\\", "?*"};

template <class T>
struct IsArrayPtr : std::false_type {};
template <class T>
struct IsArrayPtr<Orsel::Ptr<Orsel::Array<T>>> : std::true_type {
    using Element = T;
};

} // namespace

std::uint64_t GraphObjectBuilder::count() {
    switch (input_.ConsumeIntegralInRange(0, 7)) {
    case 0:
        return input_.ConsumeIntegral<std::uint64_t>();
    case 1:
        return std::uint64_t{1} << input_.ConsumeIntegralInRange(28, 63);
    default:
        return input_.ConsumeIntegralInRange<std::uint64_t>(0, 40);
    }
}

// Mostly `count`, now and then one off or empty.
std::size_t GraphObjectBuilder::sizeNear(std::size_t count) {
    switch (input_.ConsumeIntegralInRange(0, 9)) {
    case 0:
        return count + 1;
    case 1:
        return count > 0 ? count - 1 : 0;
    case 2:
        return 0;
    default:
        return count;
    }
}

Orsel::String GraphObjectBuilder::text() {
    return Orsel::String(input_.ConsumeRandomLengthString(24));
}

Orsel::String GraphObjectBuilder::name() {
    return input_.ConsumeIntegralInRange(0, 4) > 0 ? Orsel::String(input_.PickValueInArray(kNames))
                                                   : text();
}

Orsel::String GraphObjectBuilder::expression() {
    return input_.ConsumeBool() ? Orsel::String(input_.PickValueInArray(kExpressions)) : text();
}

template <class T>
T GraphObjectBuilder::element() {
    if constexpr (std::is_same_v<T, bool>) {
        return input_.ConsumeBool();
    } else if constexpr (std::is_integral_v<T>) {
        return input_.ConsumeBool() ? input_.ConsumeIntegralInRange<T>(0, 40)
                                    : input_.ConsumeIntegral<T>();
    } else if constexpr (std::is_floating_point_v<T>) {
        switch (input_.ConsumeIntegralInRange(0, 9)) {
        case 0:
            return std::numeric_limits<T>::quiet_NaN();
        case 1:
            return std::numeric_limits<T>::infinity();
        case 2:
            return input_.ConsumeFloatingPoint<T>();
        default:
            return static_cast<T>(input_.ConsumeIntegralInRange(-8, 8)) / 2;
        }
    } else if constexpr (std::is_same_v<T, float2>) {
        return {element<float>(), element<float>()};
    } else if constexpr (std::is_same_v<T, float3>) {
        return {element<float>(), element<float>(), element<float>()};
    } else if constexpr (std::is_same_v<T, float4>) {
        return {element<float>(), element<float>(), element<float>(), element<float>()};
    } else if constexpr (std::is_same_v<T, float4x4>) {
        float values[16];
        for (float& value : values) {
            value = element<float>();
        }
        return float4x4::fromRowMajor(values);
    } else {
        static_assert(std::is_same_v<T, Orsel::String>);
        return name();
    }
}

template <class T>
Orsel::Ptr<Orsel::Array<T>> GraphObjectBuilder::array(std::size_t size) {
    auto array = Orsel::make<Orsel::Array<T>>();
    array->reserve(size);
    for (std::size_t i = 0; i < size; ++i) {
        if constexpr (std::is_same_v<T, Orsel::Ptr<Zelvane::Object>>) {
            array->push_back(input_.ConsumeBool() ? Orsel::Ptr<Zelvane::Object>(object(0))
                                                  : Orsel::Ptr<Zelvane::Object>());
        } else {
            array->push_back(element<T>());
        }
    }
    return Orsel::Ptr<Orsel::Array<T>>(std::move(array));
}

template <class T>
T GraphObjectBuilder::propertyOfType(int depth) {
    if constexpr (std::is_same_v<T, Orsel::Ptr<Zelvane::Object>>) {
        if (depth <= 0 || input_.ConsumeIntegralInRange(0, 9) == 0) {
            return T();
        }
        return input_.ConsumeBool() ? T(geoProperty(depth - 1)) : T(object(depth - 1));
    } else if constexpr (IsArrayPtr<T>::value) {
        if (input_.ConsumeIntegralInRange(0, 19) == 0) {
            return T();
        }
        const std::size_t limit =
            std::is_same_v<typename IsArrayPtr<T>::Element, Orsel::Ptr<Zelvane::Object>> ? 3 : 48;
        return array<typename IsArrayPtr<T>::Element>(
            input_.ConsumeIntegralInRange<std::size_t>(0, depth > 0 ? limit : 0));
    } else {
        return element<T>();
    }
}

Zelvane::PropertyValue GraphObjectBuilder::property(int depth) {
    const std::size_t index = input_.ConsumeIntegralInRange<std::size_t>(
        0, std::variant_size_v<Zelvane::PropertyValue> - 1);
    Zelvane::PropertyValue value;
    [&]<std::size_t... I>(std::index_sequence<I...>) {
        ((index == I
              ? void(value = propertyOfType<std::variant_alternative_t<I, Zelvane::PropertyValue>>(
                         depth))
              : void()),
         ...);
    }
    (std::make_index_sequence<std::variant_size_v<Zelvane::PropertyValue>>());
    return value;
}

// An array of one of the element types geometry properties hold.
Zelvane::PropertyValue GraphObjectBuilder::anyArray(std::size_t size) {
    switch (input_.ConsumeIntegralInRange(0, 7)) {
    case 0:
        return array<bool>(size);
    case 1:
        return array<std::uint32_t>(size);
    case 2:
        return array<std::int32_t>(size);
    case 3:
        return array<float>(size);
    case 4:
        return array<double>(size);
    case 5:
        return array<float2>(size);
    case 6:
        return array<float4>(size);
    default:
        return array<float3>(size);
    }
}

ObjectPtr GraphObjectBuilder::geoProperty(int depth) {
    ObjectPtr property = Zelvane::createObject();
    if (input_.ConsumeIntegralInRange(0, 9) > 0) {
        property->set(Geo::sTarget, input_.ConsumeIntegralInRange(0, 5) > 0
                                        ? Orsel::String(input_.PickValueInArray(kTargets))
                                        : text());
    }
    const std::size_t size = input_.ConsumeIntegralInRange<std::size_t>(0, 48);
    if (input_.ConsumeIntegralInRange(0, 9) > 0) {
        property->set(Geo::sData, anyArray(size));
    }
    if (input_.ConsumeBool()) {
        property->set(Geo::sIndices, array<std::uint32_t>(size));
    }
    if (input_.ConsumeBool()) {
        property->set(Geo::sDccName, Orsel::String(input_.PickValueInArray(kDccNames)));
    }
    while (input_.remaining_bytes() > 0 && input_.ConsumeIntegralInRange(0, 3) == 0) {
        property->set(name(), this->property(depth));
    }
    return property;
}

// UV sets, normals, colours and tags over a mesh of the given counts.
void GraphObjectBuilder::addChannels(Zelvane::Object& mesh, std::uint32_t points,
                                     std::uint32_t faces, std::uint32_t faceVertices) {
    const auto indexed = [&](const Orsel::String& name, Zelvane::PropertyValue values,
                             std::uint32_t valueCount) {
        ObjectPtr range = Zelvane::createObject();
        auto indices = Orsel::make<Orsel::Array<std::uint32_t>>();
        const std::size_t size = sizeNear(faceVertices);
        for (std::size_t k = 0; k < size; ++k) {
            indices->push_back(input_.ConsumeIntegralInRange<std::uint32_t>(0, valueCount));
        }
        Geo::populateRangeGeoProperty(*range, std::move(indices));
        mesh.set(Geo::getGeoPropRangeName(name), std::move(range));
        ObjectPtr data = Zelvane::createObject();
        data->set(Geo::sTarget, Geo::getGeoPropRangeName(name));
        data->set(Geo::sData, std::move(values));
        if (input_.ConsumeBool()) {
            data->set(Geo::sDccName, Orsel::String(input_.PickValueInArray(kDccNames)));
        }
        mesh.set(name, std::move(data));
    };
    const auto over = [&](const Orsel::String& name, const Orsel::String& target,
                          Zelvane::PropertyValue values) {
        ObjectPtr data = Zelvane::createObject();
        data->set(Geo::sTarget, target);
        data->set(Geo::sData, std::move(values));
        if (input_.ConsumeBool()) {
            data->set(Geo::sDccName, Orsel::String(input_.PickValueInArray(kDccNames)));
        }
        mesh.set(name, std::move(data));
    };
    while (input_.remaining_bytes() > 0 && input_.ConsumeIntegralInRange(0, 3) > 0) {
        const std::uint32_t values = input_.ConsumeIntegralInRange<std::uint32_t>(0, 16);
        switch (input_.ConsumeIntegralInRange(0, 7)) {
        case 0:
            over(Geo::sPointNormal, Geo::sPointComp, array<float3>(sizeNear(points)));
            break;
        case 1:
            indexed(Geo::sFaceVertexNormal, array<float3>(values), values);
            break;
        case 2:
            indexed(name(),
                    input_.ConsumeBool() ? Zelvane::PropertyValue(array<float2>(values))
                                         : Zelvane::PropertyValue(array<float3>(values)),
                    values);
            break;
        case 3:
            over(Geo::sFaceVertexUV, Geo::sFaceVertexComp, array<float2>(sizeNear(faceVertices)));
            break;
        case 4:
            over(Geo::sPointColor, Geo::sPointComp, anyArray(sizeNear(points)));
            break;
        case 5:
            indexed(name(), anyArray(values), values);
            break;
        case 6:
            over(Geo::createTagName(Geo::sPointComp, input_.ConsumeRandomLengthString(8)),
                 Geo::sPointComp, array<bool>(sizeNear(points)));
            break;
        default:
            over(Geo::createTagName(Geo::sFaceComp, input_.ConsumeRandomLengthString(8)),
                 Geo::sFaceComp, array<bool>(sizeNear(faces)));
            break;
        }
    }
}

// A mesh of a few faces whose point indices now and then miss, with counts now and then off.
ObjectPtr GraphObjectBuilder::mesh() {
    ObjectPtr mesh = Zelvane::createObject();
    Geo::populateMesh(*mesh);
    const std::uint32_t points = input_.ConsumeIntegralInRange<std::uint32_t>(0, 24);
    const std::uint32_t faces = input_.ConsumeIntegralInRange<std::uint32_t>(0, 12);
    auto offsets = Orsel::make<Orsel::Array<std::uint32_t>>();
    auto faceVertices = Orsel::make<Orsel::Array<std::uint32_t>>();
    offsets->push_back(0);
    for (std::uint32_t f = 0; f < faces; ++f) {
        const int corners = input_.ConsumeIntegralInRange(0, 9) > 0
                                ? input_.ConsumeIntegralInRange(3, 6)
                                : input_.ConsumeIntegralInRange(0, 2);
        for (int c = 0; c < corners; ++c) {
            faceVertices->push_back(input_.ConsumeIntegralInRange<std::uint32_t>(
                0, input_.ConsumeIntegralInRange(0, 19) > 0 && points > 0 ? points - 1 : points));
        }
        offsets->push_back(static_cast<std::uint32_t>(faceVertices->size()));
    }
    const auto faceVertexCount = static_cast<std::uint32_t>(faceVertices->size());
    const auto pick = [&](std::uint64_t right) {
        return input_.ConsumeIntegralInRange(0, 19) > 0 ? right : count();
    };
    Geo::setElementCount(Geo::sPointComp, pick(points), *mesh);
    Geo::setElementCount(Geo::sFaceComp, pick(faces), *mesh);
    Geo::setElementCount(Geo::sFaceVertexComp, pick(faceVertexCount), *mesh);
    mesh->set(Geo::sPointPosition, array<float3>(sizeNear(points)));
    mesh->set(Geo::sFaceOffset, std::move(offsets));
    mesh->set(Geo::sFaceVertex, std::move(faceVertices));
    addChannels(*mesh, points, faces, faceVertexCount);
    return mesh;
}

ObjectPtr GraphObjectBuilder::object(int depth) {
    ObjectPtr object = input_.ConsumeIntegralInRange(0, 3) > 0 ? mesh() : Zelvane::createObject();
    while (input_.remaining_bytes() > 0 && input_.ConsumeIntegralInRange(0, 2) == 0) {
        object->set(name(), property(depth));
    }
    if (input_.ConsumeIntegralInRange(0, 9) == 0) {
        object->setPrototype(input_.ConsumeBool() ? Geo::getMeshPrototype()
                                                  : Orsel::Ptr<Zelvane::Object>());
    }
    return object;
}

Orsel::Value GraphObjectBuilder::value() {
    const Orsel::Type objects = Zelvane::objectType();
    const Orsel::Type types[] = {objects,
                                 Orsel::Type::arrayOf(objects),
                                 Orsel::Type::arrayOf(Orsel::Type::arrayOf(objects)),
                                 Zelvane::Simulation::timeType(),
                                 Zelvane::File::Project::sceneInfoType(),
                                 Zelvane::Geometry::Transform::graphTransformsType(),
                                 Orsel::Type::builtin(Orsel::TypeKind::Int32),
                                 Orsel::Type()};
    const Orsel::Type type = input_.PickValueInArray(types);
    switch (input_.ConsumeIntegralInRange(0, 5)) {
    case 0:
        return Orsel::Value::fromClass(type, input_.ConsumeIntegralInRange(0, 7) > 0
                                                 ? Orsel::Ptr<Zelvane::Object>(object(2))
                                                 : Orsel::Ptr<Zelvane::Object>());
    case 1:
        return Orsel::Value::fromOpaqueArray(
            type, propertyOfType<Orsel::Ptr<Orsel::Array<Orsel::Ptr<Zelvane::Object>>>>(1));
    case 2:
        return Orsel::Value::make(
            type, Zelvane::Simulation::Time{element<std::int64_t>(), element<double>(),
                                            element<double>(), element<double>()});
    case 3:
        return Orsel::Value::make(
            type, Zelvane::File::Project::SceneInfo{text(), text(), text(), input_.ConsumeBool()});
    case 4: {
        Zelvane::Geometry::Transform::GraphTransforms transforms;
        for (float& value : transforms.matrix) {
            value = element<float>();
        }
        return Orsel::Value::make(type, transforms);
    }
    default:
        return Orsel::Value();
    }
}

} // namespace ZelFuzz
