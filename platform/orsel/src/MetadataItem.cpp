#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <orsel/MetadataItem.h>
#include <utility>

namespace Orsel {

namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n\f\v";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               const auto lower = [](char c) {
                   return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
               };
               return lower(x) == lower(y);
           });
}

// Reads the child `key` of `item` with `parse`, falling back to `defaultValue`.
template <class T, class Parse>
T readTyped(const MetadataItem& item, std::string_view key, T defaultValue, MetadataStatus* status,
            Parse parse) {
    const MetadataItem* child = item.findChild(key);
    MetadataStatus outcome = MetadataStatus::Missing;
    T result = defaultValue;
    if (child) {
        const std::optional<T> parsed = parse(child->value().internal_string_view());
        outcome = parsed ? MetadataStatus::Found : MetadataStatus::Malformed;
        result = parsed.value_or(defaultValue);
    }
    if (status) {
        *status = outcome;
    }
    return result;
}

template <class T>
std::optional<T> parseNumber(std::string_view text) {
    text = trimmed(text);
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    T value{};
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (text.empty() || error != std::errc() || stop != end) {
        return std::nullopt;
    }
    return value;
}

} // namespace

MetadataItem::MetadataItem(String name, String value)
    : name_(std::move(name)), value_(std::move(value)) {}

MetadataItem& MetadataItem::addChild(MetadataItem child) {
    return children_.emplace_back(std::move(child));
}

MetadataItem& MetadataItem::setChild(const String& name, const String& value) {
    if (MetadataItem* child = findChild(name)) {
        child->setValue(value);
        return *child;
    }
    return addChild(MetadataItem(name, value));
}

bool MetadataItem::removeChild(std::string_view name) {
    const auto it = std::find_if(children_.begin(), children_.end(),
                                 [name](const MetadataItem& child) { return child.name_ == name; });
    if (it == children_.end()) {
        return false;
    }
    children_.erase(it);
    return true;
}

const MetadataItem* MetadataItem::findChild(std::string_view name) const noexcept {
    for (const MetadataItem& child : children_) {
        if (child.name_ == name) {
            return &child;
        }
    }
    return nullptr;
}

MetadataItem* MetadataItem::findChild(std::string_view name) noexcept {
    return const_cast<MetadataItem*>(std::as_const(*this).findChild(name));
}

String MetadataItem::getString(std::string_view key, const String& defaultValue,
                               MetadataStatus* status) const {
    return readTyped<String>(*this, key, defaultValue, status,
                             [](std::string_view text) { return std::optional<String>(text); });
}

bool MetadataItem::getBool(std::string_view key, bool defaultValue, MetadataStatus* status) const {
    return readTyped(*this, key, defaultValue, status, &MetadataItem::parseBool);
}

std::int64_t MetadataItem::getInt(std::string_view key, std::int64_t defaultValue,
                                  MetadataStatus* status) const {
    return readTyped(*this, key, defaultValue, status, &MetadataItem::parseInt);
}

float MetadataItem::getFloat(std::string_view key, float defaultValue,
                             MetadataStatus* status) const {
    return readTyped(*this, key, defaultValue, status, &MetadataItem::parseFloat);
}

std::optional<bool> MetadataItem::parseBool(std::string_view text) {
    static constexpr std::array<std::string_view, 4> yes{"1", "true", "on", "yes"};
    static constexpr std::array<std::string_view, 4> no{"0", "false", "off", "no"};
    text = trimmed(text);
    const auto matches = [text](std::string_view word) { return equalsIgnoringCase(text, word); };
    if (std::any_of(yes.begin(), yes.end(), matches)) {
        return true;
    }
    if (std::any_of(no.begin(), no.end(), matches)) {
        return false;
    }
    return std::nullopt;
}

std::optional<std::int64_t> MetadataItem::parseInt(std::string_view text) {
    return parseNumber<std::int64_t>(text);
}

std::optional<float> MetadataItem::parseFloat(std::string_view text) {
    const std::optional<float> value = parseNumber<float>(text);
    if (!value || !std::isfinite(*value)) {
        return std::nullopt;
    }
    return value;
}

} // namespace Orsel
