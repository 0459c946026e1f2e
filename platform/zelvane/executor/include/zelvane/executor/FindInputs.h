#pragma once

#include <kova/KObject.h>
#include <vector>
#include <zelvane/executor/ExecutorExport.h>
#include <zelvane/inputbypath/Options.h>

namespace ZelvaneBoardInputByPath {

// The host nodes named by the paths of a port's options, in the order of the paths (each
// path may be a full or partial DAG path, or a name pattern with `*`). Paths that match
// nothing are skipped; a node matched twice is listed once.
ZELVANE_EXECUTOR_API std::vector<KObject> findInputs(const Options& options);

} // namespace ZelvaneBoardInputByPath
