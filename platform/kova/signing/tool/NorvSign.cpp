// norv-sign: the SDK's build step that signs Kova plug-in libraries, and a checker that judges
// a library the way the host's loader does.

#include <cstdio>
#include <kova/KApiVersion.h>
#include <kova/signing/SignPlugin.h>
#include <kova/signing/VerifyPlugin.h>
#include <optional>
#include <string>
#include <string_view>

namespace {

constexpr const char* kUsage =
    "Usage: norv-sign LIB\n"
    "       norv-sign --verify LIB [--api-version V]\n"
    "\n"
    "Signs the Kova plug-in library LIB in place: fills its NORV_PLUGIN_SIGNATURE block with\n"
    "the SDK signature of the file. With --verify, checks LIB as the host's loader does and\n"
    "prints \"ok\" or the reason it would be refused; --api-version sets the host API version\n"
    "to check against (default " KOVA_API_VERSION ").\n"
    "\n"
    "Options:\n"
    "  --verify           check instead of signing\n"
    "  --api-version V    host API version for --verify\n"
    "  -h, --help         show this help\n"
    "\n"
    "Exit status: 0 on success, 1 if signing fails or the library would be refused,\n"
    "2 on a usage error.\n";

struct Options {
    bool help = false;
    bool verify = false;
    std::string apiVersion = KOVA_API_VERSION;
    std::string library;
};

// Parses the command line; on a usage error prints it and returns nothing.
std::optional<Options> parse(int argc, char** argv) {
    Options options;
    bool haveApiVersion = false;
    for (int i = 1; i < argc; ++i) {
        const std::string_view arg = argv[i];
        if (arg == "-h" || arg == "--help") {
            options.help = true;
        } else if (arg == "--verify") {
            options.verify = true;
        } else if (arg == "--api-version") {
            if (i + 1 == argc) {
                std::fprintf(stderr, "norv-sign: --api-version needs a value\n");
                return std::nullopt;
            }
            options.apiVersion = argv[++i];
            haveApiVersion = true;
        } else if (arg.size() > 1 && arg.front() == '-') {
            std::fprintf(stderr, "norv-sign: unknown option '%s' (see --help)\n", argv[i]);
            return std::nullopt;
        } else if (!options.library.empty()) {
            std::fprintf(stderr, "norv-sign: only one library can be given (see --help)\n");
            return std::nullopt;
        } else {
            options.library = arg;
        }
    }
    if (options.help)
        return options;
    if (options.library.empty()) {
        std::fprintf(stderr, "norv-sign: no library given (see --help)\n");
        return std::nullopt;
    }
    if (haveApiVersion && !options.verify) {
        std::fprintf(stderr, "norv-sign: --api-version applies only with --verify\n");
        return std::nullopt;
    }
    return options;
}

} // namespace

int main(int argc, char** argv) {
    const auto options = parse(argc, argv);
    if (!options)
        return 2;
    if (options->help) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    if (options->verify) {
        const auto result = KovaSigning::verifyPlugin(options->library, options->apiVersion);
        const bool ok = result.status == KovaSigning::VerifyResult::Status::Ok;
        std::printf("%s\n", ok ? "ok" : result.reason.c_str());
        return ok ? 0 : 1;
    }
    std::string error;
    if (!KovaSigning::signPlugin(options->library, &error)) {
        std::fprintf(stderr, "norv-sign: %s\n", error.c_str());
        return 1;
    }
    return 0;
}
