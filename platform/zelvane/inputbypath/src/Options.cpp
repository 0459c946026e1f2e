#include "OptionFields.h"

#include <string>
#include <zelvane/inputbypath/OptionKeys.h>
#include <zelvane/inputbypath/Options.h>

namespace ZelvaneBoardInputByPath {

namespace {

// "a; b;;c " -> {"a", "b", "c"}
Orsel::Array<Orsel::String> splitPaths(std::string_view text) {
    Orsel::Array<Orsel::String> paths;
    constexpr std::string_view blanks = " \t\r\n\f\v";
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(';'), text.size());
        std::string_view path = text.substr(0, end);
        const std::size_t first = path.find_first_not_of(blanks);
        if (first != std::string_view::npos) {
            path = path.substr(first, path.find_last_not_of(blanks) - first + 1);
            paths.push_back(Orsel::String(path));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return paths;
}

} // namespace

Options::Options() = default;
Options::Options(const Options& other) = default;
Options& Options::operator=(const Options& other) = default;
Options::~Options() = default;

bool Options::parseAttributes(const Orsel::MetadataItem& options) {
    if (const Orsel::MetadataItem* child = options.findChild(Keys::kPaths)) {
        paths = splitPaths(child->value().internal_string_view());
    }
    return detail::readBool(options, Keys::kNoShape, noShape);
}

void Options::storeAttributes(Orsel::MetadataItem& options) const {
    std::string joined;
    for (const Orsel::String& path : paths) {
        if (!joined.empty()) {
            joined += ';';
        }
        joined += path.internal_string_view();
    }
    detail::writeText(options, Keys::kPaths, Orsel::String(joined));
    detail::writeBool(options, Keys::kNoShape, noShape);
}

bool Options::parse(const Orsel::MetadataItem& metadata) {
    return parseAttributes(getOptions(metadata));
}

const Orsel::MetadataItem& getOptions(const Orsel::MetadataItem& portMetadata) {
    const Orsel::MetadataItem* options = portMetadata.findChild(Keys::kOptions);
    return options ? *options : portMetadata;
}

} // namespace ZelvaneBoardInputByPath
