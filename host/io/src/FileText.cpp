#include <cerrno>
#include <cstring>
#include <fstream>
#include <kova/KString.h>
#include <kova_io/FileText.h>

namespace KovaIo {

KStatus ioFailure(const std::string& reason) {
    return KStatus(KStatus::kFailure, KString(reason));
}

KStatus readFileBytes(const std::string& path, std::string& bytes) {
    bytes.clear();
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        return ioFailure("cannot open '" + path + "': " + std::strerror(errno));
    }
    in.seekg(0, std::ios::end);
    const std::streamoff size = in.tellg();
    if (size < 0) {
        return ioFailure("cannot read '" + path + "': not a regular file");
    }
    in.seekg(0, std::ios::beg);
    bytes.resize(static_cast<std::size_t>(size));
    if (size > 0 && !in.read(bytes.data(), size)) {
        bytes.clear();
        return ioFailure("cannot read '" + path + "': read error");
    }
    return KStatus();
}

KStatus writeFileBytes(const std::string& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out) {
        return ioFailure("cannot write '" + path + "': " + std::strerror(errno));
    }
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) {
        return ioFailure("cannot write '" + path + "': write error");
    }
    return KStatus();
}

} // namespace KovaIo
