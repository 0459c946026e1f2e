#pragma once

#include <kova/KPlug.h>
#include <kova/KStatus.h>
#include <string_view>

namespace kova::detail {

// The plug named by `text`: a node name or full DAG path, then attribute names separated by
// dots, each optionally with a logical index ("pCube1.points[3]", "|a|b.comp[2].child"). The
// first name may be a compound's child ("node.child") when no array lies above it.
// Naming an element creates it. A null plug and kInvalidParameter when the text names none.
KPlug parsePlug(std::string_view text, KStatus& status);

} // namespace kova::detail
