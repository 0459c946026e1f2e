#pragma once

#include <orsel/Array.h>
#include <orsel/String.h>
#include <string_view>
#include <zelvane/Export.h>
#include <zelvane/Object.h>

namespace Zelvane::Geometry {

/// Names of the geometry properties of `geometry` (see `getDataGeoProperty`) selected by
/// `pattern`, in the object's property order. The pattern is a channel expression
/// (`ZEL::Utils::ChannelParser`): several patterns separated by blanks or commas, `*` for any
/// run of characters, `?` for one, `^` to exclude. Empty or malformed patterns select nothing.
ZELVANE_API Orsel::Array<Orsel::String> getGeoPropsByName(const Object& geometry,
                                                          const Orsel::String& pattern);

/// `name` when `geometry` has no property of that name; otherwise `name` followed by the
/// smallest decimal number 1, 2, ... that gives an unused name.
ZELVANE_API Orsel::String getUniqueGeoPropName(const Orsel::String& name, const Object& geometry);

} // namespace Zelvane::Geometry
