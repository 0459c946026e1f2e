#include "mesh_in/RuntimeMessages.h"

#include <kova/KGlobal.h>
#include <zelvane/executor/Utility.h>

namespace ZelvanePlugin::MeshInput {

void showRuntimeError(const KString& text) {
    if (ZelvaneGraph::Executor::Utility::getEnvBool("ZELVANE_LOG_RUNTIME_MESSAGES")) {
        KGlobal::displayError(text);
    }
}

} // namespace ZelvanePlugin::MeshInput
