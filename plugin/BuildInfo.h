#pragma once

#include <string>

namespace ZelvanePlugin {

// Build constants of this release, kept as text the way the build system hands them over.
struct BuildInfo {
    static constexpr const char* kMajor = "2";
    static constexpr const char* kMinor = "11";
    static constexpr const char* kPatch = "0";
    static constexpr const char* kBuildNumber = "86";
    static constexpr const char* kBuildDate = "Tue 07/23/2024, 202407230842";
    static constexpr const char* kBranch = "release";
    static constexpr const char* kProductLabel = "Zelvane Plugin";
    static constexpr const char* kComponentLabel = "ZelvaneObjectBoardPlugin";
    // The 40-digit commit hash of the sources, recorded at build time.
    static const char* commitHash();
};

// "Zelvane Plugin version 2.11.0.0 (<date>, build 86, commit <7 digits>, branch release)".
// The fourth version number repeats the patch number by design.
std::string versionBannerText();

// Whether the banner was printed when the library was loaded.
bool versionBannerPrinted();

} // namespace ZelvanePlugin
