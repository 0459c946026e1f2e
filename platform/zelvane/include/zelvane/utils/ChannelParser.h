#pragma once

#include <cstdint>
#include <orsel/String.h>
#include <string_view>
#include <vector>
#include <zelvane/Export.h>

namespace ZEL::Utils {

/// Selects names (channels, sets, tags, properties) with a channel expression.
///
/// Grammar:
///
///     expression := separator* (term (separator+ term)*)? separator*
///     separator  := ',' | ' ' | '\t' | '\n' | '\r' | '\f' | '\v'
///     term       := ['^'] pattern
///     pattern    := (literal | '\' any-character | '*' | '?')+
///
/// - `*` matches any run of characters (also none), `?` exactly one character (one UTF-8
///   code point); everything else matches itself, case-sensitively.
/// - `\` makes the next character literal, so names with blanks, commas, `*`, `?`, `^` or `\`
///   can be written ("my\ set", "\^x").
/// - A term starting with `^` excludes the names it matches; other terms include them.
/// - Later terms win: a name is accepted when the last term that matches it is an including
///   one. A name no term matches is not accepted, so "^a" alone accepts nothing and
///   "* ^a" accepts everything but "a".
/// - An empty expression (or one of separators only) parses and accepts nothing.
/// - Malformed: a `^` without a pattern ("^", "a ^"), a `^` inside a pattern ("a^b"), or a
///   `\` at the very end. Then `parses` returns false, `errorMessage` says why, and the
///   parser accepts nothing.
///
/// A default-constructed parser accepts nothing. `accepts` does not change the parser, so
/// any number of threads may call it at once.
class ZELVANE_API ChannelParser {
public:
    ChannelParser() = default;

    /// Replaces the expression; false when it is malformed.
    bool parses(const Orsel::String& expression);
    bool accepts(std::string_view name) const noexcept;

    /// The expression last given to `parses`.
    const Orsel::String& expression() const noexcept { return expression_; }
    /// Why the last `parses` failed; empty after success.
    const Orsel::String& errorMessage() const noexcept { return error_; }

private:
    // One pattern token: a literal byte (0-255), or kAnyRun / kAnyOne.
    using Token = std::int16_t;
    static constexpr Token kAnyRun = -1;
    static constexpr Token kAnyOne = -2;

    struct Term {
        bool exclude = false;
        std::vector<Token> pattern;
    };

    static bool matches(const std::vector<Token>& pattern, std::string_view name) noexcept;

    Orsel::String expression_;
    Orsel::String error_;
    std::vector<Term> terms_;
};

} // namespace ZEL::Utils
