#pragma once

#include <orsel/String.h>
#include <orsel/Type.h>
#include <zelvane/Export.h>

namespace Zelvane::File::Project {

/// Where the host's scene lives, type "File::Project::SceneInfo".
struct SceneInfo {
    Orsel::String scene;
    Orsel::String sceneDirectory;
    Orsel::String projectDirectory;
    bool hasProject;
};

/// "File::Project::SceneInfo", kind `Orsel::TypeKind::Record`.
ZELVANE_API const Orsel::Type& sceneInfoType();

} // namespace Zelvane::File::Project
