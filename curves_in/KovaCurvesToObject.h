#pragma once

#include <kova/KPlug.h>
#include <orsel/Ptr.h>
#include <vector>
#include <zelvane/Object.h>
#include <zelvane/inputbypath/CurveOptions.h>

class KDataHandle;

// Turns host NURBS curves into one graph strand object: every curve becomes one strand whose
// points are read in world space, sampled as `options.sampling` says (one point per CV, a
// multiple of the CV count, or a target segment length). As `options` ask, the object also gets
// unit point tangents ("tangent"), arc lengths per point and per strand ("pointLength",
// "strandLength") and, always, each point's ratio along its strand ("pointRatio"). CV component
// tags selected by `options.componentTags` become point tags ("pointTag(<name>)"), carried to
// sampled points by `options.tagTransfer`. Steps are timed in the "Zelvane/CurveConverter"
// profiler category.
//
// `handles` holds one curve per entry of `plugs` (a plug without a handle counts as a curve
// that can't be read). `plugs` only serve to name a failing curve in the message:
// - `plugsAreSources` true: plugs[i] is the curve's own plug and `inputPlug` the input it feeds;
// - false: plugs[i] is the input plug, and the curve is whatever feeds it.
//
// Null on every failure, with one message through KGlobal::displayError and never a partial
// object: a segment length that is not positive in segment-length mode ("Target segment length
// = 0 is invalid.", no curve read), or a curve the host can't read ("Curve is invalid.", naming
// the lowest failing curve). No curves at all give an object with no points and one offset, 0.
__attribute__((visibility("default"))) Orsel::MutablePtr<Zelvane::Object>
kovaCurvesToObject(const std::vector<KPlug>& plugs, const std::vector<KDataHandle>& handles,
                   const ZelvaneBoardInputByPath::CurveOptions& options, bool plugsAreSources,
                   KPlug inputPlug);
