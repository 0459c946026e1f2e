#pragma once

#include <atomic>
#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <orsel/Export.h>
#include <string>
#include <string_view>

namespace Orsel {

namespace detail {
// Header of a shared character buffer; the characters and a terminating NUL follow it.
struct StringBuffer {
    std::atomic<std::uint32_t> refs;
};
} // namespace detail

/// Immutable UTF-8 text with value semantics.
///
/// Copies share one reference-counted buffer (atomic counts, so copies may travel between
/// threads freely); nothing is ever written into a buffer after construction. Text made with
/// `String::literal` refers to the literal itself and allocates nothing: such constants are
/// constant-initialised (`constinit`), so other libraries may use them from their own static
/// initialisers without any ordering concern. `c_str()` is always NUL-terminated.
class ORSEL_API String {
public:
    static constexpr std::size_t npos = std::string_view::npos;

    constexpr String() noexcept = default;
    /// A null pointer gives the empty string.
    String(const char* text);
    String(const char* text, std::size_t size);
    String(std::string_view text);
    String(const std::string& text);

    /// Text that refers to a string literal without copying it (compile time only).
    template <std::size_t N>
    static consteval String literal(const char (&text)[N]) noexcept {
        return String(text, N - 1, LiteralTag{});
    }

    String(const String& other) noexcept
        : data_(other.data_), size_(other.size_), buffer_(other.buffer_) {
        retain();
    }
    String(String&& other) noexcept
        : data_(other.data_), size_(other.size_), buffer_(other.buffer_) {
        other.data_ = "";
        other.size_ = 0;
        other.buffer_ = nullptr;
    }
    String& operator=(const String& other) noexcept {
        String copy(other);
        swap(copy);
        return *this;
    }
    String& operator=(String&& other) noexcept {
        String moved(std::move(other));
        swap(moved);
        return *this;
    }
    constexpr ~String() {
        if (buffer_) {
            release();
        }
    }

    void swap(String& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        std::swap(buffer_, other.buffer_);
    }

    const char* c_str() const noexcept { return data_; }
    const char* data() const noexcept { return data_; }
    std::size_t size() const noexcept { return size_; }
    bool empty() const noexcept { return size_ == 0; }
    std::string_view internal_string_view() const noexcept { return {data_, size_}; }
    operator std::string_view() const noexcept { return {data_, size_}; }
    std::string toStdString() const { return std::string(data_, size_); }

    bool startsWith(std::string_view prefix) const noexcept {
        return internal_string_view().starts_with(prefix);
    }
    bool endsWith(std::string_view suffix) const noexcept {
        return internal_string_view().ends_with(suffix);
    }
    /// Byte offset of the first occurrence of `needle` at or after `from`, or `npos`.
    std::size_t find(std::string_view needle, std::size_t from = 0) const noexcept {
        return internal_string_view().find(needle, from);
    }
    /// The bytes [from, from + count), clamped to the text; `from` past the end gives "".
    String substr(std::size_t from, std::size_t count = npos) const;

    friend bool operator==(const String& a, const String& b) noexcept {
        return a.internal_string_view() == b.internal_string_view();
    }
    template <class T>
    requires(!std::same_as<std::remove_cvref_t<T>, String> &&
             std::convertible_to<const T&, std::string_view>) friend bool
    operator==(const String& a, const T& b) noexcept {
        return a.internal_string_view() == std::string_view(b);
    }
    friend std::strong_ordering operator<=>(const String& a, const String& b) noexcept {
        return a.internal_string_view() <=> b.internal_string_view();
    }

    friend String operator+(const String& a, const String& b) { return concat(a, b); }
    friend String operator+(const String& a, const char* b) {
        return concat(a, b ? std::string_view(b) : std::string_view());
    }
    friend String operator+(const char* a, const String& b) {
        return concat(a ? std::string_view(a) : std::string_view(), b);
    }

private:
    struct LiteralTag {};
    constexpr String(const char* text, std::size_t size, LiteralTag) noexcept
        : data_(text), size_(size) {}

    // Copies `head` followed by `tail` into a new buffer (none for empty text).
    void assign(std::string_view head, std::string_view tail = {});
    static String concat(std::string_view a, std::string_view b);
    void retain() const noexcept {
        if (buffer_) {
            buffer_->refs.fetch_add(1, std::memory_order_relaxed);
        }
    }
    void release() noexcept;

    const char* data_ = "";
    std::size_t size_ = 0;
    detail::StringBuffer* buffer_ = nullptr;
};

ORSEL_API std::ostream& operator<<(std::ostream& out, const String& text);

} // namespace Orsel

template <>
struct std::hash<Orsel::String> {
    std::size_t operator()(const Orsel::String& text) const noexcept {
        return std::hash<std::string_view>{}(text.internal_string_view());
    }
};
