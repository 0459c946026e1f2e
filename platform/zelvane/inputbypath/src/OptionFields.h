#pragma once

#include <orsel/MetadataItem.h>
#include <orsel/String.h>
#include <span>
#include <string_view>

// Reading and writing single option values. Each reader looks at the child `key` of the
// options item: when it is missing the field is left alone and the reader returns true; when
// its text is malformed the field is left alone and the reader returns false.
namespace ZelvaneBoardInputByPath::detail {

bool readBool(const Orsel::MetadataItem& options, std::string_view key, bool& field);
bool readFloat(const Orsel::MetadataItem& options, std::string_view key, float& field);
/// A channel expression, checked with `ZEL::Utils::ChannelParser`.
bool readExpression(const Orsel::MetadataItem& options, std::string_view key, Orsel::String& field);
/// An enumeration given by name (`names[value]`, any letter case) or by number.
bool readEnumValue(const Orsel::MetadataItem& options, std::string_view key,
                   std::span<const std::string_view> names, int& value);

template <class Enum>
bool readEnum(const Orsel::MetadataItem& options, std::string_view key,
              std::span<const std::string_view> names, Enum& field) {
    int value = static_cast<int>(field);
    const bool ok = readEnumValue(options, key, names, value);
    field = static_cast<Enum>(value);
    return ok;
}

void writeText(Orsel::MetadataItem& options, std::string_view key, const Orsel::String& text);
void writeBool(Orsel::MetadataItem& options, std::string_view key, bool value);
/// The shortest text that reads back as the same float.
void writeFloat(Orsel::MetadataItem& options, std::string_view key, float value);

} // namespace ZelvaneBoardInputByPath::detail
