#pragma once

#include <kova/KStatus.h>
#include <kova/KStringResource.h>

// The plug-in's user-interface strings, registered with the host under the plug-in id
// "zelvane_object_translator" as the table "zelvaneObjectTranslatorStrings".
namespace ZelvanePlugin::Strings {

inline constexpr const char* kPluginId = "zelvane_object_translator";
inline constexpr const char* kTableName = "zelvaneObjectTranslatorStrings";

// The trailing blank separates the reason that callers append.
inline const KStringResourceId kCouldNotTranslateCurve(
    kPluginId, "kCouldNotTranslateCurve",
    "Failed to translate Kova curve '^1s' to Zelvane strands for input '^2s' in '^3s'. ");
inline const KStringResourceId kSegmentLengthIsInvalid(kPluginId, "kSegmentLengthIsInvalid",
                                                       "Target segment length = 0 is invalid.");
inline const KStringResourceId kCurveIsInvalid(kPluginId, "kCurveIsInvalid", "Curve is invalid.");

// Registration routine handed to the host: registers every string in table order. The
// status of a single registration is not checked.
KStatus registerStrings();

} // namespace ZelvanePlugin::Strings
