#pragma once

#include <string>
#include <zelvane/Object.h>

namespace bench {

// Registers the benchmark `name`: OpenMesh's face and vertex normal update on a copy of the
// graph mesh `mesh` (kept alive by the caller), built once before timing.
void registerOpenMeshNormals(const std::string& name, const Zelvane::Object& mesh);

} // namespace bench
