#pragma once

#include <kova/KObject.h>
#include <string>
#include <utility>
#include <vector>

// The values of a host mesh that the plug-in writes, channel by channel: "points", "counts",
// "connects", per UV set "uv NAME u|v|ids", "normals" and "normal ids", per colour set
// "colours NAME", per component tag "tag NAME". Two meshes hold the same values when their
// channels are equal.
using HostMeshValues = std::vector<std::pair<std::string, std::vector<double>>>;

HostMeshValues hostMeshValues(const KObject& mesh);

// The first channel and element where `actual` differs from `expected`, or empty.
std::string hostMeshDifference(const HostMeshValues& expected, const HostMeshValues& actual);
