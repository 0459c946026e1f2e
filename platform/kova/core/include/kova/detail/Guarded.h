#pragma once

#include <exception>
#include <kova/KMessageSink.h>
#include <kova/KString.h>
#include <string>

namespace kova::detail {

// Runs a call into plug-in code at the host boundary. An exception does not escape: it is
// reported through the message sink as "<who()> threw: <what>" and the call counts as failed.
// Returns whether the call completed. The host core and the board, which calls translation
// libraries, use it alike.
template <class Call, class Who>
bool runGuarded(Call&& call, Who&& who) {
    std::string what;
    try {
        call();
        return true;
    } catch (const std::exception& e) {
        what = e.what();
    } catch (...) {
        what = "unknown exception";
    }
    KMessages::error(who() + KString(" threw: ") + KString(what));
    return false;
}

} // namespace kova::detail
