#pragma once

#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <orsel/String.h>
#include <string_view>
#include <utility>
#include <zelvane/Export.h>
#include <zelvane/Object.h>
#include <zelvane/geometry/Names.h>

/// Geometry properties: sub-objects of a geometry whose `sTarget` (a string) names the
/// component they run over, or, for indexed data, the name of the index property whose
/// `sIndices` map every element of its own target to an entry of `sData`; `sData` holds the
/// values. Optional members: `sDccName` (the host's name) and `sDefault`.
namespace Zelvane::Geometry {

/// A new geometry property over `target` holding `data` (a null array becomes an empty one).
template <ArrayElement T>
Orsel::MutablePtr<Object> createGeoProperty(const Orsel::String& target,
                                            Orsel::Ptr<Orsel::Array<T>> data) {
    Orsel::MutablePtr<Object> property = createObject();
    property->set(sTarget, target);
    if (!data) {
        data = Orsel::make<Orsel::Array<T>>();
    }
    property->set(sData, std::move(data));
    return property;
}

/// The property `name` of `geometry` when it is a geometry property (a sub-object with a
/// string `sTarget` and an `sData` member); null otherwise.
ZELVANE_API Orsel::Ptr<Object> getDataGeoProperty(const Object& geometry, std::string_view name);

/// The `sTarget` text of the sub-object `name` (data or index property); empty when there is
/// no such sub-object or it has no string target.
ZELVANE_API Orsel::String getGeoPropTargetName(const Object& geometry, std::string_view name);

/// The component that the property `name` finally runs over: its target when that is one of
/// the components (`sPointComp`, `sFaceComp`, `sFaceVertexComp`, `sStrandComp`); otherwise,
/// when the target names another property of `geometry`, that property's component (e.g. a
/// UV data property -> its index property -> `sFaceVertexComp`); otherwise the target text
/// itself (a component this library does not know). Empty when `name` has no target, or
/// when targets lead round in a circle.
ZELVANE_API Orsel::String getTargetComponent(const Object& geometry, std::string_view name);

} // namespace Zelvane::Geometry
