#pragma once

#include <cstdint>
#include <orsel/Array.h>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>
#include <zelvane/Object.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/math/Vector.h>

// Values read from graph objects the plug-in makes.

// The array `name` of `object` as a vector (empty when missing).
template <class T>
std::vector<T> values(const Zelvane::Object& object, std::string_view name) {
    const Orsel::Ptr<Orsel::Array<T>> array = object.getArray<T>(name);
    return array ? std::vector<T>(array->begin(), array->end()) : std::vector<T>();
}

// The data of the geometry property `name` of `object` (empty when missing).
template <class T>
std::vector<T> propertyData(const Zelvane::Object& object, std::string_view name) {
    const Orsel::Ptr<Zelvane::Object> property = object.getObject(name);
    return property ? values<T>(*property, Zelvane::Geometry::sData) : std::vector<T>();
}

// The indices of the index property `name` of `object`.
inline std::vector<std::uint32_t> propertyIndices(const Zelvane::Object& object,
                                                  std::string_view name) {
    const Orsel::Ptr<Zelvane::Object> property = object.getObject(name);
    return property ? values<std::uint32_t>(*property, Zelvane::Geometry::sIndices)
                    : std::vector<std::uint32_t>();
}

// The string member `member` of the sub-object `name` ("" when missing).
inline std::string stringMember(const Zelvane::Object& object, std::string_view name,
                                std::string_view member) {
    const Orsel::Ptr<Zelvane::Object> property = object.getObject(name);
    const Orsel::String* text = property ? property->get<Orsel::String>(member) : nullptr;
    return text ? text->toStdString() : std::string();
}

// Readable vectors in assertion messages.
namespace Zelvane::Math {
inline void PrintTo(const float2& v, std::ostream* out) {
    *out << "(" << v.x << ", " << v.y << ")";
}
inline void PrintTo(const float3& v, std::ostream* out) {
    *out << "(" << v.x << ", " << v.y << ", " << v.z << ")";
}
inline void PrintTo(const float4& v, std::ostream* out) {
    *out << "(" << v.x << ", " << v.y << ", " << v.z << ", " << v.w << ")";
}
} // namespace Zelvane::Math
