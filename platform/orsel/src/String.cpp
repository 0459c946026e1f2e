#include <cstring>
#include <new>
#include <orsel/String.h>
#include <ostream>

namespace Orsel {

namespace {

char* charactersOf(detail::StringBuffer* buffer) {
    return reinterpret_cast<char*>(buffer + 1);
}

} // namespace

String::String(const char* text) {
    if (text) {
        assign(text);
    }
}

String::String(const char* text, std::size_t size) {
    if (text) {
        assign(std::string_view(text, size));
    }
}

String::String(std::string_view text) {
    assign(text);
}

String::String(const std::string& text) {
    assign(text);
}

void String::assign(std::string_view head, std::string_view tail) {
    const std::size_t size = head.size() + tail.size();
    if (size == 0) {
        return;
    }
    void* memory = ::operator new(sizeof(detail::StringBuffer) + size + 1);
    auto* buffer = new (memory) detail::StringBuffer{{1}};
    char* characters = charactersOf(buffer);
    if (!head.empty()) {
        std::memcpy(characters, head.data(), head.size());
    }
    if (!tail.empty()) {
        std::memcpy(characters + head.size(), tail.data(), tail.size());
    }
    characters[size] = '\0';
    data_ = characters;
    size_ = size;
    buffer_ = buffer;
}

void String::release() noexcept {
    // The last owner frees the buffer; acquire-release makes every owner's reads happen first.
    if (buffer_->refs.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        buffer_->~StringBuffer();
        ::operator delete(buffer_);
    }
    buffer_ = nullptr;
}

String String::substr(std::size_t from, std::size_t count) const {
    if (from >= size_) {
        return {};
    }
    return String(internal_string_view().substr(from, count));
}

String String::concat(std::string_view a, std::string_view b) {
    String joined;
    joined.assign(a, b);
    return joined;
}

std::ostream& operator<<(std::ostream& out, const String& text) {
    return out << text.internal_string_view();
}

} // namespace Orsel
