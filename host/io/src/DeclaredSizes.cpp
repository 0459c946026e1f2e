#include "NumberText.h"
#include "TextLines.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <kova_io/DeclaredSizes.h>
#include <kova_io/FileText.h>

namespace KovaIo {

namespace {

// Headers are read from the first bytes only.
constexpr std::size_t kHeaderBytes = 64 * 1024;

std::string lowerExtension(const std::string& path) {
    std::string ext = std::filesystem::path(path).extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return ext;
}

// Files cut short by a little are left to the reader, which reads what is there; a
// declaration is absurd when it needs more than twice the bytes the file holds, plus 1 KiB.
bool absurd(long double needed, std::uintmax_t size) {
    return needed > 2.0L * static_cast<long double>(size) + 1024.0L;
}

KStatus tooSmall(const std::string& path, const std::string& what, long double needed,
                 std::uintmax_t size) {
    return ioFailure(
        "cannot read '" + path + "': it declares " + what + ", at least " +
        std::to_string(static_cast<unsigned long long>(std::min<long double>(needed, 1e19L))) +
        " bytes, but holds " + std::to_string(size));
}

std::size_t binarySize(std::string_view type) {
    static const std::pair<std::string_view, std::size_t> sizes[] = {
        {"char", 1},  {"uchar", 1},   {"int8", 1},   {"uint8", 1},  {"short", 2}, {"ushort", 2},
        {"int16", 2}, {"uint16", 2},  {"int", 4},    {"uint", 4},   {"int32", 4}, {"uint32", 4},
        {"float", 4}, {"float32", 4}, {"double", 8}, {"float64", 8}};
    for (const auto& [name, size] : sizes) {
        if (name == type) {
            return size;
        }
    }
    return 1;
}

KStatus checkPly(const std::string& path, std::string_view head, std::uintmax_t size) {
    const std::size_t end = head.find("end_header");
    if (end == std::string_view::npos) {
        return KStatus(); // left to the reader, which reports the broken header
    }
    bool binary = false;
    long double needed = 0;
    long double count = 0;
    long double perElement = 0;
    std::string summary;
    forEachStatement(head.substr(0, end), [&](std::size_t, const auto& t, std::string_view) {
        if (t[0] == "format" && t.size() > 1) {
            binary = t[1] != "ascii";
        } else if (t[0] == "element" && t.size() > 2) {
            needed += count * perElement;
            count = static_cast<long double>(parseNumber<unsigned long long>(t[2]).value_or(0));
            perElement = 0;
            summary += (summary.empty() ? "" : ", ") + std::string(t[2]) + " " + std::string(t[1]);
        } else if (t[0] == "property" && t.size() > 2) {
            const bool list = t[1] == "list";
            perElement += binary ? static_cast<long double>(binarySize(t[list ? 2 : 1])) : 2;
        }
        return true;
    });
    needed += count * perElement;
    const std::size_t dataStart = std::min<std::size_t>(head.find('\n', end) + 1, head.size());
    const std::uintmax_t data = size - dataStart;
    return absurd(needed, data) ? tooSmall(path, summary + " after its header", needed, data)
                                : KStatus();
}

KStatus checkStl(const std::string& path, std::string_view head, std::uintmax_t size) {
    if (size < 84 || head.substr(0, 5) == "solid") {
        return KStatus(); // ASCII, or too short for a binary header: left to the reader
    }
    std::uint32_t triangles = 0;
    std::memcpy(&triangles, head.data() + 80, sizeof triangles);
    const long double needed = 84.0L + 50.0L * triangles;
    return absurd(needed, size)
               ? tooSmall(path, std::to_string(triangles) + " triangles", needed, size)
               : KStatus();
}

KStatus checkOff(const std::string& path, std::string_view head, std::uintmax_t size) {
    std::vector<unsigned long long> counts;
    bool keyword = true;
    forEachStatement(head, [&](std::size_t, const auto& t, std::string_view) {
        for (std::string_view token : t) {
            if (keyword) {
                keyword = false;
                if (token.find("OFF") != std::string_view::npos) {
                    continue;
                }
            }
            const auto value = parseNumber<unsigned long long>(token);
            if (!value) {
                return false;
            }
            counts.push_back(*value);
            if (counts.size() == 2) {
                return false;
            }
        }
        return true;
    });
    if (counts.size() < 2) {
        return KStatus();
    }
    // A vertex takes at least "0 0 0\n", a face at least "3 0 0 0\n".
    const long double needed = 6.0L * counts[0] + 8.0L * counts[1];
    return absurd(needed, size) ? tooSmall(path,
                                           std::to_string(counts[0]) + " vertices and " +
                                               std::to_string(counts[1]) + " faces",
                                           needed, size)
                                : KStatus();
}

} // namespace

KStatus checkDeclaredSizes(const std::string& path) {
    const std::string ext = lowerExtension(path);
    if (ext != ".ply" && ext != ".stl" && ext != ".off") {
        return KStatus();
    }
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    std::ifstream in(path, std::ios::binary);
    if (error || !in) {
        return ioFailure("cannot open '" + path + "'");
    }
    std::string head(static_cast<std::size_t>(std::min<std::uintmax_t>(size, kHeaderBytes)), '\0');
    in.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(in.gcount()));
    if (ext == ".ply") {
        return checkPly(path, head, size);
    }
    return ext == ".stl" ? checkStl(path, head, size) : checkOff(path, head, size);
}

} // namespace KovaIo
