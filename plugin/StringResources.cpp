#include "plugin/StringResources.h"

namespace ZelvanePlugin::Strings {

KStatus registerStrings() {
    KStringResource::registerString(kCouldNotTranslateCurve);
    KStringResource::registerString(kSegmentLengthIsInvalid);
    KStringResource::registerString(kCurveIsInvalid);
    return KStatus::kSuccess;
}

} // namespace ZelvanePlugin::Strings
