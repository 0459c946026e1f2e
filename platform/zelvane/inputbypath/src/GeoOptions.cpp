#include <zelvane/inputbypath/GeoOptions.h>

namespace ZelvaneBoardInputByPath {

GeoOptions::GeoOptions() = default;
GeoOptions::GeoOptions(const GeoOptions& other) = default;
GeoOptions& GeoOptions::operator=(const GeoOptions& other) = default;
GeoOptions::~GeoOptions() = default;

bool GeoOptions::parseAttributes(const Orsel::MetadataItem& options) {
    bool ok = Options::parseAttributes(options);
    ok &= mesh.parseAttributes(options);
    ok &= curve.parseAttributes(options);
    return ok;
}

void GeoOptions::storeAttributes(Orsel::MetadataItem& options) const {
    Options::storeAttributes(options);
    mesh.storeAttributes(options);
    curve.storeAttributes(options);
}

} // namespace ZelvaneBoardInputByPath
