#pragma once

#include <orsel/MetadataItem.h>
#include <zelvane/inputbypath/CurveOptions.h>
#include <zelvane/inputbypath/Export.h>
#include <zelvane/inputbypath/MeshOptions.h>
#include <zelvane/inputbypath/Options.h>

namespace ZelvaneBoardInputByPath {

/// Options of a port that may be fed by meshes and curves: the keys of `MeshOptions` and
/// `CurveOptions` in one item. `mesh` and `curve` are parsed from the same item, so their
/// `paths` and `noShape` equal this object's.
class ZELVANE_INPUTBYPATH_API GeoOptions : public Options {
public:
    GeoOptions();
    GeoOptions(const GeoOptions& other);
    GeoOptions& operator=(const GeoOptions& other);
    ~GeoOptions() override;

    bool parseAttributes(const Orsel::MetadataItem& options) override;
    void storeAttributes(Orsel::MetadataItem& options) const override;

    MeshOptions mesh;
    CurveOptions curve;
};

} // namespace ZelvaneBoardInputByPath
