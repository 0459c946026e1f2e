#include "OptionFields.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <zelvane/utils/ChannelParser.h>

namespace ZelvaneBoardInputByPath::detail {

namespace {

// Parses the child `key` with `parse` (text -> optional value) into `field`.
template <class T, class Parse>
bool readField(const Orsel::MetadataItem& options, std::string_view key, T& field, Parse parse) {
    const Orsel::MetadataItem* child = options.findChild(key);
    if (!child) {
        return true;
    }
    const std::optional<T> value = parse(child->value().internal_string_view());
    if (!value) {
        return false;
    }
    field = *value;
    return true;
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; };
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [&](char x, char y) { return lower(x) == lower(y); });
}

} // namespace

bool readBool(const Orsel::MetadataItem& options, std::string_view key, bool& field) {
    return readField(options, key, field, &Orsel::MetadataItem::parseBool);
}

bool readFloat(const Orsel::MetadataItem& options, std::string_view key, float& field) {
    return readField(options, key, field, &Orsel::MetadataItem::parseFloat);
}

bool readExpression(const Orsel::MetadataItem& options, std::string_view key,
                    Orsel::String& field) {
    return readField(options, key, field,
                     [](std::string_view text) -> std::optional<Orsel::String> {
                         ZEL::Utils::ChannelParser parser;
                         if (!parser.parses(Orsel::String(text))) {
                             return std::nullopt;
                         }
                         return parser.expression();
                     });
}

bool readEnumValue(const Orsel::MetadataItem& options, std::string_view key,
                   std::span<const std::string_view> names, int& value) {
    return readField(options, key, value, [names](std::string_view text) -> std::optional<int> {
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (equalsIgnoringCase(text, names[i])) {
                return static_cast<int>(i);
            }
        }
        const std::optional<std::int64_t> number = Orsel::MetadataItem::parseInt(text);
        if (number && *number >= 0 && *number < static_cast<std::int64_t>(names.size())) {
            return static_cast<int>(*number);
        }
        return std::nullopt;
    });
}

void writeText(Orsel::MetadataItem& options, std::string_view key, const Orsel::String& text) {
    options.setChild(Orsel::String(key), text);
}

void writeBool(Orsel::MetadataItem& options, std::string_view key, bool value) {
    writeText(options, key,
              value ? Orsel::String::literal("true") : Orsel::String::literal("false"));
}

void writeFloat(Orsel::MetadataItem& options, std::string_view key, float value) {
    char text[32];
    const auto [end, error] = std::to_chars(text, text + sizeof(text), value);
    writeText(options, key, Orsel::String(text, static_cast<std::size_t>(end - text)));
    (void)error; // 32 characters hold any float
}

} // namespace ZelvaneBoardInputByPath::detail
