#include <algorithm>
#include <cctype>
#include <charconv>
#include <climits>
#include <cstdio>
#include <kova/KString.h>
#include <kova/KStringArray.h>
#include <ostream>

unsigned int KString::numChars() const {
    unsigned int count = 0;
    for (const char c : text_) {
        // Every byte that is not a UTF-8 continuation byte starts a character.
        if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) {
            ++count;
        }
    }
    return count;
}

KString& KString::operator+=(const KString& other) {
    text_ += other.text_;
    return *this;
}

KString& KString::operator+=(const char* other) {
    if (other) {
        text_ += other;
    }
    return *this;
}

KString operator+(const KString& a, const KString& b) {
    KString result(a);
    result += b;
    return result;
}

KStatus KString::substitute(const KString& what, const KString& with) {
    if (what.isEmpty()) {
        return KStatus(KStatus::kInvalidParameter, "cannot substitute an empty string");
    }
    std::string result;
    std::size_t from = 0;
    for (std::size_t at = text_.find(what.text_); at != std::string::npos;
         at = text_.find(what.text_, from)) {
        result.append(text_, from, at - from);
        result += with.text_;
        from = at + what.text_.size();
    }
    result.append(text_, from);
    text_ = std::move(result);
    return KStatus();
}

KStatus KString::substituteFirst(const KString& what, const KString& with) {
    if (what.isEmpty()) {
        return KStatus(KStatus::kInvalidParameter, "cannot substitute an empty string");
    }
    if (const std::size_t at = text_.find(what.text_); at != std::string::npos) {
        text_.replace(at, what.text_.size(), with.text_);
    }
    return KStatus();
}

bool KString::startsWith(const KString& prefix) const {
    return text_.starts_with(prefix.text_);
}

int KString::indexOf(char c) const {
    const std::size_t at = text_.find(c);
    return at == std::string::npos ? -1 : static_cast<int>(at);
}

KString KString::substring(int start, int end) const {
    if (text_.empty()) {
        return KString();
    }
    const long first = std::max(0, start);
    const long last = std::min<long>(end, static_cast<long>(text_.size()) - 1);
    if (first > last) {
        return KString();
    }
    return KString(
        text_.substr(static_cast<std::size_t>(first), static_cast<std::size_t>(last - first + 1)));
}

KStatus KString::split(char separator, KStringArray& parts) const {
    parts.clear();
    if (text_.empty()) {
        return KStatus();
    }
    std::size_t from = 0;
    while (true) {
        const std::size_t at = text_.find(separator, from);
        const std::size_t to = at == std::string::npos ? text_.size() : at;
        if (KStatus status = parts.append(KString(text_.substr(from, to - from))); !status) {
            return status;
        }
        if (at == std::string::npos) {
            return KStatus();
        }
        from = at + 1;
    }
}

KString KString::toLowerCase() const {
    std::string lower(text_);
    for (char& c : lower) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return KString(std::move(lower));
}

KString& KString::set(int64_t value) {
    text_ = std::to_string(value);
    return *this;
}

KString& KString::set(double value, int precision) {
    char buffer[64];
    const int digits = std::max(1, std::min(precision, 17));
    std::snprintf(buffer, sizeof buffer, "%.*g", digits, value);
    text_ = buffer;
    return *this;
}

namespace {

// Parses the whole text as T; from_chars does not take a leading '+', so it is skipped here.
template <class T>
bool parseWhole(const std::string& text, T& value) {
    const char* first = text.data();
    const char* last = first + text.size();
    if (first != last && *first == '+' && last - first > 1 && first[1] != '-') {
        ++first;
    }
    const auto [end, error] = std::from_chars(first, last, value);
    return first != last && error == std::errc() && end == last;
}

} // namespace

bool KString::isInt() const {
    int value = 0;
    return parseWhole(text_, value);
}

bool KString::isDouble() const {
    double value = 0.0;
    return parseWhole(text_, value);
}

int KString::asInt() const {
    int value = 0;
    return parseWhole(text_, value) ? value : 0;
}

double KString::asDouble() const {
    double value = 0.0;
    return parseWhole(text_, value) ? value : 0.0;
}

KStatus KString::formatArgs(const KString& fmt, const KString* args, unsigned int count) {
    const std::string& in = fmt.text_;
    std::string out;
    out.reserve(in.size());
    for (std::size_t i = 0; i < in.size(); ++i) {
        const char c = in[i];
        if (c != '^' || i + 1 >= in.size()) {
            out += c;
            continue;
        }
        const char next = in[i + 1];
        if (next == '^') {
            out += '^';
            ++i;
            continue;
        }
        if (std::isdigit(static_cast<unsigned char>(next)) && i + 2 < in.size() &&
            in[i + 2] == 's') {
            const unsigned int index = static_cast<unsigned int>(next - '0');
            if (index == 0 || index > count || args == nullptr) {
                KString description;
                description.text_ = "format placeholder ^" + std::string(1, next) +
                                    "s names a missing argument (" + std::to_string(count) +
                                    " given)";
                return KStatus(KStatus::kInvalidParameter, description);
            }
            out += args[index - 1].text_;
            i += 2;
            continue;
        }
        out += c;
    }
    text_ = std::move(out);
    return KStatus();
}

std::ostream& operator<<(std::ostream& out, const KString& text) {
    return out << text.str();
}
