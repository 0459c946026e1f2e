#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <kova/KExport.h>
#include <kova/KStatus.h>
#include <string>
#include <string_view>

class KStringArray;

// The host's string: UTF-8 text with value semantics.
class KOVA_API KString {
public:
    KString() = default;
    KString(const char* text) : text_(text ? text : "") {}
    KString(const char* text, std::size_t length) : text_(text, length) {}
    KString(std::string text) : text_(std::move(text)) {}
    KString(std::string_view text) : text_(text) {}

    const char* asChar() const { return text_.c_str(); }
    const char* asUTF8() const { return text_.c_str(); }
    const std::string& str() const { return text_; }
    std::string_view view() const { return text_; }
    unsigned int length() const { return static_cast<unsigned int>(text_.size()); }
    // Number of characters (code points), not bytes.
    unsigned int numChars() const;
    bool isEmpty() const { return text_.empty(); }

    KString& operator+=(const KString& other);
    KString& operator+=(const char* other);
    friend KOVA_API KString operator+(const KString& a, const KString& b);
    bool operator==(const KString& other) const { return text_ == other.text_; }
    bool operator==(const char* other) const { return other && text_ == other; }
    bool operator<(const KString& other) const { return text_ < other.text_; }

    // Replaces every occurrence of `what` by `with`; fails when `what` is empty.
    KStatus substitute(const KString& what, const KString& with);
    // Replaces the first occurrence only.
    KStatus substituteFirst(const KString& what, const KString& with);
    bool startsWith(const KString& prefix) const;
    int indexOf(char c) const;
    KString substring(int start, int end) const; // inclusive end, clamped to the text
    // Splits at every separator; empty fields are kept ("a,,b" gives three parts) and an empty
    // text gives no parts.
    KStatus split(char separator, KStringArray& parts) const;
    KString toLowerCase() const; // ASCII letters only

    // Numbers as text: integers in decimal, doubles with `precision` significant digits.
    KString& set(int64_t value);
    KString& set(double value, int precision);

    // Whole-text numbers: an optional sign and digits (within int range) for isInt, a decimal
    // or scientific number for isDouble; no surrounding blanks.
    bool isInt() const;
    bool isDouble() const;
    int asInt() const;       // 0 when the text is not an integer
    double asDouble() const; // 0.0 when the text is not a number

    // Fills this string from a format whose positional placeholders ^1s .. ^9s are replaced
    // by the arguments (a placeholder may be used any number of times); "^^" writes a single
    // caret and any other caret is written as it is. Fails with kInvalidParameter (and leaves
    // the string unchanged) when the format names an argument that was not given (or ^0s).
    template <class... Args>
    KStatus format(const KString& fmt, const Args&... args) {
        if constexpr (sizeof...(Args) == 0) {
            return formatArgs(fmt, nullptr, 0);
        } else {
            const KString list[] = {KString(args)...};
            return formatArgs(fmt, list, sizeof...(Args));
        }
    }
    KStatus formatArgs(const KString& fmt, const KString* args, unsigned int count);

private:
    std::string text_;
};

KOVA_API std::ostream& operator<<(std::ostream& out, const KString& text);

template <>
struct std::hash<KString> {
    std::size_t operator()(const KString& s) const noexcept {
        return std::hash<std::string>{}(s.str());
    }
};
