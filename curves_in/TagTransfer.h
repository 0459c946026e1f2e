#pragma once

#include <cstddef>
#include <span>
#include <vector>

// How a CV tag reaches the sampled points of a curve: rules on the point's curve parameter t
// and the CV parameters P (ascending, one per CV, a periodic curve's overlap included).
namespace ZelvanePlugin::CurvesInput {

// The CVs a tag holds on one curve. CV indices wrap modulo the number of distinct CVs, so the
// overlap of a periodic curve maps to its first CVs.
class TaggedCVs {
public:
    // `elements` must be sorted ascending; `distinctCVs` must be positive.
    TaggedCVs(std::span<const int> elements, int distinctCVs)
        : elements_(elements), distinctCVs_(distinctCVs) {}

    bool contains(std::size_t cv) const;

private:
    std::span<const int> elements_;
    int distinctCVs_;
};

// Whether a CV parameter and a point parameter count as equal: within 2^-52 absolutely, or
// within 4 units in the last place of the smaller magnitude (ulps of the smallest normal for
// values below it).
bool sameParameter(double cvParameter, double t);

// Nearest CV: the CV whose parameter t equals; else the last CV beyond the last parameter, CV 0
// before the first; else the closer of the two around t, a tie going to the later one.
// `parameters` must not be empty.
std::size_t nearestCV(std::span<const double> parameters, double t);

// Both neighbours: a point is tagged when the CVs on both sides of t are. t equal to P[0]
// takes CVs 0 and 1; t in (P[k-1], P[k]] takes CVs k-1 and k; a t before P[0] or after the
// last parameter is untagged. `parameters` must hold at least two entries.
bool bothNeighboursTagged(std::span<const double> parameters, double t, const TaggedCVs& tagged);

} // namespace ZelvanePlugin::CurvesInput
