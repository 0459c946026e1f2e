// ZEL::Utils::ChannelParser: an input is an expression (its first line) and the names to
// select (the other lines, any bytes). Besides crashes and hangs, the
// answers are checked against a plain model of the documented grammar, with a dynamic-
// programming matcher in place of the parser's backtracking one, whenever expression and
// name are valid UTF-8 (for other bytes `?` has no single meaning to check).

#include "FuzzCheck.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
#include <zelvane/utils/ChannelParser.h>

namespace {

using ZelFuzz::check;

// Bytes taken by the UTF-8 sequence whose first byte is `lead`, or 0 when it can't start one.
std::size_t sequenceLength(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        return 2;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        return 3;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        return 4;
    }
    return 0;
}

// Structurally valid UTF-8: every sequence complete (overlong forms are not the point here).
bool isUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = sequenceLength(static_cast<unsigned char>(text[at]));
        if (length == 0 || at + length > text.size()) {
            return false;
        }
        for (std::size_t k = 1; k < length; ++k) {
            if ((static_cast<unsigned char>(text[at + k]) & 0xC0) != 0x80) {
                return false;
            }
        }
        at += length;
    }
    return true;
}

// The model: a term is a list of pieces; each piece is '*', '?' or one literal byte.
struct Piece {
    enum Kind { kLiteral, kAnyRun, kAnyOne } kind;
    char byte;
};
struct Term {
    bool exclude;
    std::vector<Piece> pieces;
};

bool isSeparator(char c) {
    return std::string_view(", \t\n\r\f\v").find(c) != std::string_view::npos;
}

// The terms of `text`, or nothing when the grammar refuses it.
std::optional<std::vector<Term>> modelTerms(std::string_view text) {
    // Split into raw words first: separators end a word unless escaped.
    std::vector<std::string> words;
    std::string word;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (isSeparator(text[at])) {
            if (!word.empty()) {
                words.push_back(std::move(word));
                word.clear();
            }
            continue;
        }
        word += text[at];
        if (text[at] == '\\') {
            if (at + 1 == text.size()) {
                return std::nullopt;
            }
            word += text[++at];
        }
    }
    if (!word.empty()) {
        words.push_back(std::move(word));
    }
    std::vector<Term> terms;
    for (const std::string& raw : words) {
        Term term{raw[0] == '^', {}};
        for (std::size_t at = term.exclude ? 1 : 0; at < raw.size(); ++at) {
            switch (raw[at]) {
            case '\\':
                term.pieces.push_back({Piece::kLiteral, raw[++at]});
                break;
            case '^':
                return std::nullopt;
            case '*':
                term.pieces.push_back({Piece::kAnyRun, 0});
                break;
            case '?':
                term.pieces.push_back({Piece::kAnyOne, 0});
                break;
            default:
                term.pieces.push_back({Piece::kLiteral, raw[at]});
            }
        }
        if (term.pieces.empty()) {
            return std::nullopt;
        }
        terms.push_back(std::move(term));
    }
    return terms;
}

// Whether `pieces` match all of the valid UTF-8 `name`: the set of name positions reachable
// after each piece, '*' and '?' stepping over whole code points.
bool modelMatches(const std::vector<Piece>& pieces, std::string_view name) {
    const auto next = [&](std::size_t at) {
        return at + sequenceLength(static_cast<unsigned char>(name[at]));
    };
    std::vector<char> reached(name.size() + 1, 0);
    reached[0] = 1;
    for (const Piece& piece : pieces) {
        std::vector<char> after(name.size() + 1, 0);
        for (std::size_t at = 0; at <= name.size(); ++at) {
            if (piece.kind == Piece::kAnyRun) {
                after[at] = after[at] || reached[at];
                if (after[at] && at < name.size()) {
                    after[next(at)] = 1;
                }
            } else if (reached[at] && at < name.size()) {
                if (piece.kind == Piece::kAnyOne) {
                    after[next(at)] = 1;
                } else if (name[at] == piece.byte) {
                    after[at + 1] = 1;
                }
            }
        }
        reached = std::move(after);
    }
    return reached[name.size()] != 0;
}

bool modelAccepts(const std::vector<Term>& terms, std::string_view name) {
    for (auto term = terms.rbegin(); term != terms.rend(); ++term) {
        if (modelMatches(term->pieces, name)) {
            return !term->exclude;
        }
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    const std::string expression(lines.empty() ? std::string_view() : lines.front());
    const std::vector<std::string_view> names(lines.begin() + (lines.empty() ? 0 : 1), lines.end());

    ZEL::Utils::ChannelParser parser;
    const bool parsed = parser.parses(Orsel::String(expression));
    check(parser.expression().internal_string_view() == expression,
          "the expression is not kept as given");
    check(parsed == parser.errorMessage().empty(), "an error message goes with failure only");

    const std::optional<std::vector<Term>> terms = modelTerms(expression);
    check(parsed == terms.has_value(), "parses disagrees with the grammar");

    const ZEL::Utils::ChannelParser copy = parser;
    const bool modelled = isUtf8(expression);
    for (const std::string_view name : names) {
        const bool accepted = parser.accepts(name);
        check(accepted == copy.accepts(name), "a copy answers differently");
        if (!parsed) {
            check(!accepted, "a malformed expression accepts a name");
        } else if (modelled && isUtf8(name)) {
            check(accepted == modelAccepts(*terms, name), "accepts disagrees with the grammar");
        }
    }
    return 0;
}
