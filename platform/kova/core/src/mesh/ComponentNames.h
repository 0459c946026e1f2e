#pragma once

#include <kova/KDagPath.h>
#include <kova/KObject.h>
#include <kova/KStatus.h>
#include <string_view>

// Component names as the command line and KSelectionList take them: a DAG node (name or
// full path; a transform stands for its shape) followed by ".vtx", ".e", ".f" or ".cv" and
// an index "[3]" or an inclusive range "[0:3]", e.g. "pCube1.f[0:3]".
namespace kova::mesh {

// True when `text` has the form above with an existing DAG node (and only then are `path`,
// `component` and `status` set: `status` fails when the index is wrong or the node has no
// single shape). Text naming no DAG node is left to the plug parser.
bool parseComponentName(std::string_view text, KDagPath& path, KObject& component, KStatus& status);

} // namespace kova::mesh
