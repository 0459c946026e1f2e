#include <string>
#include <zelvane/utils/ChannelParser.h>

namespace ZEL::Utils {

namespace {

bool isSeparator(char c) {
    return c == ',' || c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

// Index of the first byte after the UTF-8 code point that starts at `at`.
std::size_t nextCodePoint(std::string_view text, std::size_t at) {
    ++at;
    while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80) {
        ++at;
    }
    return at;
}

} // namespace

bool ChannelParser::parses(const Orsel::String& expression) {
    expression_ = expression;
    error_ = {};
    terms_.clear();

    const std::string_view text = expression.internal_string_view();
    std::vector<Term> terms;
    std::size_t at = 0;
    const auto fail = [&](const std::string& why) {
        error_ = Orsel::String(why + " at offset " + std::to_string(at) + " of \"" +
                               std::string(text) + "\"");
        return false;
    };
    while (true) {
        while (at < text.size() && isSeparator(text[at])) {
            ++at;
        }
        if (at == text.size()) {
            break;
        }
        Term term;
        if (text[at] == '^') {
            term.exclude = true;
            ++at;
        }
        for (; at < text.size() && !isSeparator(text[at]); ++at) {
            const char c = text[at];
            if (c == '\\') {
                if (++at == text.size()) {
                    return fail("'\\' without a character to escape");
                }
                term.pattern.push_back(static_cast<unsigned char>(text[at]));
            } else if (c == '^') {
                return fail("'^' inside a pattern (it may only start a term)");
            } else if (c == '*') {
                if (term.pattern.empty() || term.pattern.back() != kAnyRun) {
                    term.pattern.push_back(kAnyRun);
                }
            } else if (c == '?') {
                term.pattern.push_back(kAnyOne);
            } else {
                term.pattern.push_back(static_cast<unsigned char>(c));
            }
        }
        if (term.pattern.empty()) {
            return fail("'^' without a pattern");
        }
        terms.push_back(std::move(term));
    }
    terms_ = std::move(terms);
    return true;
}

bool ChannelParser::accepts(std::string_view name) const noexcept {
    for (auto term = terms_.rbegin(); term != terms_.rend(); ++term) {
        if (matches(term->pattern, name)) {
            return !term->exclude;
        }
    }
    return false;
}

// Glob matching with single-star backtracking: on a mismatch, the most recent `*` takes one
// more code point and matching resumes after it. Linear in practice, O(n*m) at worst.
bool ChannelParser::matches(const std::vector<Token>& pattern, std::string_view name) noexcept {
    std::size_t p = 0;
    std::size_t n = 0;
    std::size_t starP = std::string_view::npos;
    std::size_t starN = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == kAnyRun) {
            starP = p++;
            starN = n;
        } else if (p < pattern.size() && pattern[p] == kAnyOne) {
            n = nextCodePoint(name, n);
            ++p;
        } else if (p < pattern.size() && pattern[p] == static_cast<unsigned char>(name[n])) {
            ++n;
            ++p;
        } else if (starP != std::string_view::npos) {
            p = starP + 1;
            starN = nextCodePoint(name, starN);
            n = starN;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == kAnyRun) {
        ++p;
    }
    return p == pattern.size();
}

} // namespace ZEL::Utils
