// Input-by-path port options (Options, MeshOptions, CurveOptions, GeoOptions) parsed from
// arbitrary port metadata, written as text (see metadataOf): known and unknown keys, repeated
// keys, the options item nested under "inputByPath" or not, any value text. Whatever was parsed
// must store and parse back to the very same metadata, and copies must behave like their originals.

#include "FuzzCheck.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <orsel/ArrayMemory.h>
#include <orsel/MetadataItem.h>
#include <string>
#include <string_view>
#include <vector>
#include <zelvane/inputbypath/CurveOptions.h>
#include <zelvane/inputbypath/GeoOptions.h>
#include <zelvane/inputbypath/MeshOptions.h>
#include <zelvane/inputbypath/Options.h>

namespace {

using ZelFuzz::check;

// The metadata of one input: a line per item, "name=value" (or a bare name), its depth the
// number of leading blanks; an item is a child of the last item one level up, or of the port
// metadata itself.
Orsel::MetadataItem metadataOf(std::string_view text) {
    Orsel::MetadataItem root;
    std::vector<Orsel::MetadataItem*> levels{&root}; // the last item of each depth
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        std::size_t depth = 0;
        while (depth < line.size() && line[depth] == ' ') {
            ++depth;
        }
        line.remove_prefix(depth);
        const std::size_t equals = std::min(line.find('='), line.size());
        Orsel::MetadataItem item(Orsel::String(line.substr(0, equals)),
                                 Orsel::String(line.substr(std::min(equals + 1, line.size()))));
        levels.resize(std::min(depth + 1, levels.size()));
        levels.push_back(&levels.back()->addChild(std::move(item)));
    }
    return root;
}

bool sameItems(const Orsel::MetadataItem& a, const Orsel::MetadataItem& b) {
    if (a.name() != b.name() || a.value() != b.value() ||
        a.children().size() != b.children().size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.children().size(); ++i) {
        if (!sameItems(a.children()[i], b.children()[i])) {
            return false;
        }
    }
    return true;
}

Orsel::MetadataItem stored(const ZelvaneBoardInputByPath::Options& options) {
    Orsel::MetadataItem item;
    options.storeAttributes(item);
    return item;
}

// Parses `metadata` into a fresh `T`, then checks that what it stores parses back, without
// complaint, into options that store the same again, and that a copy stores the same too.
template <class T>
T parsedAndChecked(const Orsel::MetadataItem& metadata) {
    T options;
    options.parse(metadata);
    const Orsel::MetadataItem first = stored(options);
    T again;
    check(again.parseAttributes(first), "stored options do not parse");
    check(sameItems(first, stored(again)), "stored options do not parse back the same");
    const T copy = options;
    check(sameItems(first, stored(copy)), "a copy stores other options");
    T assigned;
    assigned = options;
    check(sameItems(first, stored(assigned)), "an assigned copy stores other options");
    return options;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // Graph arrays must come from the allocator AddressSanitizer watches.
    check(!Orsel::ArrayMemory::usesScalableAllocator(), "graph arrays bypass the sanitizers");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Orsel::MetadataItem metadata =
        metadataOf(std::string_view(reinterpret_cast<const char*>(data), size));

    // The typed getters behind the options: a found value is a valid one.
    for (const Orsel::MetadataItem& child : metadata.children()) {
        Orsel::MetadataStatus status;
        const float number = metadata.getFloat(child.name().internal_string_view(), 0.0f, &status);
        check(status != Orsel::MetadataStatus::Found || std::isfinite(number),
              "a float read from metadata is not finite");
        metadata.getInt(child.name().internal_string_view(), 0, &status);
        metadata.getBool(child.name().internal_string_view(), false, &status);
    }

    parsedAndChecked<ZelvaneBoardInputByPath::Options>(metadata);
    parsedAndChecked<ZelvaneBoardInputByPath::CurveOptions>(metadata);
    const auto mesh = parsedAndChecked<ZelvaneBoardInputByPath::MeshOptions>(metadata);
    const auto geo = parsedAndChecked<ZelvaneBoardInputByPath::GeoOptions>(metadata);

    // GeoOptions reads the mesh keys from the same item as MeshOptions does.
    check(sameItems(stored(geo.mesh), stored(mesh)), "GeoOptions reads other mesh options");

    // The mesh options' channel filter is the stored expression, parsed; the item names and
    // values serve as names to select.
    ZEL::Utils::ChannelParser filter;
    check(filter.parses(mesh.channelFilterExpression()), "the channel filter does not parse");
    for (const Orsel::MetadataItem& child : metadata.children()) {
        for (const Orsel::String& name : {child.name(), child.value()}) {
            check(filter.accepts(name) == mesh.channelFilter->accepts(name),
                  "the channel filter is not its expression");
        }
    }
    return 0;
}
