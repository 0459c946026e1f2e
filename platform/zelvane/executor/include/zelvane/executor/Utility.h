#pragma once

#include <zelvane/executor/ExecutorExport.h>

namespace ZelvaneGraph::Executor::Utility {

// Reads an environment variable as a switch: "1", "true", "yes" and "on" (any case) are
// true; "0", "false", "no", "off" and the empty text are false; an unset variable or any
// other text gives `defaultValue`. Read afresh at every call.
ZELVANE_EXECUTOR_API bool getEnvBool(const char* name, bool defaultValue = false);

} // namespace ZelvaneGraph::Executor::Utility
