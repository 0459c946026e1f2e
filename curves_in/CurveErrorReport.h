#pragma once

#include <cstdint>
#include <kova/KPlug.h>
#include <kova/KStringResourceId.h>
#include <vector>

namespace ZelvanePlugin::CurvesInput {

// Shows "Failed to translate Kova curve '<curve node>' to Zelvane strands for input
// '<input attribute>' in '<input node>'. <reason>" through KGlobal::displayError, both texts
// from the plug-in's string resources. The plugs: with `plugsAreSources`, plugs[curve] is the
// curve's and `inputPlug` the input's; otherwise plugs[curve] is the input's and the curve's is
// the first plug feeding it. A plug that can't be found (index out of range, no connection)
// gives empty names.
void reportCurveFailure(const std::vector<KPlug>& plugs, bool plugsAreSources,
                        const KPlug& inputPlug, std::uint64_t curve,
                        const KStringResourceId& reason);

} // namespace ZelvanePlugin::CurvesInput
