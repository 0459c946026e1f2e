#pragma once

#include <kova/KString.h>

namespace ZelvanePlugin::MeshInput {

// Shows `text` as a host error only when "ZELVANE_LOG_RUNTIME_MESSAGES" reads as true; the
// variable is read again at every call, so the switch can change while the host runs.
void showRuntimeError(const KString& text);

} // namespace ZelvanePlugin::MeshInput
