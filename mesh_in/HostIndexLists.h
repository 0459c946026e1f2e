#pragma once

#include <cstddef>
#include <cstdint>
#include <kova/KIntArray.h>
#include <orsel/Array.h>

// Host index lists as graph arrays, with the converters' parallel-fill rule.
namespace ZelvanePlugin::MeshInput {

// Makes `out` a copy of the host's index list `ids` (point indices, normal or UV ids), one
// unsigned entry per host entry.
void copyIndices(const KIntArray& ids, Orsel::Array<std::uint32_t>& out);

// Makes `membership` `count` entries, true at the element indices `elements` lists (those
// outside 0 .. count-1 are ignored) and false elsewhere. `elements` must not repeat an index,
// as the host's components don't.
void fillMembership(const KIntArray& elements, std::size_t count, Orsel::Array<bool>& membership);

} // namespace ZelvanePlugin::MeshInput
