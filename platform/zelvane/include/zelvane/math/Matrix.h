#pragma once

#include <optional>
#include <type_traits>
#include <zelvane/Export.h>
#include <zelvane/math/Vector.h>

namespace Zelvane::Math {

/// A 4x4 float matrix stored row-major: `m[row][column]`, the 16 floats in the order
/// m[0][0], m[0][1], ... m[3][3].
///
/// Convention (the host's): points are row vectors multiplied on the left, p' = [x y z 1] * M,
/// so the translation sits in row 3 and `a * b` applies `a` first, then `b`.
struct float4x4 {
    float m[4][4];

    static constexpr float4x4 identity() {
        return {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
    }
    /// A matrix from 16 floats in row-major order.
    static constexpr float4x4 fromRowMajor(const float* values) {
        float4x4 result{};
        for (int i = 0; i < 16; ++i) {
            result.m[i / 4][i % 4] = values[i];
        }
        return result;
    }
    constexpr const float* data() const { return &m[0][0]; }
};

static_assert(sizeof(float4x4) == 64 && std::is_trivially_copyable_v<float4x4>);

constexpr bool operator==(const float4x4& a, const float4x4& b) {
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            if (a.m[r][c] != b.m[r][c]) {
                return false;
            }
        }
    }
    return true;
}

/// `a` then `b`.
constexpr float4x4 operator*(const float4x4& a, const float4x4& b) {
    float4x4 result{};
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            float sum = 0.0f;
            for (int k = 0; k < 4; ++k) {
                sum += a.m[r][k] * b.m[k][c];
            }
            result.m[r][c] = sum;
        }
    }
    return result;
}

constexpr float4x4 transpose(const float4x4& a) {
    float4x4 result{};
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            result.m[r][c] = a.m[c][r];
        }
    }
    return result;
}

/// [p 1] * M, divided through by the resulting w unless w is 0 or 1.
constexpr float3 transformPoint(const float4x4& a, const float3& p) {
    float out[4];
    for (int c = 0; c < 4; ++c) {
        out[c] = p.x * a.m[0][c] + p.y * a.m[1][c] + p.z * a.m[2][c] + a.m[3][c];
    }
    if (out[3] != 0.0f && out[3] != 1.0f) {
        return {out[0] / out[3], out[1] / out[3], out[2] / out[3]};
    }
    return {out[0], out[1], out[2]};
}

/// [v 0] * M: directions ignore the translation.
constexpr float3 transformVector(const float4x4& a, const float3& v) {
    return {v.x * a.m[0][0] + v.y * a.m[1][0] + v.z * a.m[2][0],
            v.x * a.m[0][1] + v.y * a.m[1][1] + v.z * a.m[2][1],
            v.x * a.m[0][2] + v.y * a.m[1][2] + v.z * a.m[2][2]};
}

/// The inverse (computed in double precision); empty when the matrix is singular or holds
/// non-finite values.
ZELVANE_API std::optional<float4x4> inverse(const float4x4& a);

} // namespace Zelvane::Math
