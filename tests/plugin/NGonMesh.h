#pragma once

// The n-gon mesh of the mesh tests: a unit quad (points 0-3), a triangle sharing its right edge
// (1, 4, 2) and a separate pentagon (5-9): 10 points, 3 faces, 12 face-vertices.
namespace NGonMesh {

inline constexpr float kPoints[10][3] = {{0, 0, 0},    {1, 0, 0},   {1, 1, 0}, {0, 1, 0},
                                         {2, 0.5f, 0}, {3, 0, 0},   {4, 0, 0}, {4.5f, 1, 0},
                                         {3.5f, 2, 0}, {2.5f, 1, 0}};
inline constexpr int kCounts[3] = {4, 3, 5};
inline constexpr int kOffsets[4] = {0, 4, 7, 12};
inline constexpr int kFaceVertices[12] = {0, 1, 2, 3, 1, 4, 2, 5, 6, 7, 8, 9};

} // namespace NGonMesh
