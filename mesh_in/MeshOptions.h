#pragma once

#include <zelvane/inputbypath/MeshOptions.h>

// The options of a mesh input as the plug-in reads them: the executor's mesh options (keys,
// defaults and parsing are the executor library's), under the plug-in's own name.
struct __attribute__((visibility("default"))) MeshOptions : ZelvaneBoardInputByPath::MeshOptions {};
