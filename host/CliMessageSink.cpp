#include "CliMessageSink.h"

#include <iostream>

namespace KovaHost {

void CliMessageSink::message(Severity severity, const KString& text) {
    const char* label = severity == kError ? "error: " : severity == kWarning ? "warning: " : "";
    std::cerr << "kova: " << label << text.asChar() << '\n';
}

} // namespace KovaHost
