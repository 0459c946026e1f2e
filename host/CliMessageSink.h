#pragma once

#include <kova/KMessageSink.h>

namespace KovaHost {

// Shows the host's messages the way a command-line program does: one line each on standard
// error, prefixed with the program's name, errors and warnings marked.
class CliMessageSink : public KMessageSink {
public:
    void message(Severity severity, const KString& text) override;
};

} // namespace KovaHost
