#pragma once

#include <cstdint>
#include <optional>
#include <orsel/Export.h>
#include <orsel/String.h>
#include <string_view>
#include <vector>

namespace Orsel {

/// Outcome of reading a typed value from metadata.
enum class MetadataStatus {
    Found,     ///< the key is there and its text is a valid value
    Missing,   ///< no child of that name; the default was returned
    Malformed, ///< the child's text is not a valid value; the default was returned
};

/// A tree of named text values, as carried by graph ports and nodes.
///
/// An item has a name, a value and ordered children; a default-constructed item is empty.
/// The typed getters read the value of a direct child named `key`, return the given default
/// when it is missing or malformed, and report which of the three happened through the
/// optional `status`. Text formats (surrounding blanks are ignored):
/// - bool: "1", "0", "true", "false", "on", "off", "yes", "no" (any letter case);
/// - int: an optionally signed decimal integer that fits 64 bits;
/// - float: a decimal or scientific number that is finite in single precision.
class ORSEL_API MetadataItem {
public:
    MetadataItem() = default;
    explicit MetadataItem(String name, String value = {});

    const String& name() const noexcept { return name_; }
    const String& value() const noexcept { return value_; }
    void setValue(String value) { value_ = std::move(value); }
    const std::vector<MetadataItem>& children() const noexcept { return children_; }
    /// True when the item has no name, no value and no children.
    bool empty() const noexcept { return name_.empty() && value_.empty() && children_.empty(); }

    /// Appends `child` (also when a child of that name exists) and returns it.
    MetadataItem& addChild(MetadataItem child);
    /// Sets the value of the first child named `name`, appending one when there is none.
    MetadataItem& setChild(const String& name, const String& value);
    /// Removes the first child named `name`; false when there is none.
    bool removeChild(std::string_view name);
    /// The first child named `name`, or null.
    const MetadataItem* findChild(std::string_view name) const noexcept;
    MetadataItem* findChild(std::string_view name) noexcept;

    String getString(std::string_view key, const String& defaultValue = {},
                     MetadataStatus* status = nullptr) const;
    bool getBool(std::string_view key, bool defaultValue, MetadataStatus* status = nullptr) const;
    std::int64_t getInt(std::string_view key, std::int64_t defaultValue,
                        MetadataStatus* status = nullptr) const;
    float getFloat(std::string_view key, float defaultValue,
                   MetadataStatus* status = nullptr) const;

    /// The text parsers behind the getters; empty when the text is malformed.
    static std::optional<bool> parseBool(std::string_view text);
    static std::optional<std::int64_t> parseInt(std::string_view text);
    static std::optional<float> parseFloat(std::string_view text);

private:
    String name_;
    String value_;
    std::vector<MetadataItem> children_;
};

} // namespace Orsel
