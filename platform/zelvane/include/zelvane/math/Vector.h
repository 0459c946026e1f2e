#pragma once

#include <cmath>
#include <type_traits>

namespace Zelvane::Math {

/// Small float vectors as the graph stores them: plain trivially copyable aggregates with
/// `x, y, z, w` members, 4-byte aligned and without padding (arrays of them are flat floats).
struct float2 {
    float x, y;
};
struct float3 {
    float x, y, z;
};
struct float4 {
    float x, y, z, w;
};

static_assert(sizeof(float2) == 8 && alignof(float2) == 4 && std::is_trivially_copyable_v<float2>);
static_assert(sizeof(float3) == 12 && alignof(float3) == 4 && std::is_trivially_copyable_v<float3>);
static_assert(sizeof(float4) == 16 && alignof(float4) == 4 && std::is_trivially_copyable_v<float4>);

constexpr bool operator==(const float2& a, const float2& b) {
    return a.x == b.x && a.y == b.y;
}
constexpr bool operator==(const float3& a, const float3& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}
constexpr bool operator==(const float4& a, const float4& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z && a.w == b.w;
}

constexpr float2 operator+(const float2& a, const float2& b) {
    return {a.x + b.x, a.y + b.y};
}
constexpr float2 operator-(const float2& a, const float2& b) {
    return {a.x - b.x, a.y - b.y};
}
constexpr float2 operator*(const float2& a, float s) {
    return {a.x * s, a.y * s};
}

constexpr float3 operator+(const float3& a, const float3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
constexpr float3 operator-(const float3& a, const float3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
constexpr float3 operator-(const float3& a) {
    return {-a.x, -a.y, -a.z};
}
constexpr float3 operator*(const float3& a, float s) {
    return {a.x * s, a.y * s, a.z * s};
}
constexpr float3 operator*(float s, const float3& a) {
    return a * s;
}
constexpr float3 operator/(const float3& a, float s) {
    return {a.x / s, a.y / s, a.z / s};
}
constexpr float3& operator+=(float3& a, const float3& b) {
    return a = a + b;
}
constexpr float3& operator-=(float3& a, const float3& b) {
    return a = a - b;
}

constexpr float4 operator+(const float4& a, const float4& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z, a.w + b.w};
}
constexpr float4 operator*(const float4& a, float s) {
    return {a.x * s, a.y * s, a.z * s, a.w * s};
}

constexpr float dot(const float3& a, const float3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
constexpr float3 cross(const float3& a, const float3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline float length(const float3& a) {
    return std::sqrt(dot(a, a));
}
/// `a` scaled to unit length; the zero vector stays zero.
inline float3 normalize(const float3& a) {
    const float l = length(a);
    return l > 0.0f ? a / l : a;
}

} // namespace Zelvane::Math
