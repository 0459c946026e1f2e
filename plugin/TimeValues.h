#pragma once

#include <kova/KTime.h>
#include <zelvane/file/SceneInfo.h>
#include <zelvane/simulation/Time.h>

class KDataHandle;

namespace ZelvanePlugin {

// The graph's time record of a host time: ticks, seconds, the value in the time's own unit
// (frames of the user-interface unit, normally) and the length of one such unit in seconds.
Zelvane::Simulation::Time timeRecord(const KTime& time);

// The host time to store for a graph result, given the attribute's current time: the first
// of frame, seconds and ticks that differs from the current record (within the double machine
// epsilon) wins, so a graph may change any one representation. Empty when nothing changed.
bool changedHostTime(const Zelvane::Simulation::Time& result, const KTime& current, KTime& changed);

// Reads and writes the scene-info compound: three strings, then the "has project" flag.
Zelvane::File::Project::SceneInfo readSceneInfo(const KDataHandle& compound);
void writeSceneInfo(const Zelvane::File::Project::SceneInfo& info, KDataHandle& compound);

} // namespace ZelvanePlugin
