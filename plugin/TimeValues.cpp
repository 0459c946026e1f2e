#include "plugin/TimeValues.h"

#include <cmath>
#include <kova/KDataHandle.h>
#include <kova/KString.h>
#include <limits>

namespace ZelvanePlugin {
namespace {

// User-interface units in one second.
double unitsPerSecond() {
    return KTime(1.0, KTime::kSeconds).asUnits(KTime::uiUnit());
}

bool nearlyEqual(double a, double b) {
    return std::fabs(a - b) <= std::numeric_limits<double>::epsilon();
}

} // namespace

Zelvane::Simulation::Time timeRecord(const KTime& time) {
    const double seconds = time.as(KTime::kSeconds);
    return {static_cast<std::int64_t>(static_cast<double>(KTime::ticksPerSecond()) * seconds),
            seconds, time.value(), 1.0 / unitsPerSecond()};
}

bool changedHostTime(const Zelvane::Simulation::Time& result, const KTime& current,
                     KTime& changed) {
    const Zelvane::Simulation::Time now = timeRecord(current);
    const double perSecond = unitsPerSecond();
    changed = current;
    if (!nearlyEqual(result.frame, now.frame)) {
        changed.setValue(result.frame);
    } else if (!nearlyEqual(result.seconds, now.seconds)) {
        changed = KTime(result.seconds * perSecond, KTime::uiUnit());
    } else if (result.ticks != now.ticks) {
        const double seconds =
            static_cast<double>(result.ticks) / static_cast<double>(KTime::ticksPerSecond());
        changed = KTime(seconds * perSecond, KTime::uiUnit());
    } else {
        return false;
    }
    return true;
}

Zelvane::File::Project::SceneInfo readSceneInfo(const KDataHandle& compound) {
    return {Orsel::String(compound.child(0).asString().view()),
            Orsel::String(compound.child(1).asString().view()),
            Orsel::String(compound.child(2).asString().view()), compound.child(3).asBool()};
}

void writeSceneInfo(const Zelvane::File::Project::SceneInfo& info, KDataHandle& compound) {
    compound.child(0).setString(KString(std::string_view(info.scene)));
    compound.child(1).setString(KString(std::string_view(info.sceneDirectory)));
    compound.child(2).setString(KString(std::string_view(info.projectDirectory)));
    compound.child(3).setBool(info.hasProject);
}

} // namespace ZelvanePlugin
