#pragma once

#include <cstdint>
#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <orsel/String.h>
#include <string_view>
#include <zelvane/Export.h>
#include <zelvane/Object.h>

/// Component tags: geometry properties over `sPointComp` or `sFaceComp` whose `sData` is an
/// `Orsel::Array<bool>` with one entry per element, true for members.
namespace Zelvane::Geometry {

/// The property name of a tag: `sComponentTagPrefix_point` + tag + `sComponentTagSuffix` for
/// a `sPointComp` target ("pointTag(top)"), `sComponentTagPrefix_face` + tag + suffix for
/// `sFaceComp`; empty for any other target (such tags are not stored).
ZELVANE_API Orsel::String createTagName(std::string_view target, std::string_view tagName);

/// Makes `tag` a tag over `target` with the given membership (one bool per element).
/// False and `tag` unchanged when `membership` is null.
ZELVANE_API bool populateTag(const Orsel::String& target, Orsel::Ptr<Orsel::Array<bool>> membership,
                             Object& tag);

/// Makes `tag` a tag over `target` whose members are the element indices `indices` among
/// `elementCount` elements (e.g. the point indices a strand tag covers). Indices may come in
/// any order and repeat. Returns false when `indices` is null (`tag` unchanged) or when some
/// index is not below `elementCount` (those are skipped; the others are stored).
ZELVANE_API bool populateTag(const Orsel::String& target,
                             Orsel::Ptr<Orsel::Array<std::uint32_t>> indices,
                             std::uint64_t elementCount, Object& tag);

} // namespace Zelvane::Geometry
