#include "plugin/BuildInfo.h"

#include <CommitHash.h>

#include <cstdlib>
#include <sstream>

namespace ZelvanePlugin {

const char* BuildInfo::commitHash() { return ZEL_COMMIT_HASH; }

std::string versionBannerText() {
    const int major = std::atoi(BuildInfo::kMajor);
    const int minor = std::atoi(BuildInfo::kMinor);
    const int patch = std::atoi(BuildInfo::kPatch);
    std::ostringstream text;
    text << BuildInfo::kProductLabel << " version ";
    text << major << '.' << minor << '.' << patch << '.' << patch;
    text << " (" << BuildInfo::kBuildDate << ", build " << std::atoi(BuildInfo::kBuildNumber);
    text << ", commit " << std::string(BuildInfo::commitHash()).substr(0, 7);
    text << ", branch " << BuildInfo::kBranch << ")";
    return text.str();
}

} // namespace ZelvanePlugin
