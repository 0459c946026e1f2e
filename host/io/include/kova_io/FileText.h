#pragma once

#include <kova/KStatus.h>
#include <string>

namespace KovaIo {

// Reads the whole file at `path` into `bytes`; on failure the status says why in one line
// ("cannot open 'x': No such file or directory") and `bytes` is empty.
KStatus readFileBytes(const std::string& path, std::string& bytes);

// Writes `bytes` to the file at `path`, replacing it.
KStatus writeFileBytes(const std::string& path, const std::string& bytes);

// A one-line failure status with `reason` as its text.
KStatus ioFailure(const std::string& reason);

} // namespace KovaIo
